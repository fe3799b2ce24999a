#include "Vl/Graphics/Pixels/PixelBuffer.h"

#include <gmock/gmock.h>

#include <climits>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

/// Remembers what is set, as the other kinds of buffer would be asked.
class RecordingBuffer : public PixelBuffer {
public:
    void setPixel(int index, rgba colour) override { set.emplace_back(index, colour.value); }
    void fillRect(int, int, int, int, rgba) override {}
    rgba getPixel(int) const override { return 0; }
    void resize(int, int) override {}

    std::vector<std::pair<int, uint32_t>> set;
};

}  // namespace

TEST(PixelBufferTest, BlendMaskSetsEveryPixelWithCoverageAndSkipsTheOthers) {
    const uint8_t levels[] = {255, 0, 99,  //
                              0,   1, 99};
    RecordingBuffer buffer;
    buffer.blendMask(10, 5, {.data = levels, .pitch = 3, .readable = 3, .width = 2, .height = 2}, 0x80010203);
    EXPECT_THAT(buffer.set, ElementsAre(Pair(10, 0x80010203U), Pair(18, 0x01010203U)));
}

TEST(PixelBufferTest, BlendMaskScalesTheColoursOwnCoverage) {
    const uint8_t levels[] = {255, 127, 128};
    RecordingBuffer buffer;
    buffer.blendMask(0, 0, {.data = levels, .pitch = 3, .readable = 3, .width = 3, .height = 1}, 0x40ffffff);
    EXPECT_THAT(buffer.set, ElementsAre(Pair(0, 0x40ffffffU), Pair(1, 0x20ffffffU), Pair(2, 0x20ffffffU)));
}

TEST(PixelBufferTest, AnEmptyMaskSetsNothing) {
    RecordingBuffer buffer;
    buffer.blendMask(0, 0, {}, 0x80ffffff);
    EXPECT_THAT(buffer.set, IsEmpty());
}

TEST(PixelBufferTest, ARowOfColoursSetsOnePixelAfterTheOther) {
    const rgba colours[] = {0x80010203, 0x00000000, 0x40ffffff};
    RecordingBuffer buffer;
    buffer.setPixels(-1, colours);
    EXPECT_THAT(buffer.set, ElementsAre(Pair(-1, 0x80010203U), Pair(0, 0U), Pair(1, 0x40ffffffU)));
}

TEST(PixelBufferTest, ARowThatLeavesTheIndicesDoesNotComeBackFromTheOtherSide) {
    const rgba colours[] = {1, 2, 3};
    RecordingBuffer buffer;
    buffer.setPixels(INT_MAX - 1, colours);
    EXPECT_THAT(buffer.set, ElementsAre(Pair(INT_MAX - 1, 1U), Pair(INT_MAX, 2U), Pair(INT_MAX, 3U)));
}

TEST(PixelBufferTest, ARowOfNoColoursSetsNothing) {
    RecordingBuffer buffer;
    buffer.setPixels(0, {});
    EXPECT_THAT(buffer.set, IsEmpty());
}
