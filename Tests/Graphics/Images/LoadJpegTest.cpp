#include <gmock/gmock.h>

#include <filesystem>

#include "Tests/Graphics/JpegFiles.h"
#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainCanvas.h"
#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"

using testing::Each;
using testing::HasSubstr;
using testing::Not;

namespace {

class LoadJpegTest : public testing::Test {
protected:
    /// Loads the file and keeps what is said on standard error.
    int load(bool resize = false) {
        testing::internal::CaptureStderr();
        const int result = bitmap.loadjpeg(path.c_str(), resize);
        said = testing::internal::GetCapturedStderr();
        return result;
    }
    std::string art() const { return artOf(bitmap.getWidth(), bitmap.getHeight(), bitmap.getBuffer()); }

    void writeFlat(uint32_t width, uint32_t height, JpegFile::Kind kind = JpegFile::Rgb) {
        writeJpegFile(path, {.width = width,
                             .height = height,
                             .kind = kind,
                             .samples = std::vector<uint8_t>(size_t{width} * height * kind, 200)});
    }

    support::TemporaryDirectory directory;
    std::string path = directory.file("image.jpg");
    std::string said;
    RGB16Bitmap bitmap{8, 4};
};

}  // namespace

TEST_F(LoadJpegTest, DrawsAtTheDrawingPositionAndMovesPastThePicture) {
    writeFlat(3, 2);
    bitmap.setPosition(1, 1);
    EXPECT_EQ(0, load());
    EXPECT_EQ("", said);
    EXPECT_EQ(art(),
              "........\n"
              ".###....\n"
              ".###....\n"
              "........\n");
    EXPECT_EQ(4, bitmap.getX());
    EXPECT_EQ(1, bitmap.getY());
}

TEST_F(LoadJpegTest, CentresAboutTheDrawingPosition) {
    writeFlat(3, 3);
    bitmap.setPlacement({4, 2, VerticalAlignment::Centred, HorizontalAlignment::Centred});
    EXPECT_EQ(0, load());
    EXPECT_EQ(art(),
              "........\n"
              "...###..\n"
              "...###..\n"
              "...###..\n");
    EXPECT_EQ(4, bitmap.getX());
    EXPECT_EQ(2, bitmap.getY());
}

TEST_F(LoadJpegTest, DropsWhatLiesOutsideOnEverySide) {
    writeFlat(4, 3);
    bitmap.setPosition(-2, -1);
    EXPECT_EQ(0, load());
    bitmap.setPosition(6, 3);
    EXPECT_EQ(0, load());
    EXPECT_EQ(art(),
              "##......\n"
              "##......\n"
              "........\n"
              "......##\n");
}

TEST_F(LoadJpegTest, ResizeTakesTheImagesSizeFirst) {
    writeFlat(3, 2);
    EXPECT_EQ(0, load(true));
    EXPECT_EQ(art(), "###\n###\n");
}

TEST_F(LoadJpegTest, IsOpaque) {
    writeFlat(2, 1);
    PlainCanvas canvas;
    EXPECT_EQ(0, canvas.loadjpeg(path.c_str(), true));
    EXPECT_THAT(canvas.getBuffer().pixels, Each(rgba(0x80c8c8c8)));
}

TEST_F(LoadJpegTest, AFileThatCannotBeOpenedIsSaidAndMinusOne) {
    path = directory.file("none.jpg");
    EXPECT_EQ(-1, load());
    EXPECT_EQ("can't open " + path + "\n", said);
    path = "";
    EXPECT_EQ(-1, load());
    EXPECT_EQ("can't open \n", said);
    testing::internal::CaptureStderr();
    EXPECT_EQ(-1, bitmap.loadjpeg(nullptr, false));
    EXPECT_EQ("can't open (null)\n", testing::internal::GetCapturedStderr());
}

TEST_F(LoadJpegTest, WhatLibjpegRefusesIsMinusTwoAndDrawsAndMovesNothing) {
    bitmap.setPlacement({1, 1, VerticalAlignment::Centred, HorizontalAlignment::Centred});
    for (const char* bytes : {"", "\xff", "no picture at all", "\xff\xd8\xff\xd9"}) {
        writeBytes(path, bytes);
        EXPECT_EQ(-2, load(true)) << bytes;
        EXPECT_NE("", said);
    }
    path = std::filesystem::current_path();
    EXPECT_EQ(-2, load(true));
    EXPECT_EQ(8, bitmap.getWidth());
    EXPECT_EQ(1, bitmap.getX());
    EXPECT_THAT(art(), Not(HasSubstr("#")));
}

TEST_F(LoadJpegTest, AnotherColourSpaceThanRgbIsSaidAndMinusThree) {
    writeFlat(3, 2);
    FaultyLibraries faults;
    faults->jpegStaysYcc = true;
    EXPECT_EQ(-3, load());
    EXPECT_EQ("invalid color space\n", said);
}

TEST_F(LoadJpegTest, GreyAndCmykAndWhatHasTwoComponentsIsSaidAndMinusFour) {
    for (const auto kind : {JpegFile::Grey, JpegFile::Unknown, JpegFile::Cmyk}) {
        writeFlat(3, 2, kind);
        EXPECT_EQ(-4, load()) << kind;
        EXPECT_EQ("invalid number of components\n", said);
    }
    EXPECT_THAT(art(), Not(HasSubstr("#")));
}

TEST_F(LoadJpegTest, AnErrorAmidTheRowsIsMinusTwoAfterTheRowsBeforeIt) {
    writeFlat(3, 3);
    bitmap.setPlacement({8, 4, VerticalAlignment::Bottom, HorizontalAlignment::End});
    FaultyLibraries faults;
    faults->jpegRowsLeft = 2;
    EXPECT_EQ(-2, load());
    EXPECT_EQ(art(),
              "........\n"
              ".....###\n"
              ".....###\n"
              "........\n");
    EXPECT_EQ(5, bitmap.getX());
    EXPECT_EQ(1, bitmap.getY());
}
