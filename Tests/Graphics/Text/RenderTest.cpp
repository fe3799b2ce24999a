#include "Vl/Graphics/Text/Render.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <vector>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PlainText.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Text/Face.h"

using TextRender::Face;
using TextRender::Render::Init;
using TextRender::Render::NewFace;

TEST(RenderTest, TheLibraryIsMadeOnceAndStays) {
    EXPECT_TRUE(Init());
    FaultyLibraries faults;
    faults->initFreeType = true;  // a second one could not be made
    EXPECT_TRUE(Init());
    Face face;
    EXPECT_TRUE(NewFace(kTestFont, face));
}

TEST(RenderTest, NewFaceLoadsAFontAndForgetsTheSize) {
    Face face;
    ASSERT_TRUE(NewFace(kTestFont, face));
    face.SetSize(14);
    ASSERT_TRUE(NewFace(kTestFont, face));
    EXPECT_TRUE(face.isLoaded());
    EXPECT_EQ(-1, face.size());
}

TEST(RenderTest, NewFaceLeavesTheFaceAloneWhenItFails) {
    Face face;
    ASSERT_TRUE(NewFace(kTestFont, face));
    face.SetSize(14);
    EXPECT_FALSE(NewFace("/no/such/font.ttf", face));
    EXPECT_TRUE(face.isLoaded());
    EXPECT_EQ(14, face.size());
}

TEST(RenderTest, NewFaceRefusesWhatIsNoFont) {
    const support::TemporaryDirectory directory;
    writeBytes(directory.file("empty.ttf"), "");
    writeBytes(directory.file("text.ttf"), "This is a text and not a font, however long it may be.\n");
    Face face;
    EXPECT_FALSE(NewFace(directory.file("empty.ttf").c_str(), face));
    EXPECT_FALSE(NewFace(directory.file("text.ttf").c_str(), face));
    EXPECT_FALSE(NewFace(directory.file("").c_str(), face));
    EXPECT_FALSE(NewFace("", face));
    EXPECT_FALSE(NewFace(nullptr, face));
    EXPECT_FALSE(face.isLoaded());
}

TEST(RenderTest, AFontCutAnywhereIsRefusedOrDrawnWithWhatItHas) {
    const support::TemporaryDirectory directory;
    const std::string whole = readBytes(kTestFont);
    ASSERT_GT(whole.size(), 200000U);
    std::vector<size_t> lengths{1, 4, 12, 100, 300, 1000, 5000, 20000, 100000, 400000, 700000};
    for (const size_t missing : {200000U, 100000U, 50000U, 20000U, 5000U, 1000U, 100U, 4U, 1U}) {
        lengths.push_back(whole.size() - missing);
    }
    int refused = 0;
    int drawn = 0;
    testing::internal::CaptureStderr();
    for (const size_t length : lengths) {
        writeBytes(directory.file("cut.ttf"), whole.substr(0, length));
        Face face;
        if (!NewFace(directory.file("cut.ttf").c_str(), face)) {
            ++refused;
            continue;
        }
        RGB16Bitmap bitmap(160, 48);
        face.SetSize(14);
        face.RenderAligned("Hello,\npanel \xe4\xf6\xfc", bitmap, 0x80ffffff, {}, 0x80000000, 0);
        drawn += artOf(160, 48, bitmap.getBuffer()).find('#') != std::string::npos ? 1 : 0;
    }
    testing::internal::GetCapturedStderr();
    EXPECT_GE(refused, 4);
    EXPECT_GE(drawn, 1);
}

TEST(RenderTest, ADamagedGlyphIsSaidAndTheRestIsDrawn) {
    const support::TemporaryDirectory directory;
    std::string font = readBytes(kTestFont);
    const auto number = [&](size_t offset) {  // 32 bits, high byte first
        uint32_t value = 0;
        for (size_t i = 0; i < 4; ++i) {
            value = value << 8 | static_cast<uint8_t>(font.at(offset + i));
        }
        return value;
    };
    // The table directory lists tag, checksum, offset and length; the tag is first met there.
    const auto table = [&](const char* tag) { return number(font.find(tag) + 8); };
    constexpr size_t glyphOfA = 36;
    const size_t outline = table("glyf") + number(table("loca") + 4 * glyphOfA);
    font.replace(outline, 2, "\x7f\xff");  // the number of contours
    writeBytes(directory.file("damaged.ttf"), font);

    Face face;
    ASSERT_TRUE(NewFace(directory.file("damaged.ttf").c_str(), face));
    face.SetSize(14);
    RGB16Bitmap bitmap(160, 48);
    testing::internal::CaptureStderr();
    face.Render("HAI", bitmap, 0x80ffffff, 160, 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("could not load glyph: 36 because: 0x[0-9A-F]+\n"));

    PlainText plain;
    plain.setPoints(14);
    PlainFrame expected(160, 48);
    plain.draw(expected, "HI", 0, 0, 0x80ffffff, 160, 0);
    expectSame(expected, bitmap.getBuffer());
}

TEST(RenderDeathTest, AFailingLibraryIsSaidAndRefused) {
    // In a process of its own, because the library is made once and stays; no test has made it yet, since
    // GoogleTest runs those named so first.
    const auto tryBoth = [] {
        libraryFaults.initFreeType = true;
        Face face;
        const bool initialised = Init() || NewFace(kTestFont, face);
        libraryFaults.initFreeType = false;
        std::exit(!initialised && Init() && NewFace(kTestFont, face) ? 0 : 1);
    };
    EXPECT_EXIT(tryBoth(), testing::ExitedWithCode(0),
                "^Unable to init Freetype lib!\nUnable to init Freetype lib!\n$");
}
