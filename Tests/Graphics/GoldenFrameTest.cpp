#include <gtest/gtest.h>

#include <filesystem>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/PlainText.h"
#include "Tests/Support/PanelPicture.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/OLED.h"

namespace {

/// Two lines centred seven rows above and below the frame's middle, as the tool shows them.
void drawTwoLines(VLGraphics::OLED& oled, const char* line1, const char* line2) {
    RGB16Bitmap& bitmap = oled.getBmp();
    bitmap.setVerticalAlignment(VerticalAlignment::Centred);
    bitmap.setHorizontalAlignment(HorizontalAlignment::Centred);
    oled.fill(0x80000000);
    oled.getFont().SetSize(14);
    bitmap.setPosition(80, 24 - 7);
    oled.getFont().RenderAligned(line1, bitmap, 0x80ffffff, {}, 0x80000000, 0);
    bitmap.setPosition(80, 24 + 7);
    oled.getFont().RenderAligned(line2, bitmap, 0x80ffffff, {}, 0x80000000, 0);
}

support::Picture pictureOf(const VLGraphics::OLED& oled) {
    support::Picture picture{160, 48, {}};
    for (int i = 0; i < 160 * 48; ++i) {
        const int high = oled.getBuffer()[i] & 0xff;  // the first byte in memory
        const int low = oled.getBuffer()[i] >> 8;
        for (const int channel : {high & 0xf8, (high << 5 | low >> 3) & 0xfc, low << 3 & 0xf8}) {
            picture.rgb.push_back(static_cast<uint8_t>(channel));
        }
    }
    return picture;
}

}  // namespace

TEST(GoldenFrameTest, TwoCentredLinesLookAsTheyAlwaysDid) {
    const support::TemporaryDirectory directory;
    std::filesystem::create_symlink(kTestFont, directory.file("Font.ttf"));
    VLGraphics::OLED oled(160, 48);
    ASSERT_TRUE(oled.init(directory.file("").c_str()));
    drawTwoLines(oled, "Hello,", "panel");
    support::expectLooksLike(TEST_GOLDEN "/HelloPanel.png", pictureOf(oled));
}

TEST(GoldenFrameTest, TwoCentredLinesMatchThePlainRenderer) {
    const support::TemporaryDirectory directory;
    std::filesystem::create_symlink(kTestFont, directory.file("Font.ttf"));
    VLGraphics::OLED oled(160, 48);
    ASSERT_TRUE(oled.init(directory.file("").c_str()));
    drawTwoLines(oled, "Hello,", "panel");

    PlainText text;
    text.setPoints(14);
    PlainFrame expected(160, 48);
    expected.fill(0, 0, 160, 48, 0x80000000);
    const int half = text.capHeight() / 2;
    text.draw(expected, "Hello,", 80 - text.pixelsWide("Hello,") / 2, 17 - half, 0x80ffffff, 1000, 0);
    text.draw(expected, "panel", 80 - text.pixelsWide("panel") / 2, 31 - half, 0x80ffffff, 1000, 0);
    expectSame(expected, oled.getTypedBuffer());
}
