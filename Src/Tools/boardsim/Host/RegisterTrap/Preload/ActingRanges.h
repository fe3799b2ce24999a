#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace boardsim {

/// Where in the register file the registers are that act. Looking them up is async-signal-safe; not
/// thread-safe while it is filled.
class ActingRanges {
public:
    static constexpr std::size_t kCapacity = 32;

    constexpr ActingRanges() = default;

    /// Takes the text of kRegisterRangesVariable, in any order; "" is none.
    /// @return false, and none is known, when the text is of another form or holds more than kCapacity
    bool parse(std::string_view text) noexcept;

    bool contain(std::uint64_t offset) const noexcept;

    /// The stretch with `from` or, when there is none, the next one; it does not begin before `from`.
    RegisterRange next(std::uint64_t from) const noexcept;

private:
    bool add(std::string_view stretch) noexcept;

    std::array<RegisterRange, kCapacity> ranges_{};
    std::size_t count_ = 0;
};

}  // namespace boardsim
