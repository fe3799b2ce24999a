#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"

#include <unistd.h>

#include <algorithm>
#include <bit>

namespace boardsim {

namespace {
constexpr std::string_view kDigits = "0123456789abcdef";
}

MessageBuffer& MessageBuffer::operator<<(std::string_view text) noexcept {
    // One place is kept for the line end.
    const std::size_t length = std::min(text.size(), characters_.size() - 1 - used_);
    std::copy_n(text.begin(), length, characters_.begin() + static_cast<std::ptrdiff_t>(used_));
    used_ += length;
    return *this;
}

MessageBuffer& MessageBuffer::hex(std::uint64_t number) noexcept {
    *this << "0x";
    const int digits = (static_cast<int>(std::bit_width(number | 1U)) + 3) / 4;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        *this << kDigits.substr((number >> shift) & 15U, 1);
    }
    return *this;
}

MessageBuffer& MessageBuffer::bytes(std::span<const std::byte> data) noexcept {
    std::string_view separator;
    for (const std::byte byte : data) {
        const auto value = std::to_integer<unsigned>(byte);
        *this << separator << kDigits.substr(value >> 4U, 1) << kDigits.substr(value & 15U, 1);
        separator = " ";
    }
    return *this;
}

void MessageBuffer::print() noexcept {
    characters_[used_] = '\n';
    // Nobody can be told when standard error is gone.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, characters_.data(), used_ + 1);
}

}  // namespace boardsim
