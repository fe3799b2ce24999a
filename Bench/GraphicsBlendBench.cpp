// Blending the glyphs of two 14-point lines, already rendered, onto the frame in opaque white.
#include <benchmark/benchmark.h>
#include <ft2build.h>
#include <pixman.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PlainText.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Text/GlyphCache.h"

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;
constexpr uint32_t kBlack = 0x80000000;
constexpr uint32_t kWhite = 0x80ffffff;

struct PlacedGlyph {
    const TextRender::Glyph* glyph;
    int x;
    int y;
};

/// The glyphs of two lines and where they lie on the frame.
class TwoLines {
public:
    TwoLines() {
        FT_Init_FreeType(&library_);
        FT_New_Face(library_, kTestFont, 0, &face_);
        FT_Set_Char_Size(face_, 0, 14 * 64, 100, 100);
        place("Hello, front", 20);
        place("panel number 2", 40);
    }
    ~TwoLines() { FT_Done_FreeType(library_); }
    TwoLines(const TwoLines&) = delete;
    TwoLines& operator=(const TwoLines&) = delete;

    const std::vector<PlacedGlyph>& glyphs() const { return glyphs_; }

private:
    void place(std::string_view line, int baseline) {
        int x = 2;
        for (const char letter : line) {
            const auto* glyph = cache_.glyph(face_, static_cast<uint8_t>(letter));
            if (letter != ' ') {
                glyphs_.push_back({glyph, x + glyph->left, baseline - glyph->top});
            }
            x += static_cast<int>(glyph->advanceX / 64);
        }
    }

    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
    TextRender::GlyphCache cache_;
    std::vector<PlacedGlyph> glyphs_;
};

void ours(benchmark::State& state) {
    const TwoLines lines;
    RGB16Bitmap bitmap(kWidth, kHeight);
    bitmap.FillRect(kWidth, kHeight, kBlack);
    PlainFrame expected(kWidth, kHeight, bitmap.getBuffer());
    const auto draw = [&] {
        for (const auto& [glyph, x, y] : lines.glyphs()) {
            bitmap.BlendMask(x, y, glyph->mask, kWhite);
        }
    };
    for (const auto& [glyph, x, y] : lines.glyphs()) {
        const CoverageMask& mask = glyph->mask;
        expected.blend(x, y, mask.data, mask.pitch, mask.width, mask.height, kWhite);
    }
    draw();
    if (!(expected == bitmap.getBuffer())) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        draw();
        benchmark::ClobberMemory();
    }
}

using Image = std::unique_ptr<pixman_image_t, decltype(&pixman_image_unref)>;

void pixman(benchmark::State& state) {
    const TwoLines lines;
    std::vector<Image> masks;
    for (const auto& placed : lines.glyphs()) {
        const CoverageMask& mask = placed.glyph->mask;
        masks.emplace_back(pixman_image_create_bits(PIXMAN_a8, mask.width, mask.height, nullptr, 0),
                           pixman_image_unref);
        auto* to = reinterpret_cast<uint8_t*>(pixman_image_get_data(masks.back().get()));
        for (int row = 0; row < mask.height; ++row) {
            std::copy_n(mask.row(row), mask.width, to + row * pixman_image_get_stride(masks.back().get()));
        }
    }
    const pixman_color_t white{0xffff, 0xffff, 0xffff, 0xffff};
    const Image source(pixman_image_create_solid_fill(&white), pixman_image_unref);
    const Image frame(pixman_image_create_bits(PIXMAN_r5g6b5, kWidth, kHeight, nullptr, 0),
                      pixman_image_unref);
    for (auto _ : state) {
        for (size_t i = 0; i < masks.size(); ++i) {
            const auto& [glyph, x, y] = lines.glyphs()[i];
            pixman_image_composite32(PIXMAN_OP_OVER, source.get(), masks[i].get(), frame.get(), 0, 0, 0, 0, x,
                                     y, glyph->mask.width, glyph->mask.height);
        }
        benchmark::ClobberMemory();
    }
}

BENCHMARK(ours)->Name("blend_glyphs/ours");
BENCHMARK(pixman)->Name("blend_glyphs/pixman");

}  // namespace
