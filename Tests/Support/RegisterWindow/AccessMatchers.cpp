#include "Tests/Support/RegisterWindow/AccessMatchers.h"

#include <ostream>

using boardsim::Direction;
using boardsim::RegisterAccess;

namespace {

void print(const RegisterAccess& access, bool withValue, std::ostream& out) {
    const bool isRead = access.direction == Direction::Read;
    out << (isRead ? "Read" : "Write") << std::dec << access.width * 8 << "(0x" << std::hex << access.offset;
    if (withValue) {
        out << (isRead ? ") = 0x" : ", 0x") << access.value;
    }
    out << (isRead && withValue ? "" : ")") << std::dec;
}

support::AccessMatcher matcher(Direction direction, unsigned width, std::uint64_t offset,
                               std::optional<std::uint64_t> value) {
    RegisterAccess expected;
    expected.direction = direction;
    expected.width = static_cast<std::uint8_t>(width);
    expected.offset = offset;
    expected.value = value.value_or(0);
    return {expected, value.has_value()};
}

}  // namespace

void boardsim::PrintTo(const RegisterAccess& access, std::ostream* out) {
    print(access, true, *out);
}

namespace support {

bool AccessMatcher::MatchAndExplain(const RegisterAccess& access, std::ostream*) const {
    return access.direction == expected_.direction && access.width == expected_.width &&
           access.offset == expected_.offset && (!withValue_ || access.value == expected_.value);
}

void AccessMatcher::DescribeTo(std::ostream* out) const {
    print(expected_, withValue_, *out);
}

void AccessMatcher::DescribeNegationTo(std::ostream* out) const {
    *out << "not ";
    DescribeTo(out);
}

AccessMatcher Read(unsigned width, std::uint64_t offset, std::optional<std::uint64_t> value) {
    return matcher(Direction::Read, width, offset, value);
}
AccessMatcher Write(unsigned width, std::uint64_t offset, std::optional<std::uint64_t> value) {
    return matcher(Direction::Write, width, offset, value);
}

AccessMatcher Read8(std::uint64_t offset, std::optional<std::uint8_t> value) {
    return Read(1, offset, value);
}
AccessMatcher Read16(std::uint64_t offset, std::optional<std::uint16_t> value) {
    return Read(2, offset, value);
}
AccessMatcher Read32(std::uint64_t offset, std::optional<std::uint32_t> value) {
    return Read(4, offset, value);
}
AccessMatcher Read64(std::uint64_t offset, std::optional<std::uint64_t> value) {
    return Read(8, offset, value);
}
AccessMatcher Write8(std::uint64_t offset, std::optional<std::uint8_t> value) {
    return Write(1, offset, value);
}
AccessMatcher Write16(std::uint64_t offset, std::optional<std::uint16_t> value) {
    return Write(2, offset, value);
}
AccessMatcher Write32(std::uint64_t offset, std::optional<std::uint32_t> value) {
    return Write(4, offset, value);
}
AccessMatcher Write64(std::uint64_t offset, std::optional<std::uint64_t> value) {
    return Write(8, offset, value);
}

}  // namespace support
