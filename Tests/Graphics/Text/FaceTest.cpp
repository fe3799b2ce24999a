#include "Vl/Graphics/Text/Face.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainText.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Text/Render.h"

using TextRender::Face;
using TextRender::TextSize;

namespace {

std::string errorsOf(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

/// A face of a library that belongs to the process; `released` becomes true when FreeType is done with it.
FT_Face watchedFace(bool& released) {
    static FT_Library library = nullptr;
    if (library == nullptr) {
        EXPECT_EQ(0, FT_Init_FreeType(&library));
    }
    FT_Face face = nullptr;
    EXPECT_EQ(0, FT_New_Face(library, kTestFont, 0, &face));
    released = false;
    face->generic = {.data = &released, .finalizer = [](void* object) {
                         *static_cast<bool*>(static_cast<FT_Face>(object)->generic.data) = true;
                     }};
    return face;
}

class FaceTest : public testing::Test {
protected:
    FaceTest() { EXPECT_TRUE(TextRender::Render::NewFace(kTestFont, face)); }

    Face face;
    PlainText plain;
    FaultyLibraries faults;
};

}  // namespace

TEST_F(FaceTest, HasNoSizeAtFirst) {
    EXPECT_EQ(-1, face.size());
}

TEST_F(FaceTest, SetSizeMeasuresTheCapitalM) {
    for (const int points : {6, 10, 14, 33, 100}) {
        face.SetSize(points);
        plain.setPoints(points);
        EXPECT_EQ(points, face.size());
        EXPECT_EQ(plain.capHeight(), face.capHeight());
    }
}

TEST_F(FaceTest, SetPixelSizeSetsPixelsPerEm) {
    face.SetPixelSize(20);
    EXPECT_EQ(20, face.size());
    EXPECT_EQ(15, face.capHeight());
    EXPECT_EQ(17 * 64, face.TextDimensions("M", false, 0).width);
}

TEST_F(FaceTest, SettingTheCurrentSizeDoesNothingAlsoWhenItWouldFail) {
    EXPECT_EQ("Could not set size: 0x17\n", errorsOf([&] { face.SetSize(50000); }));
    EXPECT_EQ("", errorsOf([&] { face.SetSize(50000); }));
    EXPECT_EQ(50000, face.size());

    face.SetSize(14);
    faults->glyphLoads = 0;
    face.SetSize(14);
    EXPECT_EQ(0, faults->glyphLoads);
}

TEST_F(FaceTest, PointsAndPixelsShareOneSizeOnPurpose) {
    face.SetSize(20);
    const int inPoints = face.capHeight();
    face.SetPixelSize(20);
    EXPECT_EQ(inPoints, face.capHeight());
}

TEST_F(FaceTest, ARefusedSizeIsSaidAfterTheCapHeightWasMeasured) {
    face.SetSize(14);
    const int before = face.capHeight();
    EXPECT_EQ("Could not set size: 0x17\n", errorsOf([&] { face.SetSize(60000); }));
    EXPECT_EQ(60000, face.size());
    EXPECT_EQ(before, face.capHeight());
}

TEST_F(FaceTest, ACapitalThatCannotBeLoadedIsSaidAndSkipped) {
    face.SetSize(14);
    const int before = face.capHeight();
    faults->loadGlyph = true;
    EXPECT_EQ("could not load glyph: 48 because: 0x14\n", errorsOf([&] { face.SetSize(20); }));
    EXPECT_EQ(20, face.size());
    EXPECT_EQ(before, face.capHeight());
}

TEST_F(FaceTest, WithoutAFaceTheSizeIsStoredAndTheLackIsSaidOnce) {
    Face empty;
    EXPECT_EQ("Face not loaded\n", errorsOf([&] { empty.SetSize(14); }));
    EXPECT_EQ("", errorsOf([&] { empty.SetSize(14); }));
    EXPECT_EQ(14, empty.size());
    EXPECT_EQ("Face not loaded\n", errorsOf([&] { empty.SetPixelSize(15); }));
}

TEST_F(FaceTest, ClearReleasesTheFaceAndKeepsTheSize) {
    face.SetSize(14);
    face.Clear();
    EXPECT_FALSE(face.isLoaded());
    EXPECT_EQ(14, face.size());
    face.Clear();
    EXPECT_EQ("Face not loaded\n", errorsOf([&] { face.SetSize(15); }));
}

TEST_F(FaceTest, InitTakesOwnershipAndForgetsTheSize) {
    bool released = false;
    face.SetSize(14);
    face.Init(watchedFace(released));
    EXPECT_EQ(-1, face.size());
    face.SetSize(14);
    EXPECT_GT(face.TextDimensions("A", true, 0).width, 0);
    EXPECT_FALSE(released);
    face.Clear();
    EXPECT_TRUE(released);
}

TEST_F(FaceTest, AFaceIsReleasedWhenItIsReplacedAndAtTheEnd) {
    bool first = false;
    bool second = false;
    bool third = false;
    {
        Face owner;
        owner.Init(watchedFace(first));
        owner.Init(watchedFace(second));
        EXPECT_TRUE(first);
        EXPECT_TRUE(TextRender::Render::NewFace(kTestFont, owner));
        EXPECT_TRUE(second);
        owner.Init(watchedFace(third));
        EXPECT_FALSE(TextRender::Render::NewFace("/no/such/font.ttf", owner));
        EXPECT_FALSE(third);
    }
    EXPECT_TRUE(third);
}

TEST_F(FaceTest, InitWithTheFaceThatItHoldsKeepsItAndForgetsTheSize) {
    bool released = false;
    const FT_Face held = watchedFace(released);
    face.Init(held);
    face.SetSize(14);
    face.Init(held);
    EXPECT_FALSE(released);
    EXPECT_EQ(-1, face.size());
    face.SetSize(14);
    EXPECT_GT(face.TextDimensions("A", true, 0).width, 0);
    face.Init(nullptr);
    EXPECT_TRUE(released);
    EXPECT_FALSE(face.isLoaded());
}

TEST_F(FaceTest, ExtremeSizesAreRefusedOrTakenButNeverFatal) {
    errorsOf([&] {
        for (const int size : {INT_MIN, -1000, 0, 1, 5000, 70000, INT_MAX}) {
            face.SetSize(size);
            face.TextDimensions("Hello", true, 0);
            EXPECT_EQ(size, face.size());
            face.SetPixelSize(size / 2);
            face.TextDimensions("Hello", true, 0);
            EXPECT_EQ(size / 2, face.size());
        }
    });
}

TEST_F(FaceTest, AnEmptyTextIsNoPixelWideAndOneCapitalHigh) {
    face.SetSize(14);
    const TextSize size = face.TextDimensions("", true, 0);
    EXPECT_EQ(0, size.width);
    EXPECT_EQ(face.capHeight(), size.height);
    EXPECT_EQ(0, face.TextDimensions(nullptr, true, 0).width);
}

TEST_F(FaceTest, WidthIsTheSumOfTheAdvances) {
    face.SetSize(11);
    plain.setPoints(11);
    const std::string text = "Wide and narrow ill \xe4\xff\x80";
    EXPECT_EQ(plain.unitsWide(text), face.TextDimensions(text.c_str(), false, 0).width);
    EXPECT_EQ(plain.pixelsWide(text), face.TextDimensions(text.c_str(), true, 0).width);
}

TEST_F(FaceTest, BytesAbove127AreCharacterCodes) {
    face.SetSize(14);
    plain.setPoints(14);
    for (int code = 128; code <= 255; ++code) {
        const std::string text{static_cast<char>(code)};
        EXPECT_EQ(plain.pixelsWide(text), face.TextDimensions(text.c_str(), true, 0).width) << code;
    }
}

TEST_F(FaceTest, TheWidestLineCountsAndLinesAreOneSizeApart) {
    face.SetSize(14);
    plain.setPoints(14);
    const TextSize size = face.TextDimensions("ab\nabcdef\na", true, 0);
    EXPECT_EQ(plain.pixelsWide("abcdef"), size.width);
    EXPECT_EQ(plain.capHeight() + 2 * 14, size.height);
    EXPECT_EQ(plain.pixelsWide("a"), face.TextDimensions("\na", true, 0).width);
}

TEST_F(FaceTest, CellsCountInsteadOfAdvances) {
    face.SetSize(14);
    faults->glyphLoads = 0;
    EXPECT_EQ(30, face.TextDimensions("iWm", true, 10).width);
    EXPECT_EQ(30, face.TextDimensions("iWm", false, 10).width);
    EXPECT_EQ(0, faults->glyphLoads);
}

TEST_F(FaceTest, AnIconCountsWithItsPicturesWidth) {
    const support::TemporaryDirectory directory;
    writePngFile(directory.file("i.png"),
                 {.width = 13, .colourType = PngFile::Grey, .samples = std::vector<uint8_t>(13)});
    face.SetSize(14);
    face.SetIcon(9, directory.file("i.png").c_str());
    EXPECT_EQ(13, face.TextDimensions("\t", true, 0).width);
    EXPECT_EQ(13, face.TextDimensions("\t", false, 50).width);
    EXPECT_EQ(0, face.TextDimensions("\x01", true, 0).width);
}

TEST_F(FaceTest, OnlyIconsOneToNineExist) {
    EXPECT_EQ("Invalid index for SetIcon\n", errorsOf([&] { face.SetIcon(0, "a.png"); }));
    EXPECT_EQ("Invalid index for SetIcon\n", errorsOf([&] { face.SetIcon(10, "a.png"); }));
    EXPECT_EQ("Invalid index for SetIcon\n", errorsOf([&] { face.SetIcon(-1, "a.png"); }));
    EXPECT_EQ("", errorsOf([&] {
                  face.SetIcon(1, "a.png");
                  face.SetIcon(9, "a.png");
              }));
}

TEST_F(FaceTest, AGlyphThatCannotBeLoadedIsSaidAndItsAdvanceStillCounts) {
    face.SetSize(14);
    const int width = face.TextDimensions("A", true, 0).width;
    face.SetSize(15);
    face.SetSize(14);
    faults->loadGlyph = true;
    EXPECT_EQ("could not load glyph: 36 because: 0x14\n",
              errorsOf([&] { EXPECT_EQ(width, face.TextDimensions("A", true, 0).width); }));
}

TEST_F(FaceTest, VeryLongLinesAreMeasured) {
    face.SetSize(14);
    plain.setPoints(14);
    const std::string line(10000, 'W');
    EXPECT_EQ(10000 * plain.pixelsWide("W"), face.TextDimensions(line.c_str(), true, 0).width);
    EXPECT_EQ(INT_MAX, face.TextDimensions(line.c_str(), true, INT_MAX).width);
    EXPECT_EQ(0, face.TextDimensions(line.c_str(), true, INT_MIN).width);
}

TEST_F(FaceTest, ASingleLineTakesTheLargestSizeThatFits) {
    plain.setPoints(10);
    const int probe = plain.unitsWide("Hello, panel");
    const TextSize limitedByWidth = face.SetBestSize("Hello, panel", 160, 48, false);
    EXPECT_EQ(160 * 640 / probe, face.size());
    EXPECT_EQ(face.size(), limitedByWidth.height);
    EXPECT_EQ(face.size() * probe / 640, limitedByWidth.width);

    const TextSize limitedByHeight = face.SetBestSize("Hello, panel", 1000, 20, false);
    EXPECT_EQ(20, face.size());
    EXPECT_EQ(20, limitedByHeight.height);
    EXPECT_EQ(20 * probe / 640, limitedByHeight.width);
}

TEST_F(FaceTest, ATextWithoutWidthTakesSizeZero) {
    errorsOf([&] {
        const TextSize size = face.SetBestSize("", 160, 48, false);
        EXPECT_EQ(0, face.size());
        EXPECT_EQ(0, size.width);
        EXPECT_EQ(0, size.height);
    });
}

TEST_F(FaceTest, SeveralLinesAreTriedWhereOneWouldBeLowerThanHalfTheBox) {
    const std::string text = "A text that is much too long for a single line of it";
    plain.setPoints(10);
    const int probe = plain.unitsWide(text);
    int squares = 0;
    for (int width = 40; width <= 160; ++width) {
        ASSERT_LT(width * 640 / probe, 24);
        const int wraps = 48 * probe / (width * 640);
        const int lines = static_cast<int>(std::floor(std::sqrt(wraps))) + 1;
        squares += (lines - 1) * (lines - 1) == wraps ? 1 : 0;
        const int size = 48 / lines;

        const TextSize taken = face.SetBestSize(text.c_str(), width, 48, true);
        EXPECT_EQ(size, face.size()) << width;
        EXPECT_EQ(width, taken.width);
        EXPECT_EQ(size * (size * probe / (width * 640) + 1), taken.height) << width;
    }
    EXPECT_GT(squares, 0);  // where one line fewer would just do, but is not taken
}

TEST_F(FaceTest, ALineOfExactlyHalfTheBoxCountsAsSeveralLines) {
    const std::string text = "Half the height";
    plain.setPoints(10);
    const int probe = plain.unitsWide(text);
    const int width = (24 * probe + 639) / 640;
    ASSERT_EQ(24, width * 640 / probe);
    EXPECT_LT(face.SetBestSize(text.c_str(), width + 1, 48, false).width, width + 1);
    EXPECT_EQ(width + 1, face.SetBestSize(text.c_str(), width + 1, 48, true).width);
    EXPECT_EQ(24, face.size());
}

TEST_F(FaceTest, AnEmptyTextInSeveralLinesTakesTheBoxesHeight) {
    const TextSize taken = face.SetBestSize("", 160, 48, true);
    EXPECT_EQ(48, face.size());
    EXPECT_EQ(160, taken.width);
    EXPECT_EQ(48, taken.height);
}

TEST_F(FaceTest, ALineThatFillsMoreThanHalfTheBoxStaysOneLine) {
    face.SetBestSize("Hello", 160, 48, false);
    const int single = face.size();
    ASSERT_GT(single, 24);
    face.SetBestSize("Hello", 160, 48, true);
    EXPECT_EQ(single, face.size());
}

TEST_F(FaceTest, BoxesThatMakeNoSenseAreFitted) {
    const std::string longText(3000, 'W');
    plain.setPoints(10);
    const int64_t probe = int64_t{3000} * plain.unitsWide("W");
    errorsOf([&] {
        for (const int64_t width : {INT_MIN, -1, 0, 1, 10000}) {
            for (const int64_t height : {INT_MIN, -1, 0, 1, 1000}) {
                SCOPED_TRACE(testing::Message() << width << " x " << height);
                const auto fit = [&](bool multiline) {
                    return face.SetBestSize(longText.c_str(), static_cast<int>(width),
                                            static_cast<int>(height), multiline);
                };
                const int64_t size = std::min(width * 640 / probe, height);
                const TextSize line = fit(false);
                EXPECT_EQ(size, face.size());
                EXPECT_EQ(std::max<int64_t>(size * probe / 640, INT_MIN), line.width);
                EXPECT_EQ(size, line.height);

                const TextSize lines = fit(true);
                if (width <= 0 || height < 0 || size > height / 2) {  // stays one line
                    EXPECT_EQ(size, face.size());
                    EXPECT_EQ(line.width, lines.width);
                    EXPECT_EQ(line.height, lines.height);
                    continue;
                }
                const int64_t wraps = height * probe / (width * 640);
                const int64_t smaller =
                    height / (static_cast<int64_t>(std::sqrt(static_cast<double>(wraps))) + 1);
                EXPECT_EQ(smaller, face.size());
                EXPECT_EQ(width, lines.width);
                EXPECT_EQ(smaller * (smaller * probe / (width * 640) + 1), lines.height);
            }
        }
    });
}

TEST_F(FaceTest, FindingTheBestSizeRendersNothing) {
    faults->glyphRenders = 0;
    face.SetBestSize("Hello, panel", 160, 48, true);
    EXPECT_EQ(0, faults->glyphRenders);
}
