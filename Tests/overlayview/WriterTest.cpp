// Overlay files by the library's writers, looked at with the program: the picture that went in must come out.
#include <gmock/gmock.h>

#include <array>
#include <bit>
#include <cstdio>
#include <functional>
#include <memory>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/overlayview/PngPixels.h"
#include "Tests/overlayview/Program.h"
#include "Tools/overlayview/Colour.h"
#include "Tools/overlayview/Files.h"
#include "Tools/overlayview/RunLengths.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"

namespace {

using overlays::ProgramRun;
using overlayview::Picture;
using overlayview::readFile;
using overlayview::Rgba;
using overlayview::RowOrder;
using overlayview::videoColour;
using testing::HasSubstr;

/// A video pixel as the overlay has it: 10-bit luma, 9-bit chroma, coverage 0 to 4.
struct Yuv {
    int y = 0;
    int cb = 0;
    int cr = 0;
    int level = 0;
};

/// What drawing this colour on an empty pixel leaves there: Cb at even indices, Cr at odd ones.
Yuv drawnAt(int index, int red, int green, int blue, int alpha) {
    const int level = (alpha + 16) / 32;
    if (level == 0) {
        return {};
    }
    const int y = (257 * red + 504 * green + 98 * blue) / 250 + 64;
    const int cb = (-148 * red - 291 * green + 439 * blue) / 500 + 256;
    const int cr = (439 * red - 368 * green - 71 * blue) / 500 + 256;
    return index % 2 == 0 ? Yuv{y, cb, 0, level} : Yuv{y, 0, cr, level};
}

/// A bitmap with a different colour and coverage in most pixels, some in long runs, some empty, and what is
/// expected to be in it.
struct Painting {
    Painting(int width, int height)
        : bitmap(width, height), pixels(static_cast<std::size_t>(width * height)) {
        std::uint32_t random = 1;
        for (int i = 0; i < width * height; ++i) {
            random = random * 1664525 + 1013904223;
            if (i % 97 < 40) {
                random = 0x5000;  // a run in a colour of its own
            }
            paint(i, random);
        }
    }

    YUVBitmap bitmap;
    std::vector<Yuv> pixels;

private:
    void paint(int index, std::uint32_t random) {
        const int red = static_cast<int>(random >> 24);
        const int green = static_cast<int>(random >> 16 & 255);
        const int blue = static_cast<int>(random >> 8 & 255);
        const int alpha = static_cast<int>(random >> 12) % 129;
        bitmap.getBuffer().setPixel(index, static_cast<rgba>(red | green << 8 | blue << 16 | alpha << 24));
        pixels[static_cast<std::size_t>(index)] = drawnAt(index, red, green, blue, alpha);
    }
};

std::uint32_t codeOf(const Yuv& pixel) {
    const int code = ((pixel.cr + 8) >> 4 & 31) | ((pixel.cb + 8) >> 4 & 31) << 5 |
                     ((pixel.y + 16) >> 5 & 31) << 10 | pixel.level << 15;
    return static_cast<std::uint32_t>(code);
}

class OverlayWriterTest : public testing::Test {
protected:
    using Closer = int (*)(FILE*);
    using Stream = std::unique_ptr<FILE, Closer>;

    Stream create() const { return {std::fopen(path.c_str(), "w+b"), std::fclose}; }

    ProgramRun draw(std::vector<std::string> options) const {
        options.insert(options.end(), {"-o", picture, path});
        return overlays::runOverlayview(directory.file("."), options);
    }
    Picture drawn() const { return overlays::pixelsOf(readFile(picture)); }

