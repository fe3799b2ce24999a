#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <climits>
#include <random>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainText.h"
#include "Tests/Graphics/PlainYuv.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"
#include "Vl/Graphics/Text/Face.h"
#include "Vl/Graphics/Text/Render.h"

namespace {

constexpr rgba kWhite = 0x80ffffff;
constexpr int kPoints = 14;

class FaceRenderTest : public testing::Test {
protected:
    FaceRenderTest() {
        EXPECT_TRUE(TextRender::Render::NewFace(kTestFont, face));
        setPoints(kPoints);
    }

    void setPoints(int points) {
        face.SetSize(points);
        plain.setPoints(points);
    }
    void render(const std::string& text, int maxX = INT_MAX, int cell = 0) {
        face.Render(text.c_str(), bitmap, kWhite, maxX, cell);
    }
    void renderAligned(const std::string& text, FontSpace box = {}) {
        face.RenderAligned(text.c_str(), bitmap, kWhite, box, 0x80000000, 0);
    }
    void align(HorizontalAlignment horizontal, VerticalAlignment vertical) {
        bitmap.setHorizontalAlignment(horizontal);
        bitmap.setVerticalAlignment(vertical);
    }
    void expectAt(int x, int y) {
        EXPECT_EQ(x, bitmap.getX());
        EXPECT_EQ(y, bitmap.getY());
    }
    std::string writeIcon(uint32_t width, uint32_t height) {
        writePngFile(directory.file("icon.png"),
                     {.width = width,
                      .height = height,
                      .colourType = PngFile::Grey,
                      .samples = std::vector<uint8_t>(size_t{width} * height, 255)});
        return directory.file("icon.png");
    }

    support::TemporaryDirectory directory;
    TextRender::Face face;
    PlainText plain;
    RGB16Bitmap bitmap{160, 48};
    PlainFrame expected{160, 48};
    FaultyLibraries faults;
};

}  // namespace

TEST_F(FaceRenderTest, DrawsEveryCharacterAsFreeTypeRendersIt) {
    std::string text;
    for (int code = 11; code <= 255; ++code) {
        text += static_cast<char>(code);
    }
    for (int i = 0; i < 6; ++i) {  // the second time from the cache
        const std::string part = text.substr(static_cast<size_t>(i % 3) * 80, 80);
        bitmap.setPosition(2, 3);
        render(part, 150);
        plain.draw(expected, part, 2, 3, 0x80ffffff, 150, 0);
        expectSame(expected, bitmap.getBuffer());
    }
}

TEST_F(FaceRenderTest, DrawsAnywhereInAnySizeAndColourAsThePlainLoop) {
    std::mt19937 random(11);
    const auto between = [&](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    };
    for (int i = 0; i < 300; ++i) {
        setPoints(between(4, 60));
        const int x = between(-60, 170);
        const int y = between(-40, 60);
        const int maxX = between(0, 1) == 0 ? INT_MAX / 2 : between(-10, 170);
        const int cell = between(0, 2) == 0 ? between(-5, 40) : 0;
        const auto colour = static_cast<uint32_t>(random() % 129 << 24 | (random() & 0xffffff));
        const std::string text = "Some \xc4\xd6 text,\nin two lines";
        bitmap.setPosition(x, y);
        face.Render(text.c_str(), bitmap, colour, maxX, cell);
        plain.draw(expected, text, x, y, colour, maxX, cell);
        expectSame(expected, bitmap.getBuffer());
    }
}

TEST_F(FaceRenderTest, PositionAndAlignmentStay) {
    bitmap.setPosition(20, 10);
    align(HorizontalAlignment::End, VerticalAlignment::Bottom);
    render("Some\ntext \x01 with an icon");
    expectAt(20, 10);
    EXPECT_EQ(HorizontalAlignment::End, bitmap.getPlacement().horizontal);
    EXPECT_EQ(VerticalAlignment::Bottom, bitmap.getPlacement().vertical);
}

