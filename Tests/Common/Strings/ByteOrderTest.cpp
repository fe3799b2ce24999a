#include "Vl/Common/Strings/ByteOrder.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>

namespace {

TEST(ByteOrderTest, NetworkOrderBeginsWithTheMostSignificantByte) {
    const std::uint64_t network = Valen::htonll(std::uint64_t{0x0102030405060708});
    std::array<unsigned char, 8> bytes;
    std::memcpy(bytes.data(), &network, sizeof(network));
    EXPECT_THAT(bytes, testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

TEST(ByteOrderTest, BytesAreReversedBothWays) {
    EXPECT_EQ(Valen::htonll(std::uint64_t{0xF1F2F3F4F5F6F7F8}), 0xF8F7F6F5F4F3F2F1U);
    EXPECT_EQ(Valen::ntohll(std::uint64_t{0xF1F2F3F4F5F6F7F8}), 0xF8F7F6F5F4F3F2F1U);
}

TEST(ByteOrderTest, SignedNumbersStaySigned) {
    const std::int64_t network = Valen::htonll(std::int64_t{-2});
    EXPECT_EQ(network, -0x0100000000000001);
    EXPECT_EQ(Valen::ntohll(network), -2);
}

TEST(ByteOrderTest, AnyTypeOf64BitsIsTaken) {
    EXPECT_EQ(Valen::htonll(1LL), 0x0100000000000000LL);
    EXPECT_EQ(Valen::ntohll(1ULL), 0x0100000000000000ULL);
}

}  // namespace
