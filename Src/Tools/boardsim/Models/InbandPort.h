#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace boardsim {

/// What a driver of the in-band management link is asked for. Not thread-safe.
class InbandPort {
public:
    /// @param fibreLengths of each port, in metres.
    explicit InbandPort(std::vector<std::int32_t> fibreLengths) : fibreLengths_(std::move(fibreLengths)) {}

    /// The request 0x89F3, which is remembered.
    void shutDown() { isShutDown_ = true; }
    bool isShutDown() const { return isShutDown_; }

    /// The request 0x89F6. @return nothing when there is no such port.
    std::optional<std::int32_t> fibreLength(std::uint32_t port) const;

private:
    std::vector<std::int32_t> fibreLengths_;
    bool isShutDown_ = false;
};

}  // namespace boardsim
