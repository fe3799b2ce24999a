#include "Tools/boardsim/Host/RegisterTrap/Preload/ActingRanges.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace boardsim {

namespace {

bool readHexadecimal(std::string_view digits, std::uint64_t& value) noexcept {
    const char* last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, value, 16);
    return error == std::errc{} && end == last;
}

}  // namespace

bool ActingRanges::parse(std::string_view text) noexcept {
    count_ = 0;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        if (!add(text.substr(0, comma))) {
            count_ = 0;
            return false;
        }
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return true;
}

bool ActingRanges::add(std::string_view stretch) noexcept {
    constexpr std::uint64_t kLastPossible = std::numeric_limits<std::uint64_t>::max() - 1;
    const std::size_t hyphen = stretch.find('-');
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    if (count_ == kCapacity || hyphen == std::string_view::npos ||
        !readHexadecimal(stretch.substr(0, hyphen), first) ||
        !readHexadecimal(stretch.substr(hyphen + 1), last) || first > last || last > kLastPossible) {
        return false;
    }
    ranges_[count_++] = {first, last + 1};
    return true;
}

bool ActingRanges::contain(std::uint64_t offset) const noexcept {
    const RegisterRange nearest = next(offset);
    return !nearest.isEmpty() && nearest.begin == offset;
}

RegisterRange ActingRanges::next(std::uint64_t from) const noexcept {
    RegisterRange nearest;
    for (std::size_t i = 0; i < count_; ++i) {
        const RegisterRange range{std::max(ranges_[i].begin, from), ranges_[i].end};
        if (!range.isEmpty() && (nearest.isEmpty() || range.begin < nearest.begin)) {
            nearest = range;
        }
    }
    return nearest;
}

}  // namespace boardsim
