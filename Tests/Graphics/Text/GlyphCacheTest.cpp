#include "Vl/Graphics/Text/GlyphCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gtest/gtest.h>

#include <vector>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainText.h"

using TextRender::Glyph;
using TextRender::GlyphCache;

namespace {

class GlyphCacheTest : public testing::Test {
public:
    GlyphCacheTest() {
        EXPECT_EQ(0, FT_Init_FreeType(&library));
        EXPECT_EQ(0, FT_New_Face(library, kTestFont, 0, &face));
        EXPECT_EQ(0, FT_Set_Pixel_Sizes(face, 0, 20));
    }
    ~GlyphCacheTest() override { FT_Done_FreeType(library); }
    GlyphCacheTest(const GlyphCacheTest&) = delete;
    GlyphCacheTest& operator=(const GlyphCacheTest&) = delete;

protected:
    int64_t measure(char code) {
        return cache.advance(face, static_cast<uint8_t>(code), GlyphCache::Purpose::Drawing);
    }

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
    const FT_GlyphSlotRec* slot = face->glyph;
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
        measure('a');
    }
    EXPECT_EQ(2, faults->glyphLoads);
}

TEST_F(GlyphCacheTest, WhatIsMeasuredToBeDrawnIsRenderedAtOnce) {
    measure('a');
    EXPECT_EQ(1, faults->glyphRenders);
    ASSERT_NE(nullptr, cache.glyph(face, 'a'));
    EXPECT_EQ(1, faults->glyphRenders);
    EXPECT_EQ(1, faults->glyphLoads);
}

TEST_F(GlyphCacheTest, WhatIsOnlyMeasuredIsNotRendered) {
    const int64_t width = cache.advance(face, 'a', GlyphCache::Purpose::Measuring);
    EXPECT_EQ(0, faults->glyphRenders);
    const Glyph* glyph = cache.glyph(face, 'a');
    ASSERT_NE(nullptr, glyph);
    EXPECT_EQ(width, glyph->advanceX);
    EXPECT_EQ(width, cache.advance(face, 'a', GlyphCache::Purpose::Measuring));
    EXPECT_EQ(2, faults->glyphLoads);
}

TEST_F(GlyphCacheTest, ARowOrderFromTheBottomIsTheSamePicture) {
    const Glyph* straight = cache.glyph(face, 'g');
    ASSERT_NE(nullptr, straight);
    const std::vector<uint8_t> expected = straight->coverage;
    GlyphCache other;
    faults->bottomUp = true;
    const Glyph* turned = other.glyph(face, 'g');
    ASSERT_NE(nullptr, turned);
    EXPECT_EQ(expected, turned->coverage);
}

TEST_F(GlyphCacheTest, ClearForgetsPicturesAndAdvances) {
    const int64_t before = measure('M');
    ASSERT_EQ(0, FT_Set_Pixel_Sizes(face, 0, 40));
    EXPECT_EQ(before, measure('M'));
    cache.clear();
    EXPECT_GT(measure('M'), before);
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
    const int64_t failed = measure('A');
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "could not load glyph: 36 because: 0x14\n");
    faults->loadGlyph = false;
    EXPECT_EQ(measure('A'), failed);
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
    EXPECT_EQ(0, cache.advance(nullptr, 'A', GlyphCache::Purpose::Drawing));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "could not load glyph: 0 because: 0x23\n"
              "could not load glyph: 0 because: 0x23\n");
}
