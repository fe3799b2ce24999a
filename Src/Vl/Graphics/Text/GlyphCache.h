#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Vl/Graphics/Pixels/CoverageMask.h"

struct FT_FaceRec_;

namespace TextRender {

/// One rendered character: where its coverage lies about the pen, and how far the pen moves on.
struct Glyph {
    Glyph() = default;
    Glyph(Glyph&&) = default;  // the mask still views the same coverage, as it would not after a copy
    Glyph& operator=(Glyph&&) = default;

    int left = 0;          ///< pixels from the pen to the first column
    int top = 0;           ///< pixels from the baseline up to the first row
    int64_t advanceX = 0;  ///< 1/64 pixels
    int64_t advanceY = 0;  ///< 1/64 pixels
    std::vector<uint8_t> coverage;
    CoverageMask mask;  ///< views `coverage`
};

/// What FreeType made of each of the 256 character codes at one size of one face, kept so that it is made
/// once. Whoever changes the face or its size clears the cache. Failures are said on standard error and
/// never kept: each use tries, and says, again. Not thread-safe.
class GlyphCache {
public:
    /// Glyphs of more pixels than this are made anew each time, so that huge sizes cannot fill the memory.
    static constexpr int64_t kLargestKept = int64_t{256} * 256;

    /// What a character is measured for: when it will be drawn at this size, it is rendered at once.
    enum class Purpose { Measuring, Drawing };

    GlyphCache();
    ~GlyphCache();
    GlyphCache(const GlyphCache&) = delete;
    GlyphCache& operator=(const GlyphCache&) = delete;

    /// Forgets everything.
    void clear();

    /// How far the character moves the pen, in 1/64 pixel; for a glyph that cannot be loaded, whatever
    /// FreeType left as its advance (0 without a face).
    int64_t advance(FT_FaceRec_* face, uint8_t code, Purpose purpose);

    /// The rendered character, or null when it cannot be loaded or rendered. Valid until the next call.
    const Glyph* glyph(FT_FaceRec_* face, uint8_t code);

private:
    static constexpr size_t kCodes = 256;

    /// What is known of a character that has been loaded.
    struct Entry {
        int64_t advance = 0;
        std::optional<Glyph> glyph;
    };

    Entry* find(uint8_t code) const;
    Entry& keep(uint8_t code, int64_t advance);

    /// Renders what the face has just loaded to be measured: a text is measured before it is drawn, and
    /// loading, with its hinting, is the larger part. What fails here is tried, and said, when it is drawn.
    static void renderAhead(FT_FaceRec_* face, Entry& entry);

    std::vector<std::unique_ptr<Entry>> entries_;  ///< by code; none at all until the first is kept
    std::optional<Glyph> unkept_;
};

}  // namespace TextRender
