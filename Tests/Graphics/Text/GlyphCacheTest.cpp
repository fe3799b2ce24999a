#include "Vl/Graphics/Text/GlyphCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gtest/gtest.h>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainText.h"

using TextRender::Glyph;
using TextRender::GlyphCache;

namespace {

class GlyphCacheTest : public testing::Test {
protected:
    GlyphCacheTest() {
        EXPECT_EQ(0, FT_Init_FreeType(&library));
        EXPECT_EQ(0, FT_New_Face(library, kTestFont, 0, &face));
        EXPECT_EQ(0, FT_Set_Pixel_Sizes(face, 0, 20));
    }
    ~GlyphCacheTest() override { FT_Done_FreeType(library); }

    FT_Library library = nullptr;
    FT_Face face = nullptr;
    GlyphCache cache;
    FaultyLibraries faults;
};

}  // namespace

TEST_F(GlyphCacheTest, GivesWhatFreeTypeRenders) {
    const Glyph* glyph = cache.glyph(face, 'g');
    ASSERT_NE(nullptr, glyph);
    ASSERT_EQ(0, FT_Load_Char(face, 'g', FT_LOAD_RENDER));
    const FT_GlyphSlot slot = face->glyph;
    EXPECT_EQ(slot->bitmap_left, glyph->left);
    EXPECT_EQ(slot->bitmap_top, glyph->top);
    EXPECT_EQ(slot->advance.x, glyph->advanceX);
    EXPECT_EQ(0, glyph->advanceY);
    ASSERT_EQ(static_cast<int>(slot->bitmap.width), glyph->mask.width);
    ASSERT_EQ(static_cast<int>(slot->bitmap.rows), glyph->mask.height);
    for (int row = 0; row < glyph->mask.height; ++row) {
        for (int column = 0; column < glyph->mask.width; ++column) {
            EXPECT_EQ(slot->bitmap.buffer[row * glyph->mask.width + column], glyph->mask.row(row)[column]);
        }
    }
}

TEST_F(GlyphCacheTest, RowsArePaddedWithNoCoverage) {
    const Glyph* glyph = cache.glyph(face, 'g');
    ASSERT_NE(nullptr, glyph);
    EXPECT_EQ(0, glyph->mask.pitch % 8);
    EXPECT_EQ(glyph->mask.pitch, glyph->mask.readable);
    ASSERT_GT(glyph->mask.pitch, glyph->mask.width);
    for (int row = 0; row < glyph->mask.height; ++row) {
        for (int column = glyph->mask.width; column < glyph->mask.pitch; ++column) {
            EXPECT_EQ(0, glyph->mask.row(row)[column]);
        }
    }
}

TEST_F(GlyphCacheTest, EachCharacterIsMadeOnce) {
    for (int i = 0; i < 5; ++i) {
        cache.glyph(face, 'a');
        cache.glyph(face, 'b');
        cache.advance(face, 'a');
    }
    EXPECT_EQ(3, faults->glyphLoads);  // two pictures, one advance
}

TEST_F(GlyphCacheTest, ClearForgetsPicturesAndAdvances) {
    const int64_t before = cache.advance(face, 'M');
    ASSERT_EQ(0, FT_Set_Pixel_Sizes(face, 0, 40));
    EXPECT_EQ(before, cache.advance(face, 'M'));
    cache.clear();
    EXPECT_GT(cache.advance(face, 'M'), before);
}

TEST_F(GlyphCacheTest, AFailedLoadIsTriedAndSaidEachTime) {
    faults->loadGlyph = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(nullptr, cache.glyph(face, 'A'));
    EXPECT_EQ(nullptr, cache.glyph(face, 'A'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "could not load glyph: 36 because: 0x14\n"
              "could not load glyph: 36 because: 0x14\n");
    faults->loadGlyph = false;
    EXPECT_NE(nullptr, cache.glyph(face, 'A'));
}

TEST_F(GlyphCacheTest, AFailedLoadIsSaidAndItsAdvanceStillCounts) {
    faults->loadGlyph = true;  // after FreeType has filled in the advance
    testing::internal::CaptureStderr();
    const int64_t failed = cache.advance(face, 'A');
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "could not load glyph: 36 because: 0x14\n");
    faults->loadGlyph = false;
    EXPECT_EQ(cache.advance(face, 'A'), failed);
    EXPECT_GT(failed, 0);
    EXPECT_EQ(2, faults->glyphLoads);
}

TEST_F(GlyphCacheTest, AFailedRenderingIsTriedAndSaidEachTime) {
    faults->renderGlyph = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(nullptr, cache.glyph(face, 'A'));
    EXPECT_EQ(nullptr, cache.glyph(face, 'A'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "could not render glyph: 36 because: 0x62\n"
              "could not render glyph: 36 because: 0x62\n");
    faults->renderGlyph = false;
    EXPECT_NE(nullptr, cache.glyph(face, 'A'));
}

TEST_F(GlyphCacheTest, HugeGlyphsAreMadeAnewEachTime) {
    ASSERT_EQ(0, FT_Set_Pixel_Sizes(face, 0, 1000));
    ASSERT_NE(nullptr, cache.glyph(face, 'M'));
    ASSERT_NE(nullptr, cache.glyph(face, 'M'));
    EXPECT_EQ(2, faults->glyphLoads);
    EXPECT_GT(cache.glyph(face, 'M')->mask.width, 500);
}

TEST_F(GlyphCacheTest, WithoutAFaceEveryUseFails) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(nullptr, cache.glyph(nullptr, 'A'));
    EXPECT_EQ(0, cache.advance(nullptr, 'A'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "could not load glyph: 0 because: 0x23\n"
              "could not load glyph: 0 because: 0x23\n");
}
