#include <gtest/gtest.h>

#include <cstring>

#include "Tools/boardsim/Board/RegisterTrace.h"
#include "Tools/boardsim/Board/ScreenTrace.h"

namespace {

using boardsim::describe;
using boardsim::readTrapEvent;
using boardsim::ScreenEvent;
using boardsim::TrapEvent;
using boardsim::TrapEventKind;

std::span<const std::byte> bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

TEST(ScreenTraceTest, SaysWhatHappenedToTheScreen) {
    const std::vector<std::byte> frame(15360);
    using Kind = ScreenEvent::Kind;
    EXPECT_EQ("screen frame 15360 bytes at 0", describe(ScreenEvent{Kind::Frame, 0, frame}));
    EXPECT_EQ("screen piece 1 byte at 15359", describe(ScreenEvent{Kind::Piece, 15359, bytes("x")}));
    EXPECT_EQ("screen state 0x31 0x0a at 0", describe(ScreenEvent{Kind::State, 0, bytes("1\n")}));
    EXPECT_EQ("screen read 0x01 at 0", describe(ScreenEvent{Kind::Read, 0, bytes("\x01")}));
    EXPECT_EQ("screen refused 3 bytes at 7: Invalid argument",
              describe(ScreenEvent{Kind::Refused, 7, bytes("abc"), std::errc::invalid_argument}));
    EXPECT_EQ("screen refused a read at 0: Input/output error",
              describe(ScreenEvent{Kind::Refused, 0, {}, std::errc::io_error}));
}

TrapEvent event(TrapEventKind kind, std::uint8_t width, std::uint64_t offset, std::uint64_t value) {
    TrapEvent result;
    result.kind = kind;
    result.width = width;
    result.offset = offset;
    result.value = value;
    return result;
}

TEST(RegisterTraceTest, SaysOffsetWidthAndValue) {
    EXPECT_EQ("fpga read 0x1004 32 0x00000000", describe(event(TrapEventKind::Read, 4, 0x1004, 0)));
    EXPECT_EQ("fpga write 0x0000 8 0x7f", describe(event(TrapEventKind::Write, 1, 0, 0x7F)));
    EXPECT_EQ("fpga write 0xfffe 16 0x00ff", describe(event(TrapEventKind::Write, 2, 0xFFFE, 0xFF)));
    EXPECT_EQ("fpga read 0x0008 64 0x0123456789abcdef",
              describe(event(TrapEventKind::Read, 8, 8, 0x0123456789ABCDEF)));
    EXPECT_EQ("fpga read 0x0040 256 0x0000000000000001", describe(event(TrapEventKind::Read, 32, 0x40, 1)));
    EXPECT_EQ("screen seek 15360", describe(event(TrapEventKind::Seek, 0, 15360, 0)));
}

TEST(RegisterTraceTest, TakesDatagramsOfItsVersionOnly) {
    TrapEvent good = event(TrapEventKind::Write, 4, 0x1000, 3);
    std::string datagram(sizeof good, '\0');
    std::memcpy(datagram.data(), &good, sizeof good);
    ASSERT_TRUE(readTrapEvent(datagram));
    EXPECT_EQ(good, *readTrapEvent(datagram));

    EXPECT_FALSE(readTrapEvent(""));
    EXPECT_FALSE(readTrapEvent(datagram.substr(1)));
    EXPECT_FALSE(readTrapEvent(datagram + "x"));
    std::string otherVersion = datagram;
    otherVersion[0] = 2;
    EXPECT_FALSE(readTrapEvent(otherVersion));
    for (const char kind : {'\x00', '\x04', '\x7F'}) {
        std::string otherKind = datagram;
        otherKind[1] = kind;
        EXPECT_FALSE(readTrapEvent(otherKind));
    }
}

}  // namespace
