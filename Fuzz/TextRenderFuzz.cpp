// Any text, drawn in any of the three ways, at any place and size, on a frame of the panel's resolution.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Vl/Graphics/OLED.h"
#include "Vl/Graphics/Text/Render.h"

namespace {

constexpr const char* kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// What the first bytes of the input choose; the rest is the text.
struct Choice {
    uint8_t operation;
    uint8_t alignments;
    int16_t points;
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
    int32_t cell;
    uint32_t colour;
};

/// A frame with its font, made once: what one drawing leaves behind is what the next one meets.
struct Panel {
    Panel() {
        if (!TextRender::Render::NewFace(kFont, oled.getFont())) {
            std::fprintf(stderr, "cannot load %s\n", kFont);
            std::exit(1);
        }
    }
    VLGraphics::OLED oled{160, 48};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Choice choice;
    if (size < sizeof choice) {
        return 0;
    }
    std::memcpy(&choice, data, sizeof choice);
    const std::string text(reinterpret_cast<const char*>(data) + sizeof choice, size - sizeof choice);

    static Panel panel;
    RGB16Bitmap& bitmap = panel.oled.getBmp();
    TextRender::Face& font = panel.oled.getFont();
    bitmap.setPosition(choice.x, choice.y);
    bitmap.setHorizontalAlignment(static_cast<HorizontalAlignment>(choice.alignments % 3));
    bitmap.setVerticalAlignment(static_cast<VerticalAlignment>(choice.alignments / 3 % 3));
    font.SetSize(choice.points % 500);

    const FontSpace box{choice.width, choice.height, choice.alignments / 9};
    if (choice.operation % 3 == 0) {
        font.Render(text.c_str(), bitmap, choice.colour, choice.width, choice.cell);
    }
    if (choice.operation % 3 == 1) {
        font.RenderAligned(text.c_str(), bitmap, choice.colour, box, ~choice.colour, choice.cell);
    }
    if (choice.operation % 3 == 2) {
        font.RenderFit(text.c_str(), bitmap, {choice.width, choice.height % 1000, box.flags}, choice.colour,
    }
                       choice.cell % 2 != 0);
                       return 0;
}
