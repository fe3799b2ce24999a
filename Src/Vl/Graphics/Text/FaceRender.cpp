#include <limits>

#include "Vl/Graphics/Pixels/Bitmap.h"
#include "Vl/Graphics/Pixels/Saturated.h"
#include "Vl/Graphics/Text/Face.h"

namespace TextRender {

namespace {
constexpr int kNoMargin = std::numeric_limits<int>::max();
}

/// Where the next glyph goes. In 64 bits, because a text may be longer than any bitmap is wide.
struct Face::Pen {
    int64_t left;  ///< where lines start
    int64_t x;
    int64_t baseline;
    int64_t lineStep;
    int maxX;

    void breakLine() {
        baseline += lineStep;
        x = left;
    }
};

void Face::Render(const char* text, Bitmap& bmp, rgba colour, int maxX, int cell) {
    if (!face_ || text == nullptr) {
        return;
    }
    const Bitmap::Placement before = bmp.getPlacement();
    bmp.setVerticalAlignment(VerticalAlignment::Centred);
    bmp.setHorizontalAlignment(HorizontalAlignment::Start);
    Pen pen{.left = before.x > 0 ? before.x : 0,
            .x = before.x,
            .baseline = int64_t{before.y} + capHeight_,
            .lineStep = size_,
            .maxX = maxX};
    for (; *text != '\0'; ++text) {
        const auto code = static_cast<uint8_t>(*text);
        if (code == '\n') {
            pen.breakLine();
        } else if (code <= kIcons) {
            drawIcon(icons_[code - 1U], bmp, pen);
        } else if (!drawCharacter(code, bmp, colour, cell, pen)) {
            break;
        }
    }
    bmp.setPlacement(before);
}

void Face::drawIcon(const Icon& icon, Bitmap& bmp, Pen& pen) const {
    bmp.setPosition(saturated(pen.x), saturated(pen.baseline - capHeight_ / 2));
    bmp.render(icon);
    pen.x += icon.getWidth();
}

/// @return false when the text has reached the bitmap's end
bool Face::drawCharacter(uint8_t code, Bitmap& bmp, rgba colour, int cell, Pen& pen) {
    const Glyph* glyph = glyphs_.glyph(face_.get(), code);
    if (glyph == nullptr) {
        return true;
    }
    const int64_t bearing = glyph->left + (cell != 0 ? cell / 2 - glyph->advanceX / 128 : 0);
    if (pen.x + bearing > pen.maxX) {
        pen.breakLine();
        if (pen.baseline >= bmp.getHeight()) {
            return false;
        }
    }
    bmp.BlendMask(saturated(pen.x + bearing), saturated(pen.baseline - glyph->top), glyph->mask, colour);
    pen.x += cell != 0 ? cell : glyph->advanceX / 64;
    pen.baseline += glyph->advanceY / 64;
    return true;
}

void Face::RenderAligned(const char* text, Bitmap& bmp, rgba colour, FontSpace box, rgba boxColour,
                         int cell) {
    auto [width, height] = TextDimensions(text, true, cell);
    if (box.width != 0 && box.width < width) {
        width = box.width;
    }
    const auto [startX, startY, vertical, horizontal] = bmp.getPlacement();
    int64_t x = startX;
    int64_t y = startY;

    if (horizontal == HorizontalAlignment::Centred) {
        x -= width / 2;
    }
    if (horizontal == HorizontalAlignment::End) {
        x -= width;
    }
    if (vertical == VerticalAlignment::Centred) {
        y -= box.height / 2;
    }
    if (vertical == VerticalAlignment::Bottom) {
        y -= box.height != 0 ? box.height : height;
    }

    if (box.height != 0) {
        bmp.setPosition(saturated(x), saturated(y));
        bmp.FillRect(width, box.height, boxColour);
        if (vertical == VerticalAlignment::Bottom) {
            y += int64_t{box.height} - height;
        }
    }
    if (vertical == VerticalAlignment::Centred) {
        y += box.height / 2 - height / 2;
    }

    bmp.setPosition(saturated(x), saturated(y));
    Render(text, bmp, colour, box.width != 0 ? saturated(x + box.width) : kNoMargin, cell);

    if (horizontal == HorizontalAlignment::Start) {
        x += width;
    }
    if (horizontal == HorizontalAlignment::Centred) {
        x += width / 2;
    }
    if (vertical == VerticalAlignment::Centred) {
        y += height / 2;
    }
    if (vertical == VerticalAlignment::Bottom) {
        y += height;
    }
    bmp.setPosition(saturated(x), saturated(y));
}

void Face::RenderFit(const char* text, Bitmap& bmp, FontSpace box, rgba colour, bool multiline) {
    const int64_t x = bmp.getX();
    const int64_t y = bmp.getY();
    const int maxX = multiline ? saturated(x + box.width) : kNoMargin;
    const TextSize taken = SetBestSize(text, box.width, box.height, multiline);
    const bool centreX = (box.flags & FontSpace::CentreHorizontally) != 0;
    const bool centreY = (box.flags & FontSpace::CentreVertically) != 0;
    bmp.setPosition(saturated(x + (centreX ? (int64_t{box.width} - taken.width) / 2 : 0)),
                    saturated(y + (centreY ? (int64_t{box.height} - taken.height) / 2 : 0)));
    Render(text, bmp, colour, maxX, 0);
}

}  // namespace TextRender
