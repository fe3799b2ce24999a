#include "Vl/Graphics/Pixels/YuvRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "Tests/Graphics/PlainYuv.h"

namespace {

constexpr size_t kGuard = 9;

/// Pixels in the middle of others that nothing may touch.
struct Guarded {
    Guarded(std::mt19937& random, size_t count) : words(count + 2 * kGuard) {
        std::generate(words.begin(), words.end(), [&] { return static_cast<uint32_t>(random()); });
    }

    uint32_t* pixels() { return words.data() + kGuard; }

    std::vector<uint32_t> words;
};

/// Draws the colours and expects what the plain loop gives, before and behind them nothing new.
void expectBlendedPlainly(Guarded& row, int64_t index, const std::vector<rgba>& colours) {
    std::vector<uint32_t> expected = row.words;
    for (size_t i = 0; i < colours.size(); ++i) {
        uint32_t& word = expected[kGuard + i];
        word = PlainYuv::set(word, index + static_cast<int64_t>(i), colours[i].value);
    }
    YuvRow::blend(row.pixels(), index, colours);
    ASSERT_EQ(expected, row.words) << colours.size() << " from " << index;
}

uint32_t anyAlpha(std::mt19937& random) {
    return static_cast<uint32_t>(random());
}

uint32_t opaqueOrNothing(std::mt19937& random) {
    return (static_cast<uint32_t>(random()) & 0x80ffffff);
}

uint32_t mostlyOpaque(std::mt19937& random) {
    const auto colour = static_cast<uint32_t>(random());
    return random() % 24 == 0 ? colour : (colour & 0xffffff) | 0x80000000;
}

class YuvRowTest : public testing::Test {
protected:
    template <typename Colour>
    std::vector<rgba> colours(size_t count, const Colour& colour) {
        std::vector<rgba> made;
        for (size_t i = 0; i < count; ++i) {
            made.emplace_back(colour(random));
        }
        return made;
    }

    std::mt19937 random{11};
};

}  // namespace

TEST_F(YuvRowTest, RowsOfEveryLengthBlendAsThePlainLoopAndTouchNothingElse) {
    for (int round = 0; round < 40; ++round) {
        for (size_t count = 0; count <= 40; ++count) {
            for (const int64_t index : {0, 1}) {
                for (const auto& kind : {anyAlpha, opaqueOrNothing, mostlyOpaque}) {
                    Guarded row(random, count);
                    expectBlendedPlainly(row, index, colours(count, kind));
                }
            }
        }
    }
}

TEST_F(YuvRowTest, FreshPixelsTakeSemiTransparentColoursWhole) {
    Guarded row(random, 64);
    for (auto& word : row.words) {
        word &= 0x8fffffff;
    }
    expectBlendedPlainly(row, 0, colours(64, anyAlpha));
}

TEST_F(YuvRowTest, EveryAlphaOverEveryLevelBlendsAsThePlainLoop) {
    for (uint32_t alpha = 0; alpha < 256; ++alpha) {
        for (uint32_t level = 0; level < 8; ++level) {
            Guarded row(random, 16);
            for (auto& word : row.words) {
                word = (word & 0x8fffffff) | level << 28;
            }
            expectBlendedPlainly(row, 0, colours(16, [&](std::mt19937& any) {
                                     return alpha << 24 | (static_cast<uint32_t>(any()) & 0xffffff);
                                 }));
        }
    }
}

TEST_F(YuvRowTest, OneSemiTransparentColourAmongOpaqueOnesIsBlendedWhereverItIs) {
    for (size_t place = 0; place < 16; ++place) {
        Guarded row(random, 16);
        auto row16 = colours(16, mostlyOpaque);
        row16[place] = row16[place].withAlpha(0x40);
        expectBlendedPlainly(row, 0, row16);
    }
}

TEST_F(YuvRowTest, EveryColourIsConvertedAsTheFormulasSayAtEvenAndOddIndices) {
    std::vector<rgba> twice(512);
    for (uint32_t blue = 0; blue < 256; ++blue) {
        for (uint32_t green = 0; green < 256; ++green) {
            const PlainYuv::Reds reds(green, blue);
            std::array<uint32_t, 512> expected;
            std::array<uint32_t, 512> words{};
            for (size_t red = 0; red < 256; ++red) {
                twice[2 * red] = reds.colours[red];
                twice[2 * red + 1] = reds.colours[red];
                expected[2 * red] = reds.even[red];
                expected[2 * red + 1] = reds.odd[red];
            }
            YuvRow::blend(words.data(), 0, twice);
            ASSERT_EQ(expected, words) << "green " << green << " blue " << blue;
        }
    }
}

TEST_F(YuvRowTest, FillingKeepsTheFlagsAndTouchesNothingElse) {
    for (size_t count = 0; count <= 20; ++count) {
        for (const uint32_t word : {0U, ~0U, 0x4eaf0123U}) {
            Guarded row(random, count);
            std::vector<uint32_t> expected = row.words;
            for (size_t i = 0; i < count; ++i) {
                expected[kGuard + i] = (expected[kGuard + i] & 0x80000000) | (word & 0x7fffffff);
            }
            YuvRow::fill(row.pixels(), static_cast<int64_t>(count), {word});
            ASSERT_EQ(expected, row.words) << count;
        }
    }
}
