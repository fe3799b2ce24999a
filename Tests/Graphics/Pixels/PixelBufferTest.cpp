#include "Vl/Graphics/Pixels/PixelBuffer.h"

#include <gmock/gmock.h>

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
