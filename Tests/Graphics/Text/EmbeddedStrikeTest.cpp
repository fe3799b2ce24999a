// Fonts that hold pictures of their characters, one bit or a few bits a pixel, instead of outlines.
#include <gtest/gtest.h>

#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Text/Face.h"
#include "Vl/Graphics/Text/Render.h"

namespace {

constexpr rgba kWhite = 0x80ffffff;

/// A font of 8 pixels in BDF, with an "M" and one other character as "A".
std::string bdfFont(int bitsPerPixel, const std::string& characterA) {
    return "STARTFONT 2.1\nFONT test\nSIZE 8 72 72 " + std::to_string(bitsPerPixel) +
           "\nFONTBOUNDINGBOX 12 8 0 -2\n"
           "STARTPROPERTIES 5\nPIXEL_SIZE 8\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\n"
           "FONT_ASCENT 6\nFONT_DESCENT 2\nENDPROPERTIES\nCHARS 2\n"
           "STARTCHAR A\nENCODING 65\n" +
           characterA +
           "ENDCHAR\n"
           "STARTCHAR M\nENCODING 77\nSWIDTH 500 0\nDWIDTH 4 0\nBBX 3 4 0 0\nBITMAP\n" +
           (bitsPerPixel == 1 ? "A0\nE0\nA0\nA0\n" : "CC\nFC\nCC\nCC\n") + "ENDCHAR\nENDFONT\n";
}

class EmbeddedStrikeTest : public testing::Test {
protected:
    void load(const std::string& font) {
        const support::TemporaryDirectory directory;
        writeBytes(directory.file("font.bdf"), font);
        ASSERT_TRUE(TextRender::Render::NewFace(directory.file("font.bdf").c_str(), face));
        testing::internal::CaptureStderr();
        face.SetPixelSize(8);
        EXPECT_EQ("", testing::internal::GetCapturedStderr());
    }
    std::string drawn(const char* text) {
        bitmap.setPosition(1, 1);
        face.Render(text, bitmap, kWhite, 1000, 0);
        return artOf(20, 8, bitmap.getBuffer());
    }

    TextRender::Face face;
    RGB16Bitmap bitmap{20, 8};
};

}  // namespace

TEST_F(EmbeddedStrikeTest, OneBitPixelsAreDrawnWholeOrNotAtAll) {
    // Eleven columns, so that a row is two bytes; the last two rows hang below the baseline.
    load(bdfFont(1,
                 "SWIDTH 1500 0\nDWIDTH 12 0\nBBX 11 6 0 -2\nBITMAP\n"
                 "FFE0\n8020\n8420\n8020\nFFE0\n0A00\n"));
    EXPECT_EQ(4, face.capHeight());
    EXPECT_EQ(16, face.TextDimensions("AM", true, 0).width);
    EXPECT_EQ(drawn("AM"),
              "....................\n"
              ".###########.#.#....\n"
              ".#.........#.###....\n"
              ".#....#....#.#.#....\n"
              ".#.........#.#.#....\n"
              ".###########........\n"
              ".....#.#............\n"
              "....................\n");
    EXPECT_EQ(128, bitmap.getBuffer().alpha()[20 + 1]);
    EXPECT_EQ(0xffff, bitmap.getBuffer().pixels()[20 + 1]);
}

TEST_F(EmbeddedStrikeTest, TheLevelsOfTwoBitPixelsAreStretchedToTheWholeRange) {
    load(bdfFont(2, "SWIDTH 500 0\nDWIDTH 4 0\nBBX 4 1 0 0\nBITMAP\n1B\n"));  // 0, 1, 2, 3
    bitmap.setPosition(0, 0);
    face.Render("A", bitmap, kWhite, 1000, 0);
    const uint8_t* row = bitmap.getBuffer().alpha() + ptrdiff_t{3} * 20;
    EXPECT_EQ(0, row[0]);
    EXPECT_EQ(128 * 86 / 256, row[1]);
    EXPECT_EQ(128 * 171 / 256, row[2]);
    EXPECT_EQ(128, row[3]);
}

TEST_F(EmbeddedStrikeTest, ASizeThatTheFontHasNoPicturesForIsSaid) {
    load(bdfFont(1, "SWIDTH 500 0\nDWIDTH 4 0\nBBX 1 1 0 0\nBITMAP\n80\n"));
    testing::internal::CaptureStderr();
    face.SetPixelSize(30);
    EXPECT_EQ("Could not set size: 0x17\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(30, face.size());
}
