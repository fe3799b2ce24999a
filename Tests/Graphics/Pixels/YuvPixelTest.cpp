#include "Vl/Graphics/Pixels/YuvPixel.h"

#include <gtest/gtest.h>

TEST(YuvPixelTest, TellsItsFieldsFromTheBitsOfTheWord) {
    constexpr YuvPixel pixel{1U << 31 | 4U << 28 | 940U << 18 | 300U << 9 | 200U};
    EXPECT_EQ(200, pixel.cr());
    EXPECT_EQ(300, pixel.cb());
    EXPECT_EQ(940, pixel.y());
    EXPECT_EQ(4, pixel.level());
    EXPECT_TRUE(pixel.flag());
}

TEST(YuvPixelTest, EachFieldIsItsOwnBitsAndNoOthers) {
    for (int bit = 0; bit < 32; ++bit) {
        const YuvPixel pixel{1U << bit};
        EXPECT_EQ(bit < 9 ? 1 << bit : 0, pixel.cr()) << bit;
        EXPECT_EQ(bit >= 9 && bit < 18 ? 1 << (bit - 9) : 0, pixel.cb()) << bit;
        EXPECT_EQ(bit >= 18 && bit < 28 ? 1 << (bit - 18) : 0, pixel.y()) << bit;
        EXPECT_EQ(bit >= 28 && bit < 31 ? 1 << (bit - 28) : 0, pixel.level()) << bit;
        EXPECT_EQ(bit == 31, pixel.flag()) << bit;
    }
}

TEST(YuvPixelTest, IsPutTogetherFromItsFieldsWithoutTheFlag) {
    EXPECT_EQ(4U << 28 | 940U << 18 | 300U << 9 | 200U, YuvPixel::of(940, 300, 200, 4).word);
    EXPECT_EQ(0x7fffffffU, YuvPixel::of(1023, 511, 511, 7).word);
}

TEST(YuvPixelTest, FieldsTooLargeOrNegativeAreCutToTheirWidths) {
    EXPECT_EQ(0U, YuvPixel::of(1024, 512, 512, 8).word);
    EXPECT_EQ(0x7fffffffU, YuvPixel::of(-1, -1, -1, -1).word);
}

TEST(YuvPixelTest, TakesTheFlagOfAnotherAndNothingElse) {
    EXPECT_EQ(0x80000005U, YuvPixel{5}.withFlagOf({0xfffffff0}).word);
    EXPECT_EQ(0x7ffffff0U, YuvPixel{0xfffffff0}.withFlagOf({5}).word);
}

TEST(YuvPixelTest, AFreshPixelIsAZeroWord) {
    EXPECT_EQ(0U, YuvPixel().word);
}
