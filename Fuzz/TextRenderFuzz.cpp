// Any text, drawn in any of the three ways, at any place and size, on a frame of the panel's resolution.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Fuzz/MemoryFile.h"
#include "Vl/Graphics/OLED.h"
#include "Vl/Graphics/Text/Render.h"

namespace {

constexpr const char* kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// A picture of 3 × 3 grey pixels, half of them half covered.
constexpr uint8_t kIcon[] = {
    0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44,
    0x52, 0x00, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00, 0x03, 0x08, 0x04, 0x00, 0x00, 0x00, 0xfc,
    0x21, 0x7d, 0x34, 0x00, 0x00, 0x00, 0x0f, 0x49, 0x44, 0x41, 0x54, 0x78, 0xda, 0x63, 0xf8,
    0xdf, 0x00, 0x82, 0x0c, 0x28, 0x14, 0x00, 0x8f, 0xb2, 0x0d, 0x78, 0x0f, 0xe2, 0xee, 0xc0,
    0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82,
};

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

/// A frame with its font and one icon, made once: what one drawing leaves behind is what the next one meets.
struct Panel {
    Panel() {
        icon.write(kIcon, sizeof kIcon);
        if (!TextRender::Render::NewFace(kFont, oled.getFont())) {
            std::fprintf(stderr, "cannot load %s\n", kFont);
            std::exit(1);
        }
        oled.getFont().SetIcon(1, icon.path());
        oled.getFont().SetIcon(9, icon.path());
        if (oled.getFont().TextDimensions("\x01\x09", true, 0).width != 6) {
            std::fprintf(stderr, "cannot read the icon\n");
            std::exit(1);
        }
    }

    MemoryFile icon;
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
        const FontSpace low{choice.width, choice.height % 1000, box.flags};
        font.RenderFit(text.c_str(), bitmap, low, choice.colour, choice.cell % 2 != 0);
    }
    return 0;
}
