#include "Vl/Graphics/Pixels/PixelStorage.h"

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

#include "Vl/Graphics/Pixels/RGBPixelBuffer.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

/// The least that a buffer is: it stores words and draws nothing.
template <typename Word>
class Words final : public PixelStorage<Word> {
public:
    using PixelStorage<Word>::countOf;

    void setPixel(int /*index*/, rgba /*colour*/) override {}
    void fillRect(int /*start*/, int /*gap*/, int /*width*/, int /*height*/, rgba /*colour*/) override {}
    rgba getPixel(int /*index*/) const override { return 0; }
    void resize(int width, int height) override {
        const int wanted = countOf(width, height);
        this->adopt(Words::template zeroes<Word>(wanted), wanted);
    }
};

}  // namespace

TEST(PixelStorageTest, IsEmptyUntilItIsGivenASize) {
    const Words<uint32_t> words;
    EXPECT_EQ(0, words.count());
    EXPECT_EQ(nullptr, words.pixels());
    EXPECT_FALSE(words.contains(0));
}

TEST(PixelStorageTest, HoldsAClearWordForEveryPixel) {
    Words<uint32_t> words;
    words.resize(5, 3);
    ASSERT_EQ(15, words.count());
    for (int i = 0; i < 15; ++i) {
        EXPECT_EQ(0U, words.pixels()[i]);
        words.pixels()[i] = ~0U;
    }
    words.resize(5, 3);
    EXPECT_EQ(0U, words.pixels()[14]);
}

TEST(PixelStorageTest, ContainsTheIndicesOfItsPixels) {
    Words<uint16_t> words;
    words.resize(5, 3);
    EXPECT_TRUE(words.contains(0));
    EXPECT_TRUE(words.contains(14));
    for (const int64_t outside : {int64_t{-1}, int64_t{15}, int64_t{1} << 32, INT64_MIN, INT64_MAX}) {
        EXPECT_FALSE(words.contains(outside)) << outside;
    }
}

TEST(PixelStorageTest, ASizeThatMakesNoSenseEmptiesIt) {
    Words<uint16_t> words;
    for (const auto& [width, height] : {std::pair{0, 1}, {1, 0}, {-1, 1}, {-2, -2}, {INT_MIN, INT_MIN}}) {
        words.resize(2, 2);
        words.resize(width, height);
        EXPECT_EQ(0, words.count());
        EXPECT_EQ(nullptr, words.pixels());
    }
}

TEST(PixelStorageTest, TheSizeInBytesIsAlwaysAnInt) {
    EXPECT_EQ(1073741823, Words<uint16_t>::countOf(1073741823, 1));
    EXPECT_EQ(0, Words<uint16_t>::countOf(1073741824, 1));
    EXPECT_EQ(536870911, Words<uint32_t>::countOf(1, 536870911));
    EXPECT_EQ(0, Words<uint32_t>::countOf(1, 536870912));
    EXPECT_EQ(0, Words<uint16_t>::countOf(INT_MAX, INT_MAX));
}

TEST(PixelStorageTest, ABufferIsNeitherCopiedNorAssigned) {
    EXPECT_FALSE(std::is_copy_constructible_v<Words<uint16_t>>);
    EXPECT_FALSE(std::is_copy_assignable_v<Words<uint16_t>>);
    EXPECT_FALSE(std::is_copy_constructible_v<RGBPixelBuffer>);
    EXPECT_FALSE(std::is_copy_constructible_v<YUVPixelBuffer>);
}
