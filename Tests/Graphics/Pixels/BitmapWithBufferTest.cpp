#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"

#include <gmock/gmock.h>

#include <new>
#include <vector>

#include "Tests/Graphics/LibraryFaults.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"

TEST(BitmapWithBufferTest, HoldsABufferOfItsSize) {
    const RGB16Bitmap bitmap(160, 48);
    EXPECT_EQ(160, bitmap.getWidth());
    EXPECT_EQ(48, bitmap.getHeight());
    EXPECT_EQ(7680, bitmap.getBuffer().count());
}

TEST(BitmapWithBufferTest, StartsAtTheTopLeftUnaligned) {
    const RGB16Bitmap bitmap(3, 2);
    EXPECT_EQ(0, bitmap.getX());
    EXPECT_EQ(0, bitmap.getY());
    EXPECT_EQ(VerticalAlignment::Top, bitmap.getPlacement().vertical);
    EXPECT_EQ(HorizontalAlignment::Start, bitmap.getPlacement().horizontal);
}

TEST(BitmapWithBufferTest, ResizeClearsThePictureAndKeepsThePlacement) {
    RGB16Bitmap bitmap(3, 2);
    bitmap.setPosition(1, 1);
    bitmap.setVerticalAlignment(VerticalAlignment::Bottom);
    bitmap.getBuffer().setPixel(0, 0x80ffffff);
    bitmap.resize(5, 4);
    EXPECT_EQ(5, bitmap.getWidth());
    EXPECT_EQ(4, bitmap.getHeight());
    EXPECT_EQ(20, bitmap.getBuffer().count());
    EXPECT_EQ(rgba(0), bitmap.getBuffer().getPixel(0));
    EXPECT_EQ(1, bitmap.getX());
    EXPECT_EQ(VerticalAlignment::Bottom, bitmap.getPlacement().vertical);
}

TEST(BitmapWithBufferTest, SizesThatMakeNoSenseMakeAnEmptyBitmap) {
    for (const auto& [width, height] : {std::pair{-1, 4}, {4, 0}, {100000, 100000}}) {
        const RGB16Bitmap bitmap(width, height);
        EXPECT_EQ(0, bitmap.getWidth());
        EXPECT_EQ(0, bitmap.getHeight());
    }
}

TEST(BitmapWithBufferTest, StaysAsItWasWhenMemoryIsShort) {
    RGB16Bitmap bitmap(3, 2);
    bitmap.getBuffer().setPixel(5, 0x80ffffff);
    FaultyLibraries faults;
    faults->arraysLeft = 1;
    EXPECT_THROW(bitmap.resize(100, 100), std::bad_alloc);
    EXPECT_EQ(3, bitmap.getWidth());
    EXPECT_EQ(2, bitmap.getHeight());
    EXPECT_EQ(0xffff, bitmap.getBuffer().pixels()[5]);
}

TEST(BitmapWithBufferTest, HoldsOverlayPixelsAsWell) {
    YUVBitmap bitmap(3, 2);
    EXPECT_EQ(6, bitmap.getBuffer().count());
    bitmap.setPosition(1, 1);
    bitmap.FillRect(5, 5, 0x80ffffff);
    const uint32_t white = 4U << 28 | 940U << 18 | 256U << 9 | 256U;
    EXPECT_THAT(std::vector<uint32_t>(bitmap.getBuffer().pixels(), bitmap.getBuffer().pixels() + 6),
                testing::ElementsAre(0U, 0U, 0U, 0U, white, white));
}

TEST(BitmapWithBufferTest, IsUsedThroughItsBase) {
    RGB16Bitmap bitmap(2, 2);
    const Bitmap& base = bitmap;
    base.getBuffer().setPixel(3, 0x80ffffff);
    EXPECT_EQ(0xffff, bitmap.getBuffer().pixels()[3]);
}
