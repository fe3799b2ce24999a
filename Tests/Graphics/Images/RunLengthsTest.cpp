#include "Vl/Graphics/Images/RunLengths.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

/// Most significant byte first, read back as numbers.
std::vector<uint32_t> asNumbers(std::span<const uint32_t> words) {
    std::vector<uint32_t> numbers;
    for (const uint32_t& word : words) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(&word);
        numbers.push_back(uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 |
                          bytes[3]);
    }
    return numbers;
}

class RunLengthsTest : public testing::Test {
protected:
    std::vector<uint32_t> words;
    RunLengths runs{[this](std::span<const uint32_t> more) {
        const auto numbers = asNumbers(more);
        words.insert(words.end(), numbers.begin(), numbers.end());
        return true;
    }};
};

}  // namespace

TEST_F(RunLengthsTest, NoPixelsAreTheEndWordAlone) {
    EXPECT_TRUE(runs.add({}));
    EXPECT_TRUE(runs.finish());
    EXPECT_EQ(words, std::vector<uint32_t>{0});
}

TEST_F(RunLengthsTest, ARunGoesOnFromCallToCall) {
    const std::vector<uint32_t> pixels(70, 16);
    EXPECT_TRUE(runs.add(pixels));
    EXPECT_TRUE(runs.add({}));
    EXPECT_TRUE(runs.add(std::span(pixels).first(1)));
    EXPECT_TRUE(runs.finish());
    EXPECT_EQ(words, (std::vector<uint32_t>{71U << 18 | 1, 0}));
}

TEST_F(RunLengthsTest, PixelsOfCodeZeroCountLikeOthers) {
    EXPECT_TRUE(runs.add(std::vector<uint32_t>{0, 1, 2, 16, 0}));
    EXPECT_TRUE(runs.finish());
    EXPECT_EQ(words, (std::vector<uint32_t>{3U << 18, 1U << 18 | 1, 1U << 18, 0}));
}

TEST_F(RunLengthsTest, HowThePixelsAreCutPlaysNoPart) {
    std::mt19937 random(3);
    std::vector<uint32_t> pixels(3000);
    for (auto& pixel : pixels) {
        pixel = (random() % 4) * 8;
    }
    EXPECT_TRUE(runs.add(pixels));
    EXPECT_TRUE(runs.finish());

    std::vector<uint32_t> cut;
    RunLengths again([&cut](std::span<const uint32_t> more) {
        const auto numbers = asNumbers(more);
        cut.insert(cut.end(), numbers.begin(), numbers.end());
        return true;
    });
    for (size_t at = 0; at < pixels.size();) {
        const size_t count = std::min<size_t>(random() % 200, pixels.size() - at);
        EXPECT_TRUE(again.add(std::span(pixels).subspan(at, count)));
        at += count;
    }
    EXPECT_TRUE(again.finish());
    EXPECT_EQ(words, cut);
}

TEST_F(RunLengthsTest, AVeryLongRunAndNoiseAfterItFillManyChunks) {
    const std::vector<uint32_t> area(1 << 20, 16);
    std::vector<uint32_t> noise(64 * 3);
    for (size_t i = 0; i < noise.size(); ++i) {
        noise[i] = i % 2 == 0 ? 32 : 48;
    }
    for (int part = 0; part < 65; ++part) {  // 4161 words and a rest: more than one chunk for one run
        EXPECT_TRUE(runs.add(area));
    }
    EXPECT_TRUE(runs.add(noise));
    EXPECT_TRUE(runs.finish());

    constexpr size_t full = (size_t{65} << 20) / 16383;
    constexpr uint32_t rest = (uint32_t{65} << 20) % 16383;
    ASSERT_EQ(full + 1 + noise.size() + 1, words.size());
    for (size_t i = 0; i < full; ++i) {
        ASSERT_EQ(16383U << 18 | 1, words[i]) << i;
    }
    EXPECT_EQ(rest << 18 | 1, words[full]);
    for (size_t i = 0; i < noise.size(); ++i) {
        ASSERT_EQ(1U << 18 | (i % 2 == 0 ? 2U : 3U), words[full + 1 + i]) << i;
    }
    EXPECT_EQ(0U, words.back());
}

TEST(RunLengthsFaultTest, NothingIsHandedOnAfterWordsWereLost) {
    int calls = 0;
    RunLengths runs([&calls](std::span<const uint32_t>) {
        ++calls;
        return false;
    });
    std::vector<uint32_t> noise(20000);
    for (size_t i = 0; i < noise.size(); ++i) {
        noise[i] = i % 2 == 0 ? 16 : 32;
    }
    EXPECT_FALSE(runs.add(noise));
    EXPECT_FALSE(runs.add({}));
    EXPECT_FALSE(runs.add(std::span(noise).first(1)));
    EXPECT_FALSE(runs.finish());
    EXPECT_EQ(1, calls);
}
