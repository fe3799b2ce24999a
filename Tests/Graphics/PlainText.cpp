#include "Tests/Graphics/PlainText.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H

#include <algorithm>
#include <stdexcept>

namespace {

void must(FT_Error error) {
    if (error != 0) {
        throw std::runtime_error("FreeType: error " + std::to_string(error));
    }
}

}  // namespace

PlainText::PlainText() {
    must(FT_Init_FreeType(&library_));
    must(FT_New_Face(library_, kTestFont, 0, &face_));
}

PlainText::~PlainText() {
    FT_Done_FreeType(library_);
}

void PlainText::setPoints(int points) {
    points_ = points;
    must(FT_Set_Char_Size(face_, 0, points * 64, 100, 100));
    must(FT_Load_Char(face_, 77, FT_LOAD_DEFAULT));
    FT_Glyph outline;
    must(FT_Get_Glyph(face_->glyph, &outline));
    FT_BBox box;
    FT_Glyph_Get_CBox(outline, FT_GLYPH_BBOX_PIXELS, &box);
    FT_Done_Glyph(outline);
    capHeight_ = static_cast<int>(box.yMax);
}

int PlainText::unitsWide(const std::string& line) {
    long width = 0;
    for (const char c : line) {
        must(FT_Load_Char(face_, static_cast<unsigned char>(c), FT_LOAD_DEFAULT));
        width += face_->glyph->advance.x;
    }
    return static_cast<int>(width);
}

int PlainText::pixelsWide(const std::string& line) {
    int width = 0;
    for (const char c : line) {
        width += unitsWide({c}) / 64;
    }
    return width;
}

void PlainText::draw(PlainFrame& frame, const std::string& text, int x, int y, uint32_t colour, int maxX,
                     int cell) {
    const int left = std::max(x, 0);
    int baseline = y + capHeight_;
    for (const char c : text) {
        if (c == '\n') {
            baseline += points_;
            x = left;
            continue;
        }
        must(FT_Load_Char(face_, static_cast<unsigned char>(c), FT_LOAD_DEFAULT));
        must(FT_Render_Glyph(face_->glyph, FT_RENDER_MODE_NORMAL));
        const FT_GlyphSlot slot = face_->glyph;
        const int advance = static_cast<int>(slot->advance.x);
        const int offset = slot->bitmap_left + (cell != 0 ? cell / 2 - advance / 128 : 0);
        if (x + offset > maxX) {
            baseline += points_;
            if (baseline >= frame.height) {
                return;
            }
            x = left;
        }
        const auto width = static_cast<int>(slot->bitmap.width);
        frame.blend(x + offset, baseline - slot->bitmap_top, slot->bitmap.buffer, width, width,
                    static_cast<int>(slot->bitmap.rows), colour);
        x += cell != 0 ? cell : advance / 64;
        baseline += static_cast<int>(slot->advance.y / 64);
    }
}
