#include "Vl/Graphics/OLED.h"

#include <gmock/gmock.h>

#include <cstring>
#include <filesystem>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PlainText.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace {

class OLEDTest : public testing::Test {
protected:
    VLGraphics::OLED oled{160, 48};
};

}  // namespace

TEST_F(OLEDTest, StartsClearWithNoFont) {
    expectSame(PlainFrame(160, 48), oled.getTypedBuffer());
    EXPECT_EQ(0, oled.getBmp().getX());
    EXPECT_EQ(0, oled.getBmp().getY());
    EXPECT_EQ(VerticalAlignment::Top, oled.getBmp().getPlacement().vertical);
    EXPECT_EQ(HorizontalAlignment::Start, oled.getBmp().getPlacement().horizontal);
    EXPECT_FALSE(oled.getFont().isLoaded());
    EXPECT_EQ(0, oled.getFont().TextDimensions("\x01\x02\x03\x04\x05\x06\x07\x08\x09", true, 0).width);
}

TEST_F(OLEDTest, TheBufferOf160By48PixelsIs15360Bytes) {
    EXPECT_EQ(15360, oled.getBufferSize());
}

TEST_F(OLEDTest, TheBufferIsInThePanelsByteOrder) {
    oled.fill(0x80000008);  // red 1 of 31
    uint8_t bytes[2];
    std::memcpy(bytes, oled.getBuffer(), sizeof bytes);
    EXPECT_EQ(0x08, bytes[0]);
    EXPECT_EQ(0x00, bytes[1]);
}

TEST_F(OLEDTest, FillAlwaysCoversTheWholeFrameWhateverThePosition) {
    PlainFrame expected(160, 48);
    expected.fill(0, 0, 160, 48, 0x80123456);
    for (const int position : {-1000, -1, 0, 47, 1000}) {
        oled.fill(0x80ffffff);
        oled.getBmp().setPosition(position, position);
        oled.fill(0x80123456);
        expectSame(expected, oled.getTypedBuffer());
        EXPECT_EQ(0, oled.getBmp().getX());
        EXPECT_EQ(0, oled.getBmp().getY());
    }
}

TEST_F(OLEDTest, ClearColourIsRedOnPurpose) {
    oled.getBmp().setPosition(5, 6);
    oled.clear();
    PlainFrame expected(160, 48);
    expected.fill(0, 0, 160, 48, 0x800000c8);
    expectSame(expected, oled.getTypedBuffer());
    EXPECT_EQ(rgba(0xff0000c8), oled.getTypedBuffer().getPixel(7679));
    EXPECT_EQ(0, oled.getBmp().getX());
}

TEST_F(OLEDTest, RotateTurnsTheFrameUpsideDown) {
    oled.getBmp().setPosition(3, 2);
    oled.getBmp().FillRect(1, 1, 0x80ffffff);
    oled.rotate();
    EXPECT_EQ(0xffff, oled.getBuffer()[(47 - 2) * 160 + (159 - 3)]);
    EXPECT_EQ(0, oled.getBuffer()[2 * 160 + 3]);
}

TEST_F(OLEDTest, InitLoadsFontTtfFromTheDirectory) {
    const support::TemporaryDirectory directory;
    std::filesystem::create_symlink(kTestFont, directory.file("Font.ttf"));
    EXPECT_TRUE(oled.init(directory.file("").c_str()));  // a slash at the end does no harm
    EXPECT_TRUE(oled.getFont().isLoaded());
    EXPECT_EQ(-1, oled.getFont().size());
}

TEST_F(OLEDTest, InitFailsWithoutAFontAndSaysNothing) {
    const support::TemporaryDirectory directory;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(oled.init(directory.file(".").c_str()));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_FALSE(oled.getFont().isLoaded());
}

TEST_F(OLEDTest, InitWithoutADirectoryFails) {
    EXPECT_FALSE(oled.init(nullptr));
    EXPECT_FALSE(oled.getFont().isLoaded());
}

TEST_F(OLEDTest, InitThatFailsLeavesTheFontAsItWas) {
    const support::TemporaryDirectory directory;
    std::filesystem::create_symlink(kTestFont, directory.file("Font.ttf"));
    ASSERT_TRUE(oled.init(directory.file("").c_str()));
    oled.getFont().SetSize(14);
    EXPECT_FALSE(oled.init("/no/such/directory"));
    EXPECT_TRUE(oled.getFont().isLoaded());
    EXPECT_EQ(14, oled.getFont().size());
}

TEST_F(OLEDTest, AFrameWhoseBytesAnIntCannotCountIsEmpty) {
    const VLGraphics::OLED tooLarge(32768, 32768);  // 2^31 bytes
    EXPECT_EQ(0, tooLarge.getBufferSize());
    EXPECT_EQ(nullptr, tooLarge.getBuffer());
}

TEST_F(OLEDTest, AFrameOfNoSizeIsEmpty) {
    VLGraphics::OLED none(0, 0);
    none.fill(0x80ffffff);
    none.rotate();
    EXPECT_EQ(0, none.getBufferSize());
    EXPECT_EQ(nullptr, none.getBuffer());
}
