#include "Vl/Common/Streams/Bitfields.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "Vl/Common/Streams/InputStream.h"
#include "Vl/Common/Streams/OutputStream.h"

namespace {

using namespace std::string_view_literals;
using Valen::InputStream;
using Valen::OutputStream;
using Valen::Bitfields::DynamicProvider;

TEST(BitfieldsTest, TheLowestWordComesFirstEachMostSignificantByteFirst) {
    const std::array<unsigned long, 2> words{0x0102030405060708, 0x1112131415161718};
    OutputStream stream;
    Valen::Bitfields::pack(words.data(), 128, stream);
    EXPECT_EQ("\x01\x02\x03\x04\x05\x06\x07\x08\x11\x12\x13\x14\x15\x16\x17\x18"sv, stream.str());
}

struct Size {
    int bits;
    int bytes;
};

class BitfieldsSizeTest : public testing::TestWithParam<Size> {};

TEST_P(BitfieldsSizeTest, ASetTakesWholeWords) {
    const std::array<unsigned long, 3> words{1, 2, 3};
    OutputStream stream(0);
    Valen::Bitfields::pack(words.data(), GetParam().bits, stream);
    EXPECT_EQ(GetParam().bytes, stream.GetSize());

    InputStream in(stream);
    std::array<unsigned long, 4> read{9, 9, 9, 9};
    Valen::Bitfields::unpack(read.data(), GetParam().bits, in);
    EXPECT_EQ(GetParam().bytes, in.tellg());
    EXPECT_EQ(9u, read[static_cast<std::size_t>(GetParam().bytes / 8)]);
}

INSTANTIATE_TEST_SUITE_P(Table, BitfieldsSizeTest,
                         testing::Values(Size{-2147483647 - 1, 0}, Size{-1, 0}, Size{0, 0}, Size{1, 8},
                                         Size{63, 8}, Size{64, 8}, Size{65, 16}, Size{70, 16}, Size{128, 16},
                                         Size{129, 24}, Size{192, 24}));

TEST(BitfieldsTest, BitsAboveTheLastOneArePackedAsTheyAre) {
    const unsigned long word = 0xFFFFFFFFFFFFFFFF;
    OutputStream stream;
    Valen::Bitfields::pack(&word, 1, stream);
    EXPECT_EQ("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", stream.str());
}

TEST(BitfieldsTest, WordsThatTheStreamLacksAreZero) {
    InputStream stream("\x80", 1);
    std::array<unsigned long, 2> words{9, 9};
    Valen::Bitfields::unpack(words.data(), 128, stream);
    EXPECT_EQ(0x8000000000000000u, words[0]);
    EXPECT_EQ(0u, words[1]);
}

TEST(BitfieldsTest, TheTextBeginsWithBitZero) {
    const std::array<unsigned long, 2> words{0x8000000000000006, 1};
    EXPECT_EQ("011", Valen::Bitfields::toString(words.data(), 3));
    EXPECT_EQ("011" + std::string(60, '0') + "110", Valen::Bitfields::toString(words.data(), 66));
    EXPECT_EQ("", Valen::Bitfields::toString(nullptr, 0));
    EXPECT_EQ("", Valen::Bitfields::toString(nullptr, -1));
}

TEST(BitfieldsTest, TheSizeCheckOfAFixedSetDoesNothingOnPurpose) {
    EXPECT_NO_THROW(Valen::Bitfields::FixedProviderResize(64, 65535));
    EXPECT_NO_THROW(Valen::Bitfields::FixedProviderResize(64, -1));
}

TEST(DynamicProviderTest, SeventyBitsTakeTwoAndSixteenBytes) {
    DynamicProvider set(70);
    set.words()[0] = 1;
    set.words()[1] = 0x20;
    OutputStream stream;
    set.pack(stream);
    EXPECT_EQ("\x00\x46\x00\x00\x00\x00\x00\x00\x00\x01\x00\x00\x00\x00\x00\x00\x00\x20"sv, stream.str());
}

TEST(DynamicProviderTest, AnEmptySetIsItsCountOnly) {
    OutputStream stream;
    DynamicProvider().pack(stream);
    EXPECT_EQ("\0\0"sv, stream.str());
}

TEST(DynamicProviderTest, UnpackingTakesOverCountAndWords) {
    InputStream stream("\x00\x03\x00\x00\x00\x00\x00\x00\x00\x05rest", 14);
    DynamicProvider set(200);
    set.unpack(stream);
    EXPECT_EQ(3, set.size());
    EXPECT_EQ("101", set.toString());
    EXPECT_EQ('r', stream.peek());
}

TEST(DynamicProviderTest, MemoryIsAllocatedOnlyForMoreWordsThanEverBefore) {
    DynamicProvider set(128);
    const unsigned long* const words = set.words();
    for (const int bits : {64, 1, 128, 0, 127}) {
        DynamicProvider other(bits);
        OutputStream stream;
        other.pack(stream);
        InputStream in(stream);
        set.unpack(in);
        EXPECT_EQ(bits, set.size());
        EXPECT_EQ(words, set.words());
    }
    InputStream larger("\x00\x81", 2);
    set.unpack(larger);
    EXPECT_EQ(129, set.size());
    EXPECT_EQ(std::string(129, '0'), set.toString());
}

TEST(DynamicProviderTest, WhatATooShortStreamDoesNotSayIsZero) {
    DynamicProvider set(64);
    set.words()[0] = 0xFF;
    InputStream none;
    set.unpack(none);
    EXPECT_EQ(0, set.size());

    InputStream onlyACount("\xFF\xFF", 2);
    set.unpack(onlyACount);
    EXPECT_EQ(65535, set.size());
    EXPECT_EQ(std::string(65535, '0'), set.toString());
}

TEST(DynamicProviderTest, SizesThatNoCountCanSayBecomeTheNearest) {
    EXPECT_EQ(0, DynamicProvider(-1).size());
    EXPECT_EQ(65535, DynamicProvider(65535).size());
    EXPECT_EQ(65535, DynamicProvider(65536).size());
}

TEST(DynamicProviderTest, ResizingKeepsTheBitsThatStay) {
    DynamicProvider set(3);
    set.words()[0] = 5;
    set.resize(100);
    EXPECT_EQ("101" + std::string(97, '0'), set.toString());
    set.resize(2);
    EXPECT_EQ("10", set.toString());
}

TEST(DynamicProviderTest, ASetThatWasMovedFromIsStillWhole) {
    DynamicProvider first(70);
    first.words()[1] = 0x20;
    const DynamicProvider second(std::move(first));  // NOLINT: moving copies, which is what is tested
    first.words()[1] = 0;                            // NOLINT
    EXPECT_EQ(70, first.size());
    EXPECT_EQ(std::string(69, '0') + "1", second.toString());
}

TEST(DynamicProviderTest, SetsOfAnySizeComeBack) {
    std::mt19937_64 random(3);
    DynamicProvider read;
    for (int round = 0; round < 200; ++round) {
        DynamicProvider set(static_cast<int>(random() % 700));
        for (int bit = 0; bit < set.size(); bit += 64) {
            set.words()[bit / 64] = random();
        }
        OutputStream out;
        set.pack(out);
        InputStream in(out);
        read.unpack(in);
        EXPECT_EQ(set.toString(), read.toString());
        EXPECT_TRUE(in.eof());
    }
}

}  // namespace