    support::TemporaryDirectory directory;
    std::string path = directory.file("overlay");
    std::string picture = directory.file("picture.png");
};

/// The size of a painting, and in which order its rows are stored.
struct Way {
    int width;
    int height;
    bool interlaced;
};

class OverlayPictureWriterTest : public OverlayWriterTest, public testing::WithParamInterface<Way> {
protected:
    std::vector<std::string> options() const {
        std::vector<std::string> words{"--width", std::to_string(GetParam().width)};
        if (GetParam().interlaced) {
            words.emplace_back("--interlaced");
        }
        return words;
    }
    RowOrder order() const { return GetParam().interlaced ? RowOrder::Interlaced : RowOrder::Progressive; }
    overlayview::Size size() const {
        return {static_cast<std::uint32_t>(GetParam().width), static_cast<std::uint32_t>(GetParam().height)};
    }
};

INSTANTIATE_TEST_SUITE_P(Ways, OverlayPictureWriterTest,
                         testing::Values(Way{160, 48, false}, Way{160, 48, true}, Way{720, 576, true},
                                         Way{66, 3, true}, Way{66, 3, false}, Way{128, 1, true}),
                         [](const auto& way) {
                             return std::to_string(way.param.width) + "x" + std::to_string(way.param.height) +
                                    (way.param.interlaced ? "Interlaced" : "Progressive");
                         });

TEST_P(OverlayPictureWriterTest, RunsGiveBackEveryCode) {
    const Painting painting(GetParam().width, GetParam().height);
    ASSERT_EQ(0, painting.bitmap.SaveRLE(create().get(), 4711, GetParam().interlaced));

    const std::vector<std::byte> file = readFile(path);
    const overlayview::RunLengths runs(overlayview::Bytes(file).subspan(12));
    const std::vector<std::uint32_t> codes = runs.codes(size(), order());
    ASSERT_EQ(painting.pixels.size(), codes.size());
    for (std::size_t i = 0; i < codes.size(); ++i) {
        ASSERT_EQ(codeOf(painting.pixels[i]), codes[i]) << i;
    }

    const ProgramRun run = draw(options());
    EXPECT_EQ(0, run.status) << run.out;
    EXPECT_THAT(run.out, HasSubstr("identifier      4711\n"));
    EXPECT_THAT(run.out, HasSubstr("kind            rle\n"));
    const Picture shown = drawn();
    EXPECT_EQ(size(), shown.size);
    EXPECT_EQ(runs.picture(size(), order()).pixels, shown.pixels);
}

TEST_P(OverlayPictureWriterTest, PatternsGiveBackEveryPixel) {
    const Painting painting(GetParam().width, GetParam().height);
    ASSERT_EQ(0, painting.bitmap.savePattern(create().get(), 1, GetParam().interlaced));

    std::vector<std::string> words = options();
    words.insert(words.end(), {"--as", "pattern", "--height", std::to_string(GetParam().height)});
    const ProgramRun run = draw(words);
    EXPECT_EQ(0, run.status) << run.out;
    const Picture shown = drawn();
    ASSERT_EQ(size(), shown.size);
    for (std::size_t i = 0; i + 1 < painting.pixels.size(); i += 2) {
        const Yuv& left = painting.pixels[i];
        const Yuv& right = painting.pixels[i + 1];
        const auto cb = static_cast<unsigned>((left.cb + 1) >> 1);
        const auto cr = static_cast<unsigned>((right.cr + 1) >> 1);
        ASSERT_EQ(videoColour(static_cast<unsigned>((left.y + 2) >> 2), cb, cr), shown.pixels[i]) << i;
        ASSERT_EQ(videoColour(static_cast<unsigned>((right.y + 2) >> 2), cb, cr), shown.pixels[i + 1]) << i;
    }
}

TEST_F(OverlayWriterTest, FilledRectanglesComeOutInTheirColour) {
    YUVBitmap bitmap(160, 48);
    bitmap.getBuffer().fillRect(0, 0, 160, 48, static_cast<rgba>(0x80FF0000U));
    ASSERT_EQ(0, bitmap.SaveRLE(create().get(), 1, false));
    EXPECT_EQ(0, draw({}).status);
    const Rgba blue = drawn().pixels[0];
    EXPECT_LT(blue.red, 24);
    EXPECT_LT(blue.green, 24);
    EXPECT_GT(blue.blue, 231);
    EXPECT_EQ(255, blue.alpha);
}

/// Characters whose pixels have the lumas 64 and up, so that all levels of a font are among them.
struct Font {
    static constexpr int kColumns = 3;
    static constexpr int kRows = 2;

    int width;
    int height;

    static int grey(int column, int row, int x, int y) {
        return (column * 71 + row * 37 + x * 11 + y * 5) % 256;
    }
    static int luma(int grey) { return (257 + 504 + 98) * grey / 250 + 64; }

    using Save = std::function<int(const YUVBitmap&, const YUVBitmap::FontParams&)>;

