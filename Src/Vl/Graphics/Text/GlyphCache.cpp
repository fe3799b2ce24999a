#include "Vl/Graphics/Text/GlyphCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_BITMAP_H

#include <algorithm>
#include <cstdio>
#include <utility>

namespace TextRender {

namespace {

/// Rows are padded to this many columns without coverage, so that they can be blended in whole blocks.
constexpr size_t kRowAlignment = 8;

FT_UInt load(FT_Face face, uint8_t code, FT_Error& error) {
    const FT_UInt index = FT_Get_Char_Index(face, code);
    error = FT_Load_Glyph(face, index, FT_LOAD_DEFAULT);
    if (error != 0) {
        std::fprintf(stderr, "could not load glyph: %u because: 0x%X\n", index, static_cast<unsigned>(error));
    }
    return index;
}

/// Another layout than 8-bit grey rows (strikes embedded in the font) as 8-bit grey rows.
class GreyBitmap {
public:
    GreyBitmap(FT_Library library, const FT_Bitmap& source) : library_(library) {
        FT_Bitmap_Init(&bitmap_);
        usable_ = FT_Bitmap_Convert(library_, &source, &bitmap_, 1) == 0;
    }
    ~GreyBitmap() { FT_Bitmap_Done(library_, &bitmap_); }
    GreyBitmap(const GreyBitmap&) = delete;
    GreyBitmap& operator=(const GreyBitmap&) = delete;

    const FT_Bitmap* get() const { return usable_ ? &bitmap_ : nullptr; }

private:
    FT_Library library_;
    FT_Bitmap bitmap_;
    bool usable_;
};

/// Copies grey rows into padded ones, stretching fewer than 256 levels to the full range.
void copyCoverage(const FT_Bitmap& from, Glyph& to) {
    const size_t pitch = (from.width + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
    const int levels = std::max<int>(from.num_grays, 2) - 1;
    to.coverage.assign(pitch * from.rows, 0);
    for (size_t row = 0; row < from.rows; ++row) {
        const uint8_t* source = from.buffer + static_cast<ptrdiff_t>(row) * from.pitch;
        std::transform(source, source + from.width, to.coverage.data() + row * pitch,
                       [levels](uint8_t value) { return static_cast<uint8_t>(value * 255 / levels); });
    }
    to.mask = {.data = to.coverage.data(),
               .pitch = static_cast<int>(pitch),
               .readable = static_cast<int>(pitch),
               .width = static_cast<int>(from.width),
               .height = static_cast<int>(from.rows)};
}

Glyph copyOf(const FT_GlyphSlotRec& slot) {
    Glyph glyph;
    glyph.left = slot.bitmap_left;
    glyph.top = slot.bitmap_top;
    glyph.advanceX = slot.advance.x;
    glyph.advanceY = slot.advance.y;
    const FT_Bitmap& bitmap = slot.bitmap;
    if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY && bitmap.pitch == static_cast<int>(bitmap.width)) {
        copyCoverage(bitmap, glyph);
        return glyph;
    }
    const GreyBitmap grey(slot.library, bitmap);
    if (grey.get() != nullptr) {
        copyCoverage(*grey.get(), glyph);
    }
    return glyph;
}

int64_t pixelsOf(const Glyph& glyph) {
    return int64_t{glyph.mask.width} * glyph.mask.height;
}

}  // namespace

GlyphCache::GlyphCache() = default;
GlyphCache::~GlyphCache() = default;

void GlyphCache::clear() {
    entries_.clear();
    unkept_.reset();
}

GlyphCache::Entry* GlyphCache::find(uint8_t code) const {
    return entries_.empty() ? nullptr : entries_[code].get();
}

GlyphCache::Entry& GlyphCache::keep(uint8_t code, int64_t advance) {
    if (entries_.empty()) {
        entries_.resize(kCodes);
    }
    auto& entry = entries_[code];
    if (!entry) {
        entry = std::make_unique<Entry>();
        entry->advance = advance;
    }
    return *entry;
}

int64_t GlyphCache::advance(FT_FaceRec_* face, uint8_t code, Purpose purpose) {
    if (const Entry* known = find(code)) {
        return known->advance;
    }
    FT_Error error = 0;
    load(face, code, error);
    const int64_t width = face != nullptr ? face->glyph->advance.x : 0;
    if (error == 0) {
        Entry& entry = keep(code, width);
        if (purpose == Purpose::Drawing) {
            renderAhead(face, entry);
        }
    }
    return width;
}

const Glyph* GlyphCache::glyph(FT_FaceRec_* face, uint8_t code) {
    if (const Entry* known = find(code); known != nullptr && known->glyph) {
        return &*known->glyph;
    }
    FT_Error error = 0;
    const FT_UInt index = load(face, code, error);
    if (error != 0) {
        return nullptr;
    }
    error = FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL);
    if (error != 0) {
        std::fprintf(stderr, "could not render glyph: %u because: 0x%X\n", index,
                     static_cast<unsigned>(error));
        return nullptr;
    }
    Glyph rendered = copyOf(*face->glyph);
    if (pixelsOf(rendered) > kLargestKept) {
        return &unkept_.emplace(std::move(rendered));
    }
    Entry& entry = keep(code, rendered.advanceX);
    return &entry.glyph.emplace(std::move(rendered));
}

void GlyphCache::renderAhead(FT_FaceRec_* face, Entry& entry) {
    const FT_Glyph_Metrics& units = face->glyph->metrics;
    if ((int64_t{units.width} >> 6) * (int64_t{units.height} >> 6) > kLargestKept ||
        FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) != 0) {
        return;
    }
    Glyph rendered = copyOf(*face->glyph);
    if (pixelsOf(rendered) <= kLargestKept) {
        entry.glyph = std::move(rendered);
    }
}

}  // namespace TextRender
