#include "Vl/Graphics/Images/OverlayContainer.h"

#include <gtest/gtest.h>

#include "Tests/Graphics/OverlayFile.h"
#include "Tests/Graphics/PlainOverlay.h"

namespace {

std::span<const uint8_t> asBytes(const std::string& text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

}  // namespace

TEST(OverlayContainerTest, TheBodyBeginsAtOffset12AndIsPaddedTo128Bytes) {
    for (const int length : {0, 1, 4, 127, 128, 129, 255, 256, 4000}) {
        const OverlayFile file;
        const std::string body(static_cast<size_t>(length), 'b');
        EXPECT_EQ(0, Overlay::beginBody(file));
        EXPECT_EQ(0, Overlay::write(file, asBytes(body)));
        EXPECT_EQ(0, Overlay::finish(file, 0x01020304, length));
        EXPECT_EQ(contained(0x01020304, body), file.bytes()) << length;
    }
}

TEST(OverlayContainerTest, TheHeaderIsMostSignificantByteFirst) {
    const OverlayFile file;
    const std::string body(128 * 0x0304, 'b');
    EXPECT_EQ(0, Overlay::beginBody(file));
    EXPECT_EQ(0, Overlay::write(file, asBytes(body)));
    EXPECT_EQ(0, Overlay::finish(file, 0xa1b2c3d4, static_cast<int64_t>(body.size())));
    EXPECT_EQ("ffffffff a1b2c3d4 00006080\n", hexOf(file.bytes().substr(0, 12)));
}

TEST(OverlayContainerTest, ABodyAtTheEndIsAllThatTheFileHolds) {
    const OverlayFile file;
    EXPECT_EQ(0, Overlay::seek(file, 12 + 200));
    EXPECT_EQ(0, Overlay::write(file, asBytes("xy")));
    EXPECT_EQ(0, Overlay::seek(file, 20));
    EXPECT_EQ(0, Overlay::finishAtEnd(file, 3));
    EXPECT_EQ(contained(3, std::string(200, '\0') + "xy"), file.bytes());
}

TEST(OverlayContainerTest, AFileThatEndsBeforeTheBodyHasAnEmptyOne) {
    const OverlayFile file;
    EXPECT_EQ(0, Overlay::write(file, asBytes("short")));
    EXPECT_EQ(0, Overlay::finishAtEnd(file, 3));
    EXPECT_EQ("ffffffff 00000003 00000000\n", hexOf(file.bytes()));
}

TEST(OverlayContainerTest, TheLongestBodyIsWhatTheHeaderCanTell) {
    constexpr int64_t longest = int64_t{0xffffffe0} * 4;
    const OverlayFile file;
    EXPECT_EQ(-4, Overlay::finish(file, 1, longest + 1));
    EXPECT_EQ("", file.bytes());
    EXPECT_EQ(0, Overlay::finish(file, 1, longest));
    EXPECT_EQ("ffffffff 00000001 ffffffe0\n", hexOf(file.bytes()));
}
