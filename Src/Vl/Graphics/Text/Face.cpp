#include "Vl/Graphics/Text/Face.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H

#include <algorithm>
#include <cstdio>

#include "Vl/Graphics/Pixels/Saturated.h"

namespace TextRender {

void Face::Release::operator()(FT_FaceRec_* face) const {
    FT_Done_Face(face);
}

Face::Face() : icons_(std::make_unique<Icon[]>(kIcons)) {}
Face::~Face() = default;

void Face::Init(FT_FaceRec_* face) {
    glyphs_.clear();
    if (face != face_.get()) {
        face_.reset(face);
    }
    size_ = -1;
}

void Face::Clear() {
    glyphs_.clear();
    face_.reset();
}

void Face::SetSize(int points) {
    constexpr FT_UInt dotsPerInch = 100;
    changeSize(points, [&] {
        return FT_Set_Char_Size(face_.get(), 0, FT_F26Dot6{points} * 64, dotsPerInch, dotsPerInch);
    });
}

void Face::SetPixelSize(int pixels) {
    changeSize(pixels, [&] { return FT_Set_Pixel_Sizes(face_.get(), 0, static_cast<FT_UInt>(pixels)); });
}

template <typename SetInFreeType>
void Face::changeSize(int size, SetInFreeType set) {
    if (size == size_) {
        return;
    }
    size_ = size;
    if (!face_) {
        std::fputs("Face not loaded\n", stderr);
        return;
    }
    glyphs_.clear();
    const FT_Error error = set();
    measureCapHeight();
    if (error != 0) {
        std::fprintf(stderr, "Could not set size: 0x%X\n", static_cast<unsigned>(error));
    }
}

void Face::measureCapHeight() {
    const FT_UInt index = FT_Get_Char_Index(face_.get(), 'M');
    FT_Glyph outline = nullptr;
    FT_Error error = FT_Load_Glyph(face_.get(), index, FT_LOAD_DEFAULT);
    if (error == 0) {
        error = FT_Get_Glyph(face_->glyph, &outline);
    }
    if (error != 0) {
        std::fprintf(stderr, "could not load glyph: %u because: 0x%X\n", index, static_cast<unsigned>(error));
        return;
    }
    FT_BBox box;
    FT_Glyph_Get_CBox(outline, FT_GLYPH_BBOX_PIXELS, &box);
    capHeight_ = saturated(box.yMax);
    FT_Done_Glyph(outline);
}

void Face::SetIcon(int index, const char* path) {
    if (index < 1 || index > kIcons) {
        std::fputs("Invalid index for SetIcon\n", stderr);
        return;
    }
    icons_[static_cast<size_t>(index - 1)].Load(path);
}

TextSize Face::TextDimensions(const char* text, bool pixels, int cell) {
    return measure(text, pixels, cell, GlyphCache::Purpose::Drawing);
}

TextSize Face::measure(const char* text, bool pixels, int cell, GlyphCache::Purpose purpose) {
    int64_t widest = 0;
    int64_t line = 0;
    int64_t height = capHeight_;
    for (; text != nullptr && *text != '\0'; ++text) {
        const auto code = static_cast<uint8_t>(*text);
        if (code == '\n') {
            widest = std::max(widest, line);
            height += size_;
            line = 0;
        } else if (code <= kIcons) {
            line += icons_[code - 1U].getWidth();
        } else if (cell != 0) {
            line += cell;
        } else {
            const int64_t advance = glyphs_.advance(face_.get(), code, purpose);
            line += pixels ? advance >> 6 : advance;
        }
    }
    return {saturated(std::max(widest, line)), saturated(height)};
}

TextSize Face::SetBestSize(const char* text, int width, int height, bool multiline) {
    constexpr int probeSize = 10;
    constexpr int64_t probeUnits = int64_t{probeSize} * 64;
    SetSize(probeSize);
    const int64_t probeWidth = measure(text, false, 0, GlyphCache::Purpose::Measuring).width;
    const int64_t boxUnits = width * probeUnits;

    int64_t size = probeWidth != 0 ? std::min<int64_t>(boxUnits / probeWidth, height) : 0;
    TextSize taken{saturated(size * probeWidth / probeUnits), saturated(size)};
    if (multiline && size <= height / 2 && boxUnits > 0 && height >= 0) {
        // How often the text, at the box's full height, would go past its width.
        int64_t wraps = height * probeWidth / boxUnits;
        if (wraps >= 1) {
            int64_t lines = 1;
            while (lines * lines <= wraps) {
                ++lines;
            }
            size = height / lines;
            wraps = size * probeWidth / boxUnits;
        } else {
            size = height;
        }
        taken = {width, saturated(size * (wraps + 1))};
    }
    SetSize(saturated(size));
    return taken;
}

}  // namespace TextRender
