#include "Vl/Graphics/Pixels/Yuv.h"

#include <gtest/gtest.h>

#include <vector>

#include "Tests/Graphics/PlainYuv.h"

namespace {

constexpr uint32_t kBlack = 0x80000000;
constexpr uint32_t kWhite = 0x80ffffff;
constexpr uint32_t kRed = 0x800000ff;
constexpr uint32_t kGreen = 0x8000ff00;
constexpr uint32_t kBlue = 0x80ff0000;

/// Both ends of every step of a field that has `steps` steps of `length` values.
std::vector<uint32_t> endsOfSteps(uint32_t steps, uint32_t length) {
    std::vector<uint32_t> ends;
    for (uint32_t step = 0; step < steps; ++step) {
        ends.push_back(step * length);
        ends.push_back(step * length + length - 1);
    }
    return ends;
}

uint32_t wordOf(uint32_t y, uint32_t cb, uint32_t cr, uint32_t level) {
    return cr | cb << 9 | y << 18 | level << 28;
}

}  // namespace

TEST(YuvTest, LumaRunsFrom64To940) {
    EXPECT_EQ(64, Yuv::luma(kBlack));
    EXPECT_EQ(940, Yuv::luma(kWhite));
    EXPECT_EQ(64 + 262, Yuv::luma(kRed));
    EXPECT_EQ(64 + 514, Yuv::luma(kGreen));
    EXPECT_EQ(64 + 99, Yuv::luma(kBlue));
}

TEST(YuvTest, ChromaRunsFrom33To479) {
    EXPECT_EQ(479, Yuv::blueChroma(kBlue));
    EXPECT_EQ(33, Yuv::blueChroma(0x8000ffff));
    EXPECT_EQ(479, Yuv::redChroma(kRed));
    EXPECT_EQ(33, Yuv::redChroma(0x80ffff00));
}

TEST(YuvTest, GreysHaveNoChroma) {
    for (uint32_t grey = 0; grey < 256; ++grey) {
        EXPECT_EQ(256, Yuv::blueChroma(grey * 0x10101)) << grey;
        EXPECT_EQ(256, Yuv::redChroma(grey * 0x10101)) << grey;
    }
}

TEST(YuvTest, ChromaIsTruncatedTowardGreyOnBothSides) {
    EXPECT_EQ(256, Yuv::blueChroma(0x80000100));  // −291 / 500
    EXPECT_EQ(255, Yuv::blueChroma(0x80000200));  // −582 / 500
    EXPECT_EQ(256, Yuv::blueChroma(0x80010000));  // 439 / 500
    EXPECT_EQ(257, Yuv::blueChroma(0x80020000));  // 878 / 500
    EXPECT_EQ(256, Yuv::redChroma(0x80000100));   // −368 / 500
    EXPECT_EQ(255, Yuv::redChroma(0x80000200));   // −736 / 500
}

TEST(YuvTest, LevelsAreStepsOf32Rounded) {
    for (uint32_t alpha = 0; alpha < 256; ++alpha) {
        const int expected = alpha < 16    ? 0
                             : alpha < 48  ? 1
                             : alpha < 80  ? 2
                             : alpha < 112 ? 3
                             : alpha < 144 ? 4
                             : alpha < 176 ? 5
                             : alpha < 208 ? 6
                             : alpha < 240 ? 7
                                           : 0;
        EXPECT_EQ(expected, Yuv::level(alpha << 24)) << alpha;
    }
}

TEST(YuvTest, AColourHasBothChromaSamplesAndADrawnPixelOne) {
    EXPECT_EQ(wordOf(326, 181, 479, 4), Yuv::fromColour(kRed).word);
    EXPECT_EQ(wordOf(326, 181, 0, 4), Yuv::fromColourAt(0, kRed).word);
    EXPECT_EQ(wordOf(326, 0, 479, 4), Yuv::fromColourAt(1, kRed).word);
    EXPECT_EQ(wordOf(326, 181, 0, 4), Yuv::fromColourAt(1000000, kRed).word);
}

TEST(YuvTest, BlackAndWhiteReadBackInCoarseStepsOnPurpose) {
    EXPECT_EQ(rgba(0x80000000), Yuv::toColour({wordOf(64, 256, 256, 4)}));
    // 876 above black is 832 in steps of 64.
    EXPECT_EQ(rgba(0x80f2f2f2), Yuv::toColour({wordOf(940, 256, 256, 4)}));
}

TEST(YuvTest, DifferencesAreRoundedDownToMultiplesOf64OnPurpose) {
    EXPECT_EQ(rgba(0x80000000), Yuv::toColour({wordOf(127, 256, 256, 4)}));
    EXPECT_EQ(rgba(0x80121212), Yuv::toColour({wordOf(128, 256, 256, 4)}));
    EXPECT_EQ(Yuv::toColour({wordOf(500, 256, 256, 4)}), Yuv::toColour({wordOf(500, 287, 287, 4)}));
    EXPECT_NE(Yuv::toColour({wordOf(500, 256, 256, 4)}), Yuv::toColour({wordOf(500, 256, 288, 4)}));
    // One below grey is a whole step below it.
    EXPECT_EQ(Yuv::toColour({wordOf(500, 256, 224, 4)}), Yuv::toColour({wordOf(500, 256, 255, 4)}));
    EXPECT_NE(Yuv::toColour({wordOf(500, 256, 256, 4)}), Yuv::toColour({wordOf(500, 256, 255, 4)}));
}

