#include "Vl/Graphics/Pixels/Rgb565.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>
#include <vector>

#include "Tests/Graphics/PlainFrame.h"

namespace {

/// Eight pixels in the middle of others that nothing may touch.
struct Guarded {
    static constexpr size_t kBefore = 5;
    static constexpr size_t kAll = 24;

    std::array<uint16_t, kAll> pixels;
    std::array<uint8_t, kAll> coverage;

    uint16_t* firstPixel() { return pixels.data() + kBefore; }
    uint8_t* firstCoverage() { return coverage.data() + kBefore; }
    bool operator==(const Guarded&) const = default;
};

Guarded randomPixels(std::mt19937& random, int largestCoverage) {
    Guarded pixels;
    for (auto& pixel : pixels.pixels) {
        pixel = static_cast<uint16_t>(random());
    }
    for (auto& coverage : pixels.coverage) {
        coverage = static_cast<uint8_t>(random() % static_cast<unsigned>(largestCoverage + 1));
    }
    return pixels;
}

Guarded plainlyBlended(const Guarded& before, const uint8_t* levels, int used, uint32_t colour) {
    PlainFrame frame(static_cast<int>(Guarded::kAll), 1);
    std::copy(before.pixels.begin(), before.pixels.end(), frame.colours.begin());
    std::copy(before.coverage.begin(), before.coverage.end(), frame.coverage.begin());
    frame.blend(static_cast<int>(Guarded::kBefore), 0, levels, used, used, 1, colour);
    Guarded after = before;
    std::copy(frame.colours.begin(), frame.colours.end(), after.pixels.begin());
    std::copy(frame.coverage.begin(), frame.coverage.end(), after.coverage.begin());
    return after;
}

std::array<uint8_t, 8> randomLevels(std::mt19937& random) {
    std::array<uint8_t, 8> levels;
    for (auto& level : levels) {
        level = random() % 3 == 0 ? 0 : static_cast<uint8_t>(random());
    }
    return levels;
}

}  // namespace

TEST(Rgb565Test, ThePanelTakesTheByteWithRedFirst) {
    const uint16_t pixel = Rgb565::fromColour(0x800000ff);
    uint8_t bytes[2];
    std::memcpy(bytes, &pixel, sizeof bytes);
    EXPECT_EQ(0xf8, bytes[0]);
    EXPECT_EQ(0x00, bytes[1]);
}

TEST(Rgb565Test, KeepsTheTopBitsOfEachChannel) {
    EXPECT_EQ(0xe007, Rgb565::fromColour(0x8000ff00));  // green 0x07e0, bytes swapped
    EXPECT_EQ(0x0000, Rgb565::fromColour(0x80070307));
    EXPECT_EQ(0x2108, Rgb565::fromColour(0x80080408));
}

TEST(Rgb565Test, EveryAlphaOverEveryCoverageBlendsAsThePlainLoop) {
    std::mt19937 random(1);
    for (unsigned alpha = 0; alpha <= 255; ++alpha) {
        for (int stored = 0; stored <= 255; ++stored) {
            Guarded pixels = randomPixels(random, 255);
            pixels.coverage[Guarded::kBefore] = static_cast<uint8_t>(stored);
            const uint32_t colour = alpha << 24 | (random() & 0xffffff);
            PlainFrame expected(1, 1);
            expected.colours[0] = *pixels.firstPixel();
            expected.coverage[0] = *pixels.firstCoverage();
            expected.setPixel(0, colour);
            Rgb565::blend(*pixels.firstPixel(), *pixels.firstCoverage(), colour);
            ASSERT_EQ(expected.colours[0], *pixels.firstPixel()) << alpha << " over " << stored;
            ASSERT_EQ(expected.coverage[0], *pixels.firstCoverage()) << alpha << " over " << stored;
        }
    }
}

