// What a new text on the panel costs: the frame filled and two lines centred on it.
#include <benchmark/benchmark.h>
#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <climits>

#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PlainText.h"
#include "Vl/Graphics/OLED.h"
#include "Vl/Graphics/Text/Render.h"

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;
constexpr uint32_t kBlack = 0x80000000;
constexpr uint32_t kWhite = 0x80ffffff;

struct Line {
    const char* text;
    int middle;
};
constexpr Line kLines[] = {{"Hello, front", 24 - 7}, {"panel number 2", 24 + 7}};

void draw(VLGraphics::OLED& oled) {
    oled.fill(kBlack);
    for (const auto& [text, middle] : kLines) {
        oled.getBmp().setPosition(kWidth / 2, middle);
        oled.getFont().RenderAligned(text, oled.getBmp(), kWhite, {}, kBlack, 0);
    }
}

PlainFrame plainlyDrawn() {
    PlainFrame frame(kWidth, kHeight);
    PlainText plain;
    plain.setPoints(14);
    frame.fill(0, 0, kWidth, kHeight, kBlack);
    for (const auto& [text, middle] : kLines) {
        plain.draw(frame, text, kWidth / 2 - plain.pixelsWide(text) / 2, middle - plain.capHeight() / 2,
                   kWhite, INT_MAX, 0);
    }
    return frame;
}

void ours(benchmark::State& state) {
    VLGraphics::OLED oled(kWidth, kHeight);
    TextRender::Render::NewFace(kTestFont, oled.getFont());
    oled.getFont().SetSize(14);
    oled.getBmp().setHorizontalAlignment(HorizontalAlignment::Centred);
    oled.getBmp().setVerticalAlignment(VerticalAlignment::Centred);
    draw(oled);
    if (!(plainlyDrawn() == oled.getTypedBuffer())) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        draw(oled);
        benchmark::ClobberMemory();
    }
}

void cairoFt(benchmark::State& state) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    FT_Init_FreeType(&library);
    FT_New_Face(library, kTestFont, 0, &face);
    cairo_font_face_t* font = cairo_ft_font_face_create_for_ft_face(face, FT_LOAD_DEFAULT);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB16_565, kWidth, kHeight);
    cairo_t* cairo = cairo_create(surface);
    cairo_set_font_face(cairo, font);
    cairo_set_font_size(cairo, 14 * 100 / 72.0);  // points at 100 dots per inch

    for (auto _ : state) {
        cairo_set_source_rgb(cairo, 0, 0, 0);
        cairo_paint(cairo);
        cairo_set_source_rgb(cairo, 1, 1, 1);
        for (const auto& [text, middle] : kLines) {
            cairo_text_extents_t extents;
            cairo_text_extents(cairo, text, &extents);
            cairo_move_to(cairo, kWidth / 2.0 - extents.x_advance / 2, middle + 7);
            cairo_show_text(cairo, text);
        }
        cairo_surface_flush(surface);
        benchmark::ClobberMemory();
    }
    if (cairo_status(cairo) != CAIRO_STATUS_SUCCESS) {
        state.SkipWithError("cairo failed");
    }

    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    cairo_font_face_destroy(font);
    cairo_debug_reset_static_data();
    FT_Done_FreeType(library);
}

BENCHMARK(ours)->Name("redraw_two_lines/ours");
BENCHMARK(cairoFt)->Name("redraw_two_lines/cairo_ft");

}  // namespace
