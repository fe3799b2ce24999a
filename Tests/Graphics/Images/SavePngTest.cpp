#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainCanvas.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

using testing::ElementsAre;
using testing::ExitedWithCode;

namespace {

/// Runs in the directory that the files are written to: the companion's name must not grow too long.
class SavePngTest : public testing::Test {
protected:
    SavePngTest() { std::filesystem::current_path(directory.file("")); }
    ~SavePngTest() override { std::filesystem::current_path(before); }

    const std::filesystem::path before = std::filesystem::current_path();
    support::TemporaryDirectory directory;
    std::string path = "a.png";
};

using SavePngDeathTest = SavePngTest;

}  // namespace

TEST_F(SavePngTest, WritesRedGreenBlueAndAlphaInRowOrder) {
    PlainCanvas canvas(2, 2);
    canvas.getBuffer().pixels = {0x80030201, 0x40060504, 0x00090807, 0x010c0b0a};
    canvas.SavePng(path.c_str());
    const PngPixels read = readPngFile(path);
    EXPECT_EQ(2U, read.width);
    EXPECT_EQ(2U, read.height);
    EXPECT_THAT(read.samples, ElementsAre(1, 2, 3, 255, 4, 5, 6, 127, 7, 8, 9, 0, 10, 11, 12, 1));
}

TEST_F(SavePngTest, TheCompanionHoldsTheAlphaAsOpaqueGrey) {
    PlainCanvas canvas(2, 1);
    canvas.getBuffer().pixels = {0x80030201, 0x40060504};
    canvas.SavePng(path.c_str());
    EXPECT_THAT(readPngFile("a.png_alp.png").samples, ElementsAre(255, 255, 255, 255, 127, 127, 127, 255));
}

TEST_F(SavePngTest, EveryCoverageIsScaledAndKeptToEightBits) {
    PlainCanvas canvas(256, 1);
    for (uint32_t coverage = 0; coverage < 256; ++coverage) {
        canvas.getBuffer().pixels[coverage] = coverage << 24;
    }
    canvas.SavePng(path.c_str());
    const PngPixels read = readPngFile(path);
    for (size_t coverage = 0; coverage < 256; ++coverage) {
        EXPECT_EQ((coverage * 255 / 128) % 256, read.samples[coverage * 4 + 3]) << coverage;
    }
}

TEST_F(SavePngTest, AnOpaquePanelPixelHasAlphaTwoHundredFiftyTwoOnPurpose) {
    RGB16Bitmap bitmap(2, 1);
    bitmap.FillRect(1, 1, 0x80402010);
    bitmap.SavePng(path.c_str());
    EXPECT_THAT(readPngFile(path).samples, ElementsAre(0x10, 0x20, 0x40, 252, 0, 0, 0, 0));
    EXPECT_THAT(readPngFile("a.png_alp.png").samples, ElementsAre(252, 252, 252, 255, 0, 0, 0, 255));
}

TEST_F(SavePngTest, AnOpaqueOverlayPixelHasAlphaTwoHundredFiftyFive) {
    BitmapWithBuffer<YUVPixelBuffer> bitmap(2, 1);
    bitmap.FillRect(1, 1, 0x80000000);
    bitmap.SavePng(path.c_str());
    const PngPixels read = readPngFile(path);
    EXPECT_EQ(255, read.samples[3]);
    EXPECT_EQ(0, read.samples[7]);
}

TEST_F(SavePngTest, APathOfNinetyOneCharactersHasAWholeCompanionName) {
    PlainCanvas canvas(1, 1);
    const std::string fits(91, 'n');
    canvas.SavePng(fits.c_str());
    EXPECT_TRUE(std::filesystem::exists(fits + "_alp.png"));
    const std::string longer(92, 'm');
    canvas.SavePng(longer.c_str());
    EXPECT_TRUE(std::filesystem::exists(longer + "_alp.pn"));
    EXPECT_FALSE(std::filesystem::exists(longer + "_alp.png"));
}

TEST_F(SavePngTest, APathOfNinetyNineCharactersIsItsOwnCompanion) {
    PlainCanvas canvas(1, 1);
    canvas.getBuffer().pixels = {0x80030201};
    const std::string path99(99, 'n');
    canvas.SavePng(path99.c_str());
    EXPECT_THAT(readPngFile(path99).samples, ElementsAre(255, 255, 255, 255));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator("."), {}));
}

TEST_F(SavePngTest, WhatIsSavedIsLoadedAgain) {
    RGB16Bitmap bitmap(5, 3);
    bitmap.FillRect(5, 3, 0x80f8fcf8);
    bitmap.setPosition(1, 1);
    bitmap.FillRect(2, 1, 0x80102030);
    bitmap.SavePng(path.c_str());
    RGB16Bitmap loaded;
    ASSERT_EQ(0, loaded.loadpng(path.c_str(), true));
    for (int i = 0; i < 15; ++i) {
        EXPECT_EQ(bitmap.getBuffer().pixels()[i], loaded.getBuffer().pixels()[i]) << i;
    }
}

TEST_F(SavePngDeathTest, AnEmptyBitmapIsRefusedByLibpng) {
    RGB16Bitmap bitmap;
    EXPECT_EXIT(bitmap.SavePng(path.c_str()), ExitedWithCode(2),
                "wpng:  libpng initialization problem \\(longjmp\\)\n$");
}

TEST_F(SavePngDeathTest, APathThatCannotBeOpenedEndsTheProcess) {
    RGB16Bitmap bitmap(1, 1);
    EXPECT_EXIT(bitmap.SavePng("none/a.png"), ExitedWithCode(2),
                "wpng:  libpng initialization problem \\(longjmp\\)\n$");
    EXPECT_EXIT(bitmap.SavePng(nullptr), ExitedWithCode(2),
                "wpng:  libpng initialization problem \\(longjmp\\)\n$");
}

TEST_F(SavePngDeathTest, ACompanionThatCannotBeOpenedEndsTheProcessAfterThePicture) {
    std::filesystem::create_directory("a.png_alp.png");
    RGB16Bitmap bitmap(1, 1);
    EXPECT_EXIT(bitmap.SavePng(path.c_str()), ExitedWithCode(2),
                "wpng:  libpng initialization problem \\(longjmp\\)\n$");
    EXPECT_EQ(1U, readPngFile(path).width);
}

TEST_F(SavePngDeathTest, NoMemoryForThePixelsIsFour) {
    RGB16Bitmap bitmap(1, 1);
    const auto saveWithoutMemory = [&] {
        libraryFaults.arraysLeft = 0;
        bitmap.SavePng(path.c_str());
    };
    EXPECT_EXIT(saveWithoutMemory(), ExitedWithCode(4), "^wpng:  insufficient memory for image data\n$");
}
