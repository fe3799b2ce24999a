// The least that a program must do to show two lines: load the font, draw the glyphs, write the frame. The
// peer of the whole tool; it looks for no device, keeps no log and handles no error.
#include <fcntl.h>
#include <ft2build.h>
#include <unistd.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;
constexpr int kWhite[3] = {31, 63, 31};

struct Glyph {
    int left, top, width, rows, advance;
    std::vector<unsigned char> grey;
};

Glyph load(FT_Face face, unsigned char code) {
    FT_Load_Glyph(face, FT_Get_Char_Index(face, code), FT_LOAD_RENDER);
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    return {slot->bitmap_left,
            slot->bitmap_top,
            static_cast<int>(bitmap.width),
            static_cast<int>(bitmap.rows),
            static_cast<int>(slot->advance.x >> 6),
            {bitmap.buffer, bitmap.buffer + std::size_t{bitmap.width} * bitmap.rows}};
}

void draw(std::uint16_t* frame, const Glyph& glyph, int penX, int baseline) {
    for (int row = 0; row < glyph.rows; ++row) {
        for (int column = 0; column < glyph.width; ++column) {
            const int x = penX + glyph.left + column;
            const int y = baseline - glyph.top + row;
            const int grey = glyph.grey[static_cast<std::size_t>(row * glyph.width + column)];
            if (grey == 0 || x < 0 || x >= kWidth || y < 0 || y >= kHeight) {
                continue;
            }
            std::uint16_t& pixel = frame[kWidth * kHeight - 1 - (y * kWidth + x)];  // mounted upside down
            const int old = __builtin_bswap16(pixel);
            const int alpha = 128 * (1 + grey) >> 8;
            const auto mix = [alpha](int before, int now) {
                return (before * (128 - alpha) + now * alpha) / 128;
            };
            const int mixed = mix(old >> 11, kWhite[0]) << 11 | mix(old >> 5 & 63, kWhite[1]) << 5 |
                              mix(old & 31, kWhite[2]);
            pixel = __builtin_bswap16(static_cast<std::uint16_t>(mixed));
        }
    }
}

void drawCentred(std::uint16_t* frame, FT_Face face, const char* text, int capHeight, int middle) {
    std::vector<Glyph> glyphs;
    int width = 0;
    for (; *text != '\0'; ++text) {
        glyphs.push_back(load(face, static_cast<unsigned char>(*text)));
        width += glyphs.back().advance;
    }
    int x = kWidth / 2 - width / 2;
    for (const Glyph& glyph : glyphs) {
        draw(frame, glyph, x, middle - capHeight / 2 + capHeight);
        x += glyph.advance;
    }
}

}  // namespace

int main(int, char** argv) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    FT_Init_FreeType(&library);
    FT_New_Face(library, "/opt/pattern/oled/Font.ttf", 0, &face);
    FT_Set_Char_Size(face, 0, FT_F26Dot6{14} * 64, 100, 100);
    const int capHeight = load(face, 'M').top;

    static std::uint16_t frame[kWidth * kHeight];
    drawCentred(frame, face, argv[1], capHeight, kHeight / 2 - 7);
    drawCentred(frame, face, argv[2], capHeight, kHeight / 2 + 7);

    const int screen =
        open("/sys/bus/avalon/devices/subsys_hps_oled_spi/spi_master/spi1/spi1.0/screen", O_RDWR | O_CLOEXEC);
    return write(screen, frame, sizeof frame) == sizeof frame ? 0 : 1;
}
