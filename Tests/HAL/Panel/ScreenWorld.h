#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "Tests/HAL/BoardWorld.h"
#include "Vl/Graphics/OLED.h"
#include "Vl/HAL/Panel/HaldenOledPanel.h"

/// A world with the screen of a panel that has no controls, and a frame for it.
class ScreenWorld : public BoardWorld {
protected:
    /// A panel without controls.
    class ScreenOnly : public Valen::HaldenOledPanel {
    public:
        bool initOk() const override { return true; }
        bool getButtons(Valen::OledPanelButtons& /*buttons*/) override { return false; }
        bool waitButton(Valen::OledPanelButtons& /*buttons*/) override { return false; }
    };

    static constexpr std::size_t kFrameSize = 15360;

    ScreenWorld() {
        support::PrivateWorld::write(kScreen, "");
        frame.fill(0x80654321);
        frame.getBmp().FillRect(20, 10, 0x80ffffff);
    }

    /// Makes "screen" another file, for example one that is always full.
    void screenIs(const std::string& path) const {
        std::filesystem::remove(kScreen);
        std::filesystem::create_symlink(path, kScreen);
    }

    std::string_view frameBytes() const {
        return {reinterpret_cast<const char*>(frame.getBuffer()), kFrameSize};
    }

    const std::string kScreen = "/sys/bus/avalon/devices/oled_spi/spi_master/spi1/spi1.0/screen";
    VLGraphics::OLED frame{160, 48};
    ScreenOnly panel;
};
