#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace boardsim {

/// The names of the interfaces that have drivers of their own.
inline constexpr const char* kInbandInterface = "inbd";
inline constexpr const char* kPatternInterface = "pattern";

/// The in-band management link: the network interface "inbd".
struct InbandPart {
    bool hasCarrier = true;
    std::string slave{};                       ///< the interface that carries it, "eth0"; nothing when empty
    std::vector<std::int32_t> fibreLengths{};  ///< of each port, in metres

    bool operator==(const InbandPart&) const = default;
};

/// The test-pattern generator: the network interface "pattern".
struct PatternPart {
    bool hasCarrier = true;
    std::uint32_t lanes = 0;  ///< how many can be switched to a pattern

    bool operator==(const PatternPart&) const = default;
};

}  // namespace boardsim