TEST_F(FaceRenderTest, ALineThatReachesMaxXWrapsToTheLeftMargin) {
    bitmap.setPosition(5, 2);
    render("WW", 5 + 10);
    plain.draw(expected, "W\nW", 5, 2, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, TheLeftMarginOfATextThatStartsOutsideIsColumnZero) {
    bitmap.setPosition(-7, 2);
    render("WW", 0);
    plain.draw(expected, "W", -7, 2, 0x80ffffff, INT_MAX, 0);
    plain.draw(expected, "W", 0, 2 + kPoints, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, RenderingStopsSilentlyWhenTheNextBaselineReachesTheHeight) {
    // The second baseline lies on the last row, the third would lie below.
    bitmap.setPosition(0, 47 - kPoints - plain.capHeight());
    testing::internal::CaptureStderr();
    render("WWW", 10);
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    plain.draw(expected, "W\nW", 0, 47 - kPoints - plain.capHeight(), 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());

    bitmap.resize(160, 48);
    bitmap.setPosition(0, 48 - kPoints - plain.capHeight());
    render("WWW", 10);
    PlainFrame oneLine(160, 48);
    plain.draw(oneLine, "W", 0, 48 - kPoints - plain.capHeight(), 0x80ffffff, INT_MAX, 0);
    expectSame(oneLine, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, ALineBreakGoesOnBelowTheBitmap) {
    bitmap.setPosition(0, 0);
    render("A\n\n\n\n\n\n\n\n\nB");
    plain.draw(expected, "A", 0, 0, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, EachCharacterIsCentredInItsCell) {
    bitmap.setPosition(4, 4);
    render("iWi", INT_MAX, 24);
    for (int i = 0; i < 3; ++i) {
        const std::string letter{"iWi"[i]};
        const int margin = 24 / 2 - plain.unitsWide(letter) / 128;
        plain.draw(expected, letter, 4 + 24 * i + margin, 4, 0x80ffffff, INT_MAX, 0);
    }
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, FullCoverageOfAnOpaqueColourIsOpaque) {
    setPoints(40);
    render("M");
    const auto coverage = PlainFrame(160, 48, bitmap.getBuffer()).coverage;
    EXPECT_EQ(128, *std::max_element(coverage.begin(), coverage.end()));
}

TEST_F(FaceRenderTest, AnIconIsCentredOnTheMiddleOfTheCapitals) {
    face.SetIcon(3, writeIcon(6, 4).c_str());
    int odd = 0;
    for (int points = 8; points <= 20; ++points) {
        setPoints(points);
        odd += plain.capHeight() % 2;
        bitmap.resize(160, 48);
        bitmap.setPosition(10, 10);
        render("\x03\x03");
        PlainFrame frame(160, 48);
        frame.fill(10, 10 + plain.capHeight() - plain.capHeight() / 2 - 2, 12, 4, 0x80ffffff);
        expectSame(frame, bitmap.getBuffer());
        expectAt(10, 10);
    }
    EXPECT_GT(odd, 0);
}

TEST_F(FaceRenderTest, TextGoesOnAfterAnIcon) {
    face.SetIcon(1, writeIcon(20, 1).c_str());
    bitmap.setPosition(0, 0);
    render("\x01W");
    expected.fill(0, plain.capHeight() - plain.capHeight() / 2, 20, 1, 0x80ffffff);
    plain.draw(expected, "W", 20, 0, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, AnIconRightOfMaxXDoesNotWrap) {
    face.SetIcon(1, writeIcon(6, 1).c_str());
    bitmap.setPosition(30, 0);
    render("\x01\x01", 10);
    expected.fill(30, plain.capHeight() - plain.capHeight() / 2, 12, 1, 0x80ffffff);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, IconsWithoutAFileDrawNothingAndTakeNoRoom) {
    bitmap.setPosition(3, 3);
    testing::internal::CaptureStderr();
    render("\x01\x02\x03\x04\x05\x06\x07\x08\x09W");
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    plain.draw(expected, "W", 3, 3, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
    EXPECT_EQ(0, face.TextDimensions("\x01\x09", true, 0).width);
}

TEST_F(FaceRenderTest, AnEmptyTextLeavesThePositionUnchanged) {
    for (const auto horizontal :
         {HorizontalAlignment::Start, HorizontalAlignment::Centred, HorizontalAlignment::End}) {
        for (const auto vertical :
             {VerticalAlignment::Top, VerticalAlignment::Centred, VerticalAlignment::Bottom}) {
            for (const FontSpace box : {FontSpace{}, FontSpace{31, 0, 0}, FontSpace{31, 17, 0}}) {
                align(horizontal, vertical);
                bitmap.setPosition(33, 21);
                render("");
                expectAt(33, 21);
                renderAligned("", box);
                expectAt(33, 21);
            }
        }
    }
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, WithoutAFaceNothingIsDrawn) {
    TextRender::Face empty;
    empty.SetIcon(1, writeIcon(4, 4).c_str());
    testing::internal::CaptureStderr();
    empty.Render("\x01 text", bitmap, kWhite, INT_MAX, 0);
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    expectSame(expected, bitmap.getBuffer());
    face.Render(nullptr, bitmap, kWhite, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, WithoutASizeEachLineIsARowHigherSinceTheSizeIsTheLineStep) {
    const auto drawnAt = [&](const char* text, int y) {
        bitmap.resize(160, 48);
        bitmap.setPosition(5, y);
        render(text);
        return artOf(160, 48, bitmap.getBuffer());
    };
    ASSERT_TRUE(TextRender::Render::NewFace(kTestFont, face));
    EXPECT_EQ(plain.capHeight() - 2, face.TextDimensions("\n\n", true, 0).height);
    const std::string higher = drawnAt("A", 18);
    EXPECT_EQ(higher, drawnAt("\n\nA", 20));
    EXPECT_NE(higher, drawnAt("A", 20));
}

TEST_F(FaceRenderTest, AGlyphThatFailsIsSaidAndSkippedWithoutAnAdvance) {
    faults->renderGlyph = true;
    testing::internal::CaptureStderr();
    render("AA");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "could not render glyph: 36 because: 0x62\n"
              "could not render glyph: 36 because: 0x62\n");
    faults->renderGlyph = false;
    faults->loadGlyph = true;
    testing::internal::CaptureStderr();
    render("A");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "could not load glyph: 36 because: 0x14\n");
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, LinesOfTenThousandCharactersAreDrawn) {
    const std::string line(10000, 'x');
    bitmap.setPosition(0, 0);
    render(line);
    plain.draw(expected, std::string(60, 'x'), 0, 0, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
    render(line, 100);
    render(std::string(10000, '\n') + "x");
    render(line, INT_MAX, INT_MAX);
    render(line, INT_MIN, INT_MIN);
    renderAligned(line, {INT_MAX, INT_MAX, 0});
}

TEST_F(FaceRenderTest, ExtremePositionsDrawNothing) {
    for (const int x : {INT_MIN, INT_MAX}) {
        for (const int y : {INT_MIN, INT_MAX}) {
            for (const FontSpace box :
                 {FontSpace{}, FontSpace{INT_MAX, INT_MAX, 3}, FontSpace{INT_MIN, INT_MIN, 3}}) {
                align(HorizontalAlignment::Centred, VerticalAlignment::Centred);
                bitmap.setPosition(x, y);
                render("Hello\nthere");
                renderAligned("Hello\nthere", box);
            }
        }
    }
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, AlignedTextStartsAtIsCentredOnOrEndsAtThePosition) {
    const int width = plain.pixelsWide("panel");
    const int height = plain.capHeight();
    const struct {
        HorizontalAlignment alignment;
        int textX;
        int afterX;
    } columns[] = {{HorizontalAlignment::Start, 80, 80 + width},
                   {HorizontalAlignment::Centred, 80 - width / 2, 80},
                   {HorizontalAlignment::End, 80 - width, 80 - width}};
    const struct {
        VerticalAlignment alignment;
        int textY;
    } rows[] = {{VerticalAlignment::Top, 24},
                {VerticalAlignment::Centred, 24 - height / 2},
                {VerticalAlignment::Bottom, 24 - height}};
    for (const auto& column : columns) {
        for (const auto& row : rows) {
            bitmap.resize(160, 48);
            bitmap.setPosition(80, 24);
            align(column.alignment, row.alignment);
            renderAligned("panel");
            PlainFrame frame(160, 48);
            plain.draw(frame, "panel", column.textX, row.textY, 0x80ffffff, INT_MAX, 0);
            expectSame(frame, bitmap.getBuffer());
            expectAt(column.afterX, 24);
        }
    }
}

TEST_F(FaceRenderTest, ABoxWithAHeightIsFilledBehindTheText) {
    const int width = plain.pixelsWide("panel");
    const int height = plain.capHeight();
    const struct {
        VerticalAlignment alignment;
        int boxY;
        int textY;
        int afterY;
    } rows[] = {{VerticalAlignment::Top, 24, 24, 24},
                {VerticalAlignment::Centred, 24 - 15, 24 - 15 + 15 - height / 2, 24},
                {VerticalAlignment::Bottom, 24 - 30, 24 - height, 24}};
    for (const auto& row : rows) {
        bitmap.resize(160, 48);
        bitmap.setPosition(10, 24);
        align(HorizontalAlignment::Start, row.alignment);
        face.RenderAligned("panel", bitmap, kWhite, {100, 30, 0}, 0x80204060, 0);
        PlainFrame frame(160, 48);
        frame.fill(10, row.boxY, width, 30, 0x80204060);
        plain.draw(frame, "panel", 10, row.textY, 0x80ffffff, INT_MAX, 0);
        expectSame(frame, bitmap.getBuffer());
        expectAt(10 + width, row.afterY);
    }
}

TEST_F(FaceRenderTest, ABoxWithAWidthWrapsTheTextAndLimitsItsExtent) {
    bitmap.setPosition(20, 5);
    align(HorizontalAlignment::Start, VerticalAlignment::Top);
    renderAligned("WWW", {30, 0, 0});
    plain.draw(expected, "WWW", 20, 5, 0x80ffffff, 50, 0);
    expectSame(expected, bitmap.getBuffer());
    expectAt(20 + 30, 5);
}

TEST_F(FaceRenderTest, ATextWiderThanItsBoxIsAlignedByTheBoxesWidth) {
    const struct {
        HorizontalAlignment alignment;
        int textX;
        int afterX;
    } columns[] = {{HorizontalAlignment::Start, 80, 80 + 30},
                   {HorizontalAlignment::Centred, 80 - 15, 80},
                   {HorizontalAlignment::End, 80 - 30, 80 - 30}};
    for (const auto& column : columns) {
        bitmap.resize(160, 48);
        bitmap.setPosition(80, 5);
        align(column.alignment, VerticalAlignment::Top);
        face.RenderAligned("WWW", bitmap, kWhite, {30, 40, 0}, 0x80204060, 0);
        PlainFrame frame(160, 48);
        frame.fill(column.textX, 5, 30, 40, 0x80204060);
        plain.draw(frame, "WWW", column.textX, 5, 0x80ffffff, column.textX + 30, 0);
        expectSame(frame, bitmap.getBuffer());
        expectAt(column.afterX, 5);
    }
}

TEST_F(FaceRenderTest, AlignedTextIsMeasuredAndDrawnInCells) {
    bitmap.setPosition(80, 5);
    align(HorizontalAlignment::Centred, VerticalAlignment::Top);
    face.RenderAligned("iWi", bitmap, kWhite, {}, 0x80000000, 24);
    plain.draw(expected, "iWi", 80 - 36, 5, 0x80ffffff, INT_MAX, 24);
    expectSame(expected, bitmap.getBuffer());
    expectAt(80, 5);
}

TEST_F(FaceRenderTest, FittedTextIsDrawnAtItsBestSizeFromTheBoxesCorner) {
    bitmap.setPosition(4, 3);
    face.RenderFit("Hello, panel", bitmap, {120, 40, 0}, kWhite, false);
    plain.setPoints(10);
    const int size = 120 * 640 / plain.unitsWide("Hello, panel");
    EXPECT_EQ(size, face.size());
    plain.setPoints(size);
    plain.draw(expected, "Hello, panel", 4, 3, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
    expectAt(4, 3);
}

TEST_F(FaceRenderTest, FittedTextIsCentredInTheBoxAsTheFlagsSay) {
    plain.setPoints(10);
    const int probe = plain.unitsWide("Hi");
    const int size = std::min(140 * 640 / probe, 20);
    const int width = size * probe / 640;
    for (int flags = 0; flags <= 3; ++flags) {
        bitmap.resize(160, 48);
        bitmap.setPosition(4, 3);
        face.RenderFit("Hi", bitmap, {140, 20, flags}, kWhite, false);
        const int x = 4 + (flags % 2 != 0 ? (140 - width) / 2 : 0);
        const int y = 3 + (flags / 2 != 0 ? (20 - size) / 2 : 0);
        PlainFrame frame(160, 48);
        plain.setPoints(size);
        plain.draw(frame, "Hi", x, y, 0x80ffffff, INT_MAX, 0);
        expectSame(frame, bitmap.getBuffer());
        expectAt(x, y);
    }
}

TEST_F(FaceRenderTest, FittedTextInOneLineDoesNotWrapEvenWhereAnIconPushesItOutOfTheBox) {
    face.SetIcon(1, writeIcon(100, 1).c_str());
    bitmap.setPosition(0, 5);
    face.RenderFit("\x01W", bitmap, {30, 20, 0}, kWhite, false);
    plain.setPoints(face.size());
    expected.fill(0, 5 + plain.capHeight() - plain.capHeight() / 2, 100, 1, 0x80ffffff);
    plain.draw(expected, "W", 100, 5, 0x80ffffff, INT_MAX, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, FittedTextInSeveralLinesWrapsAtTheBoxesEdge) {
    const std::string text = "A text that is much too long for a single line of it";
    bitmap.setPosition(10, 0);
    face.RenderFit(text.c_str(), bitmap, {140, 48, 0}, kWhite, true);
    plain.setPoints(face.size());
    plain.draw(expected, text, 10, 0, 0x80ffffff, 150, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST_F(FaceRenderTest, TheBaselineFollowsTheVerticalAdvanceOfEachGlyph) {
    FT_Library library = nullptr;
    FT_Face slanted = nullptr;
    ASSERT_EQ(0, FT_Init_FreeType(&library));
    ASSERT_EQ(0, FT_New_Face(library, kTestFont, 0, &slanted));
    FT_Matrix rising = {0x10000, 0, 0x10000, 0x10000};  // one pixel up for each to the right
    FT_Set_Transform(slanted, &rising, nullptr);
    face.Init(slanted);
    face.SetSize(kPoints);
    const int advance = plain.pixelsWide("W");
    bitmap.setPosition(5, 10);
    render("WW");
    RGB16Bitmap oneByOne(160, 48);
    for (const int step : {0, advance}) {
        oneByOne.setPosition(5 + step, 10 + step);
        face.Render("W", oneByOne, kWhite, INT_MAX, 0);
    }
    expectSame(PlainFrame(160, 48, oneByOne.getBuffer()), bitmap.getBuffer());
    EXPECT_NE(std::string::npos, artOf(160, 48, bitmap.getBuffer()).find('#'));
    face.Clear();
    FT_Done_FreeType(library);
}

TEST_F(FaceRenderTest, OverlayPicturesTakeTextAsTheFrameDoes) {
    YUVBitmap overlay(160, 48);
    overlay.setPosition(3, 4);
    face.Render("Overlay", overlay, kWhite, INT_MAX, 0);
    bitmap.setPosition(3, 4);
    render("Overlay");
    int drawn = 0;
    for (int i = 0; i < 160 * 48; ++i) {
        const uint32_t colour = uint32_t{bitmap.getBuffer().alpha()[i]} << 24 | 0xffffff;
        ASSERT_EQ(PlainYuv::set(0, i, colour), overlay.getBuffer().pixels()[i]) << i;
        drawn += overlay.getBuffer().pixels()[i] != 0 ? 1 : 0;
    }
    EXPECT_GT(drawn, 100);
}
