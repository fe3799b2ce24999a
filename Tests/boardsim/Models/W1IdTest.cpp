#include "Tools/boardsim/Models/W1Id.h"

#include <gtest/gtest.h>

namespace {

using boardsim::W1Id;

std::array<std::byte, 8> bytes(std::array<unsigned, 8> values) {
    std::array<std::byte, 8> result{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        result[i] = std::byte(values[i]);
    }
    return result;
}

TEST(W1IdTest, IsNamedByFamilyAndSerial) {
    EXPECT_EQ("2d-000000000001", (W1Id{0x2D, 1}.name()));
    EXPECT_EQ("02-ffffffffffff", (W1Id{0x02, 0xFFFFFFFFFFFF}.name()));
}

TEST(W1IdTest, TheRomIsFamilyThenSerialFromItsLowestByteThenCrc) {
    // The example of the CRC in the maker's application note on iButton checksums.
    EXPECT_EQ(bytes({0x02, 0x1C, 0xB8, 0x01, 0x00, 0x00, 0x00, 0xA2}), (W1Id{0x02, 0x00000001B81C}.rom()));
    EXPECT_EQ(bytes({0, 0, 0, 0, 0, 0, 0, 0}), (W1Id{0, 0}.rom()));
}

TEST(W1IdTest, ReadsItsOwnName) {
    const W1Id id{0x22, 0x123456789ABC};
    EXPECT_EQ(id, W1Id::named(id.name()));
    EXPECT_EQ(id, W1Id::named(id.name() + "\n"));
    EXPECT_EQ((W1Id{0x2D, 0x1A}), W1Id::named("2d-1a"));
    EXPECT_EQ((W1Id{0x2D, 0x1A}), W1Id::named("2D-1A\n"));
}

TEST(W1IdTest, OtherTextIsNoName) {
    for (const char* text : {"", "2d", "2d-", "2d-\n", "2-1a", "2dx1a", "xx-1a", "2d--1", "-2-1a", "2d- 1"}) {
        EXPECT_EQ(std::nullopt, W1Id::named(text)) << text;
    }
}

}  // namespace