    void write(FILE* file, const Save& save) const {
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                YUVBitmap bitmap(width, height);
                for (int i = 0; i < width * height; ++i) {
                    const auto value = static_cast<std::uint32_t>(grey(column, row, i % width, i / width));
                    bitmap.getBuffer().setPixel(i, static_cast<rgba>(0x80000000U | value * 0x010101U));
                }
                ASSERT_EQ(0, save(bitmap, {file, column, row, kColumns, 42}));
            }
        }
    }

    std::vector<std::string> options(const std::string& kind) const {
        return {"--as",      kind,
                "--cell",    std::to_string(width) + "x" + std::to_string(height),
                "--columns", std::to_string(kColumns)};
    }

    /// Compares every pixel of the sheet; `shade` makes a grey out of a luma.
    void expect(const Picture& picture, int rowPitch, const std::function<int(int)>& shade) const {
        ASSERT_EQ(static_cast<std::uint32_t>(width * kColumns), picture.size.width);
        for (int row = 0; row < kRows; ++row) {
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width * kColumns; ++x) {
                    const int value = shade(luma(grey(x / width, row, x % width, y)));
                    const auto at = static_cast<std::size_t>((row * rowPitch + y) * width * kColumns + x);
                    ASSERT_EQ(value, picture.pixels.at(at).red) << row << " " << y << " " << x;
                }
            }
        }
    }
};

int fontShade(int luma) {
    if (luma == 64) {
        return 0;
    }
    const int scaled = (luma - 63) * 4;
    return 85 * (scaled < 3520 ? scaled / 880 : 3);
}

int numberShade(int luma) {
    return luma > 197 ? 255 : 0;
}

TEST_F(OverlayWriterTest, FontsGiveBackEveryLevel) {
    for (const Font font : {Font{32, 16}, Font{64, 5}}) {
        const auto save = [](const YUVBitmap& b, const YUVBitmap::FontParams& p) { return b.saveFont(p, 0); };
        ASSERT_NO_FATAL_FAILURE(font.write(create().get(), save));
        const ProgramRun run = draw(font.options("font"));
        EXPECT_EQ(0, run.status) << run.out;
        EXPECT_THAT(run.out, HasSubstr("identifier      42\n"));
        font.expect(drawn(), font.height, fontShade);
    }
}

TEST_F(OverlayWriterTest, RawFontsGiveBackEveryLevel) {
    const Font font{32, 7};
    const auto save = [](const YUVBitmap& b, const YUVBitmap::FontParams& p) { return b.saveFontRaw(p, 0); };
    ASSERT_NO_FATAL_FAILURE(font.write(create().get(), save));
    std::vector<std::string> options = font.options("font");
    options.emplace_back("--raw");
    EXPECT_EQ(0, draw(options).status);
    font.expect(drawn(), font.height, fontShade);
}

TEST_F(OverlayWriterTest, NumberFontsGiveBackEveryBit) {
    for (const Font font : {Font{32, 16}, Font{32, 21}}) {
        const auto save = [](const YUVBitmap& b, const YUVBitmap::FontParams& p) {
            return b.saveNumberFont(p);
        };
        ASSERT_NO_FATAL_FAILURE(font.write(create().get(), save));
        const ProgramRun run = draw(font.options("numbers"));
        EXPECT_EQ(0, run.status) << run.out;
        font.expect(drawn(), font.height, numberShade);
    }
}

TEST_F(OverlayWriterTest, RawNumberFontsAtAnOffsetGiveBackEveryBit) {
    const Font font{32, 24};
    const auto save = [](const YUVBitmap& b, const YUVBitmap::FontParams& p) {
        return b.saveNumberFontAtOffset(p, 64);
    };
    ASSERT_NO_FATAL_FAILURE(font.write(create().get(), save));
    std::vector<std::string> options = font.options("numbers");
    options.insert(options.end(), {"--offset", "64"});
    EXPECT_EQ(0, draw(options).status);
    font.expect(drawn(), font.height, numberShade);
}

TEST_F(OverlayWriterTest, AGroupThatIsMovedInALargeFontIsFound) {
    // One column of 32 pixels: 8 bytes a row. The last row of the only character lies at 80000h.
    YUVBitmap bitmap(32, 0x10001);
    for (int x = 0; x < 32; ++x) {
        bitmap.getBuffer().setPixel(0x10000 * 32 + x, static_cast<rgba>(0x80FFFFFFU));
    }
    ASSERT_EQ(0, bitmap.saveFontRaw({create().get(), 0, 0, 1, 0}, 0));
    EXPECT_EQ(std::size_t{0x80010}, readFile(path).size());
    EXPECT_EQ(0, draw({"--as", "font", "--cell", "32x1", "--columns", "1", "--raw"}).status);
    const Picture shown = drawn();
    EXPECT_EQ(0, shown.pixels[0xFFFF * 32].red);
    EXPECT_EQ(255, shown.pixels[0x10000 * 32].red);
}

}  // namespace