TEST(Rgb565Test, RowsBlendAsThePlainLoopForAllAlphasAndLevels) {
    std::mt19937 random(2);
    for (unsigned alpha = 0; alpha <= 128; ++alpha) {
        for (unsigned level = 0; level <= 255; ++level) {
            const Guarded before = randomPixels(random, 128);
            auto levels = randomLevels(random);
            levels[level % 8] = static_cast<uint8_t>(level);
            const uint32_t colour = alpha << 24 | (random() & 0xffffff);
            Guarded after = before;
            Rgb565::Brush(colour).blendRow(after.firstPixel(), after.firstCoverage(), levels.data(), 8, 8);
            ASSERT_EQ(plainlyBlended(before, levels.data(), 8, colour), after) << alpha << ' ' << level;
        }
    }
}

TEST(Rgb565Test, OnlyTheRowsOwnPixelsChange) {
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const Guarded before = randomPixels(random, 128);
        const auto levels = randomLevels(random);
        const int used = 1 + i % 8;
        Guarded after = before;
        const int reachable = i % 2 == 0 ? 8 : used;
        Rgb565::Brush(0x80123456)
            .blendRow(after.firstPixel(), after.firstCoverage(), levels.data(), used, reachable);
        ASSERT_EQ(plainlyBlended(before, levels.data(), used, 0x80123456), after) << used;
    }
}

TEST(Rgb565Test, RowsOverCoverageAboveOpaqueStillBlendAsThePlainLoop) {
    std::mt19937 random(4);
    for (int i = 0; i < 2000; ++i) {
        const Guarded before = randomPixels(random, 255);
        const auto levels = randomLevels(random);
        const auto colour = static_cast<uint32_t>(random() % 129 << 24 | (random() & 0xffffff));
        Guarded after = before;
        Rgb565::Brush(colour).blendRow(after.firstPixel(), after.firstCoverage(), levels.data(), 8, 8);
        ASSERT_EQ(plainlyBlended(before, levels.data(), 8, colour), after);
    }
}

TEST(Rgb565Test, RowsOfColoursBlendAsThePlainLoopAndTouchNothingElse) {
    std::mt19937 random(5);
    for (unsigned alpha = 0; alpha <= 255; ++alpha) {
        for (int stored = 0; stored <= 255; ++stored) {
            Guarded before = randomPixels(random, stored % 2 == 0 ? 128 : 255);
            const size_t count = random() % 17;
            before.firstCoverage()[random() % 16] = static_cast<uint8_t>(stored);
            std::vector<rgba> colours(count);
            for (auto& colour : colours) {
                colour = static_cast<uint32_t>(random() % 129 << 24 | (random() & 0xffffff));
            }
            if (count > 0) {
                auto& colour = colours[random() % count];
                colour = colour.withAlpha(static_cast<uint8_t>(alpha));
            }
            Guarded expected = before;
            for (size_t i = 0; i < count; ++i) {
                PlainFrame one(1, 1);
                one.colours[0] = before.firstPixel()[i];
                one.coverage[0] = before.firstCoverage()[i];
                one.setPixel(0, colours[i].value);
                expected.firstPixel()[i] = one.colours[0];
                expected.firstCoverage()[i] = one.coverage[0];
            }
            Guarded after = before;
            Rgb565::blendRow(after.firstPixel(), after.firstCoverage(), colours);
            ASSERT_EQ(expected, after) << alpha << " over " << stored;
        }
    }
}

TEST(Rgb565Test, LevelZeroLeavesAHalfCoveredPixelAlone) {
    Guarded before{};
    before.pixels.fill(0x1234);
    before.coverage.fill(64);
    const std::array<uint8_t, 8> levels = {255, 0, 0, 0, 0, 0, 0, 0};
    Guarded after = before;
    Rgb565::Brush(0x80ffffff).blendRow(after.firstPixel(), after.firstCoverage(), levels.data(), 8, 8);
    EXPECT_EQ(0xffff, after.firstPixel()[0]);
    EXPECT_EQ(128, after.firstCoverage()[0]);
    EXPECT_EQ(0x1234, after.firstPixel()[1]);
    EXPECT_EQ(64, after.firstCoverage()[1]);
}
