#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace boardsim {

/// A line of text of limited length, put together without allocating: for messages out of a signal handler.
/// What does not fit is cut off.
class MessageBuffer {
public:
    MessageBuffer& operator<<(std::string_view text) noexcept;
    /// Appends `0x` and the number in hexadecimal, without leading zeros.
    MessageBuffer& hex(std::uint64_t number) noexcept;
    /// Appends each byte as two hexadecimal digits, separated by spaces.
    MessageBuffer& bytes(std::span<const std::byte> data) noexcept;

    std::string_view text() const noexcept { return {characters_.data(), used_}; }

    /// Writes the text and a line end to standard error in one go.
    void print() noexcept;

private:
    std::array<char, 320> characters_{};
    std::size_t used_ = 0;
};

}  // namespace boardsim