TEST(YuvTest, ChannelsStayBetween0And255) {
    EXPECT_EQ(rgba(0x80ffffff), Yuv::toColour({wordOf(1023, 256, 256, 4)}));
    EXPECT_EQ(rgba(0x80000000), Yuv::toColour({wordOf(0, 256, 256, 4)}));
    EXPECT_EQ(0, Yuv::toColour({wordOf(64, 256, 0, 4)}).r());
    EXPECT_EQ(255, Yuv::toColour({wordOf(900, 256, 511, 4)}).r());
}

TEST(YuvTest, ALevelReadsAs32TimesItself) {
    for (uint32_t level = 0; level < 8; ++level) {
        EXPECT_EQ(32 * level, Yuv::toColour({wordOf(64, 256, 256, level)}).a());
    }
}

TEST(YuvTest, TheFlagIsNoPartOfTheColour) {
    EXPECT_EQ(Yuv::toColour({wordOf(500, 300, 200, 4)}),
              Yuv::toColour({wordOf(500, 300, 200, 4) | 1U << 31}));
}

TEST(YuvTest, EveryCombinationOfStepsReadsAsTheFormulasSayAtBothEndsOfTheSteps) {
    const auto lumas = endsOfSteps(16, 64);
    const auto chromas = endsOfSteps(16, 32);
    for (const uint32_t y : lumas) {
        for (const uint32_t cb : chromas) {
            for (const uint32_t cr : chromas) {
                const uint32_t word = wordOf(y, cb, cr, (y + cb + cr) % 8);
                ASSERT_EQ(PlainYuv::read(word), Yuv::toColour({word}).value) << std::hex << word;
            }
        }
    }
}

TEST(YuvTest, EveryValueOfAFieldReadsAsTheFormulasSay) {
    for (uint32_t value = 0; value < 1024; ++value) {
        for (const uint32_t chroma : endsOfSteps(16, 32)) {
            for (const uint32_t word :
                 {wordOf(value, chroma, 511 - chroma, 4), wordOf(2 * chroma, value % 512, chroma, 4),
                  wordOf(2 * chroma, chroma, value % 512, 4)}) {
                ASSERT_EQ(PlainYuv::read(word), Yuv::toColour({word}).value) << std::hex << word;
            }
        }
    }
}

TEST(YuvTest, EveryFilledColourReadsAsTheFormulasSay) {
    for (uint32_t blue = 0; blue < 256; ++blue) {
        for (uint32_t green = 0; green < 256; ++green) {
            const PlainYuv::Reds reds(green, blue);
            std::array<uint32_t, 256> expected;
            std::array<uint32_t, 256> actual;
            for (size_t red = 0; red < 256; ++red) {
                expected[red] = PlainYuv::read(reds.filled[red]);
                actual[red] = Yuv::toColour(Yuv::fromColour(reds.colours[red])).value;
            }
            ASSERT_EQ(expected, actual) << "green " << green << " blue " << blue;
        }
    }
}

TEST(YuvTest, EveryAlphaOverEveryLevelBlendsAsTheFormulasSay) {
    const uint32_t colours[] = {kBlack & 0xffffff, kWhite & 0xffffff, kRed & 0xffffff,
                                kBlue & 0xffffff,  0x10ffee,          0x7f8081};
    const uint32_t fields[] = {0, 0x0fffffff, wordOf(64, 256, 256, 0), wordOf(940, 0, 256, 0),
                               wordOf(501, 33, 479, 0)};
    for (uint32_t alpha = 0; alpha < 256; ++alpha) {
        for (uint32_t level = 0; level < 16; ++level) {  // with the flag
            for (const uint32_t field : fields) {
                for (const uint32_t colour : colours) {
                    for (const int64_t index : {6, 7}) {
                        const uint32_t before = field | level << 28;
                        ASSERT_EQ(PlainYuv::set(before, index, alpha << 24 | colour),
                                  Yuv::blended({before}, index, alpha << 24 | colour).word)
                            << std::hex << "colour " << (alpha << 24 | colour) << " over " << before;
                    }
                }
            }
        }
    }
}

TEST(YuvTest, HalfOfWhiteOverOpaqueBlackIsHalfWay) {
    const YuvPixel black{wordOf(64, 256, 256, 4)};
    const YuvPixel half = Yuv::blended(black, 0, 0x40ffffff);
    EXPECT_EQ(502, half.y());
    EXPECT_EQ(256, half.cb());
    EXPECT_EQ(128, half.cr());  // the even pixel's own Cr is 0
    EXPECT_EQ(4, half.level());
}

TEST(YuvTest, TheLargerLevelStays) {
    EXPECT_EQ(3, Yuv::blended({wordOf(64, 256, 0, 1)}, 0, 0x60ffffff).level());
    EXPECT_EQ(3, Yuv::blended({wordOf(64, 256, 0, 3)}, 0, 0x20ffffff).level());
}
