#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <iosfwd>
#include <optional>

#include "Tools/boardsim/Host/RegisterTrap/RegisterAccess.h"

namespace boardsim {

/// How GoogleTest shows an access: `Read32(0x4) = 0x1f`, `Write8(0x13, 0x80)`.
void PrintTo(const RegisterAccess& access, std::ostream* out);

}  // namespace boardsim

namespace support {

/// Matches one access by direction, width and offset, and by value where one is given. To be used through the
/// functions below: EXPECT_THAT(window.accesses(), ElementsAre(Read32(0x4), Write32(0x0, 0))).
class AccessMatcher {
public:
    using is_gtest_matcher = void;

    AccessMatcher(boardsim::RegisterAccess expected, bool withValue)
        : expected_(expected), withValue_(withValue) {}

    bool MatchAndExplain(const boardsim::RegisterAccess& access, std::ostream*) const;
    void DescribeTo(std::ostream* out) const;
    void DescribeNegationTo(std::ostream* out) const;

private:
    boardsim::RegisterAccess expected_;
    bool withValue_;
};

/// An access of `width` bytes.
AccessMatcher Read(unsigned width, std::uint64_t offset, std::optional<std::uint64_t> value = {});
AccessMatcher Write(unsigned width, std::uint64_t offset, std::optional<std::uint64_t> value = {});

/// The same by width in bits; without a value any will do.
AccessMatcher Read8(std::uint64_t offset, std::optional<std::uint8_t> value = {});
AccessMatcher Read16(std::uint64_t offset, std::optional<std::uint16_t> value = {});
AccessMatcher Read32(std::uint64_t offset, std::optional<std::uint32_t> value = {});
AccessMatcher Read64(std::uint64_t offset, std::optional<std::uint64_t> value = {});
AccessMatcher Write8(std::uint64_t offset, std::optional<std::uint8_t> value = {});
AccessMatcher Write16(std::uint64_t offset, std::optional<std::uint16_t> value = {});
AccessMatcher Write32(std::uint64_t offset, std::optional<std::uint32_t> value = {});
AccessMatcher Write64(std::uint64_t offset, std::optional<std::uint64_t> value = {});

}  // namespace support
