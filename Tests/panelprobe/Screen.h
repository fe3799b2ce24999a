#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/panelprobe/MockPanel.h"
#include "Tools/panelprobe/UI.h"
#include "Vl/Graphics/OLED.h"

/// A UI on a bare machine: a font, no device, and a watched panel in the place of the board's.
class ScreenTest : public testing::Test {
protected:
    ScreenTest() {
        world.write("/opt/pattern/oled/Font.ttf",
                    world.read("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"));
        screen = std::make_unique<UI>();
        auto mock = std::make_unique<testing::StrictMock<MockPanel>>();
        panel = mock.get();
        screen->panel = std::move(mock);
    }

    UI& ui() { return *screen; }

    /// The frame's pixels now.
    std::vector<std::uint16_t> pixels() { return pixelsOf(*ui().oled); }

    static std::vector<std::uint16_t> pixelsOf(const VLGraphics::OLED& oled) {
        return {oled.getBuffer(), oled.getBuffer() + oled.getBufferSize() / 2};
    }

    /// Two centred lines drawn step by step, as the frame should be.
    static std::vector<std::uint16_t> twoLines(const char* line1, const char* line2,
                                               std::uint32_t background);

    support::PrivateWorld world;
    std::unique_ptr<UI> screen;
    testing::StrictMock<MockPanel>* panel = nullptr;
};

inline std::vector<std::uint16_t> ScreenTest::twoLines(const char* line1, const char* line2,
                                                       std::uint32_t background) {
    VLGraphics::OLED expected(160, 48);
    expected.init("/opt/pattern/oled/");
    expected.fill(background);
    expected.getFont().SetSize(14);
    Bitmap& bitmap = expected.getBmp();
    bitmap.setVerticalAlignment(static_cast<VerticalAlignment>(1));
    bitmap.setHorizontalAlignment(static_cast<HorizontalAlignment>(1));
    bitmap.setPosition(80, 17);
    expected.getFont().RenderAligned(line1, bitmap, 0x80ffffff, FontSpace{}, 0x80000000, 0);
    bitmap.setPosition(80, 31);
    expected.getFont().RenderAligned(line2, bitmap, 0x80ffffff, FontSpace{}, 0x80000000, 0);
    return pixelsOf(expected);
}
