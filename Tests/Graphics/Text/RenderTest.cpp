#include "Vl/Graphics/Text/Render.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainText.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Text/Face.h"

using TextRender::Face;
using TextRender::Render::Init;
using TextRender::Render::NewFace;

TEST(RenderTest, InitSucceedsAgainAndAgain) {
    EXPECT_TRUE(Init());
    EXPECT_TRUE(Init());
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

TEST(RenderTest, ATruncatedFontIsRefusedOrDrawnWithWhatItHas) {
    const support::TemporaryDirectory directory;
    const std::string whole = readBytes(kTestFont);
    ASSERT_GT(whole.size(), 100000U);
    RGB16Bitmap bitmap(160, 48);
    int refused = 0;
    testing::internal::CaptureStderr();
    for (const size_t length : {1U, 4U, 12U, 100U, 300U, 1000U, 5000U, 20000U, 100000U, 400000U, 700000U}) {
        writeBytes(directory.file("cut.ttf"), whole.substr(0, length));
        Face face;
        if (!NewFace(directory.file("cut.ttf").c_str(), face)) {
            ++refused;
            continue;
        }
        face.SetSize(14);
        face.RenderAligned("Hello,\npanel \xe4\xf6\xfc", bitmap, 0x80ffffff, {}, 0x80000000, 0);
    }
    testing::internal::GetCapturedStderr();
    EXPECT_GE(refused, 4);
}

TEST(RenderDeathTest, AFailingLibraryIsSaidAndRefused) {
    // In a process of its own, because the library is made once and stays.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
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
