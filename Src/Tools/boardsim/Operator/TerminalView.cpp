#include "Tools/boardsim/Operator/TerminalView.h"

#include <chafa.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace boardsim {
namespace {

constexpr int kUsualColumns = 80;

/// Luma of ITU-R BT.601, in thousandths of 0 to 255.
bool isBright(const Picture& picture, std::size_t x, std::size_t y) {
    if (x >= picture.width || y >= picture.height) {
        return false;
    }
    const std::uint8_t* pixel = picture.at(x, y);
    return 299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2] > 127'500;
}

/// By which quarters are set: upper left 1, upper right 2, lower left 4, lower right 8.
constexpr std::array<std::string_view, 16> kQuadrants{" ", "▘", "▝", "▀", "▖", "▌", "▞", "▛",
                                                      "▗", "▚", "▐", "▜", "▄", "▙", "▟", "█"};

/// Two rows of pixels become one of characters, each `cellWidth` pixels wide: 1 or 2.
std::string blocks(const Picture& picture, std::size_t cellWidth) {
    std::string text;
    for (std::size_t y = 0; y < picture.height; y += 2) {
        for (std::size_t x = 0; x < picture.width; x += cellWidth) {
            const std::size_t right = x + cellWidth - 1;
            std::size_t set = isBright(picture, x, y) ? 1 : 0;
            set += isBright(picture, right, y) ? 2 : 0;
            set += isBright(picture, x, y + 1) ? 4 : 0;
            set += isBright(picture, right, y + 1) ? 8 : 0;
            text += kQuadrants[set];
        }
        text += '\n';
    }
    return text;
}

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view{} : std::string_view{value};
}

int terminalColumns() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return kUsualColumns;
    }
    return size.ws_col;
}

template <auto Release>
struct Releaser {
    template <typename T>
    void operator()(T* object) const {
        Release(object);
    }
};

using TermInfo = std::unique_ptr<ChafaTermInfo, Releaser<chafa_term_info_unref>>;
using SymbolMap = std::unique_ptr<ChafaSymbolMap, Releaser<chafa_symbol_map_unref>>;
using CanvasConfig = std::unique_ptr<ChafaCanvasConfig, Releaser<chafa_canvas_config_unref>>;
using Canvas = std::unique_ptr<ChafaCanvas, Releaser<chafa_canvas_unref>>;

TermInfo detectTerminal() {
    const std::unique_ptr<gchar*, Releaser<g_strfreev>> variables(g_get_environ());
    return TermInfo(chafa_term_db_detect(chafa_term_db_get_default(), variables.get()));
}

/// A way to show pictures, and the control sequence that a terminal must know for it; best first.
struct PixelWay {
    ChafaTermSeq needs;
    ChafaPixelMode mode;
};
constexpr std::array kPixelWays{
    PixelWay{CHAFA_TERM_SEQ_BEGIN_KITTY_IMMEDIATE_IMAGE_V1, CHAFA_PIXEL_MODE_KITTY},
    PixelWay{CHAFA_TERM_SEQ_BEGIN_ITERM2_IMAGE, CHAFA_PIXEL_MODE_ITERM2},
    PixelWay{CHAFA_TERM_SEQ_BEGIN_SIXELS, CHAFA_PIXEL_MODE_SIXELS},
};

/// A number of colours, and the control sequence that shows a terminal has them; most first.
struct ColourWay {
    ChafaTermSeq needs;
    ChafaCanvasMode mode;
};
constexpr std::array kColourWays{
    ColourWay{CHAFA_TERM_SEQ_SET_COLOR_FGBG_DIRECT, CHAFA_CANVAS_MODE_TRUECOLOR},
    ColourWay{CHAFA_TERM_SEQ_SET_COLOR_FGBG_256, CHAFA_CANVAS_MODE_INDEXED_240},
    ColourWay{CHAFA_TERM_SEQ_SET_COLOR_FGBG_16, CHAFA_CANVAS_MODE_INDEXED_16},
};

template <typename Ways, typename Mode>
Mode bestWay(const Ways& ways, ChafaTermInfo* terminal, Mode otherwise) {
    const auto known = std::find_if(ways.begin(), ways.end(), [&](const auto& way) {
        return chafa_term_info_have_seq(terminal, way.needs) != 0;
    });
    return known == ways.end() ? otherwise : known->mode;
}

}  // namespace

std::string plainBlocks(const Picture& picture, std::size_t columns) {
    if (picture.width <= columns) {
        return blocks(picture, 1);
    }
    const std::size_t cells = (picture.width + 1) / 2;
    if (cells <= columns) {
        return blocks(picture, 2);
    }
    return blocks(shrink(picture, (cells + columns - 1) / columns), 2);
}

std::size_t plainColumns() {
    return isatty(STDOUT_FILENO) != 0 ? static_cast<std::size_t>(terminalColumns())
                                      : std::numeric_limits<std::size_t>::max();
}

std::string forTerminal(const Picture& picture) {
    const TermInfo terminal = detectTerminal();
    const SymbolMap symbols(chafa_symbol_map_new());
    chafa_symbol_map_add_by_tags(symbols.get(), CHAFA_SYMBOL_TAG_SPACE);
    chafa_symbol_map_add_by_tags(symbols.get(), CHAFA_SYMBOL_TAG_VHALF);

    // A character is two pixels high and one wide when the panel fits the terminal at full size.
    const int columns = std::min(terminalColumns(), static_cast<int>(picture.width));
    const int rows =
        std::max(1, static_cast<int>(picture.height) * columns / static_cast<int>(picture.width) / 2);
    const CanvasConfig config(chafa_canvas_config_new());
    chafa_canvas_config_set_geometry(config.get(), columns, rows);
    chafa_canvas_config_set_symbol_map(config.get(), symbols.get());
    chafa_canvas_config_set_pixel_mode(config.get(),
                                       bestWay(kPixelWays, terminal.get(), CHAFA_PIXEL_MODE_SYMBOLS));
    chafa_canvas_config_set_canvas_mode(config.get(),
                                        bestWay(kColourWays, terminal.get(), CHAFA_CANVAS_MODE_FGBG));

    const Canvas canvas(chafa_canvas_new(config.get()));
    chafa_canvas_draw_all_pixels(canvas.get(), CHAFA_PIXEL_RGB8, picture.rgb.data(),
                                 static_cast<gint>(picture.width), static_cast<gint>(picture.height),
                                 static_cast<gint>(3 * picture.width));
    GString* printed = chafa_canvas_print(canvas.get(), terminal.get());
    std::string text(printed->str, printed->len);
    g_string_free(printed, TRUE);
    return text + "\n";
}

bool terminalShowsColour() {
    const std::string_view terminal = environment("TERM");
    return isatty(STDOUT_FILENO) != 0 && !terminal.empty() && terminal != "dumb" &&
           environment("NO_COLOR").empty();
}

}  // namespace boardsim
