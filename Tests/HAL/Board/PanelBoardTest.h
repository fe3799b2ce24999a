#pragma once

#include <memory>
#include <string>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

/// A board variant with one panel, on the cores of both variants' panels.
template <typename Board>
class PanelBoardTest : public BoardWorld {
protected:
    PanelBoardTest() {
        support::PrivateWorld::write("/dev/gpio", "");
        writeLayout("fpga",
                    core("oled_io_spi", {1, kOlderPanel}) + core("subsys_hps_oled_io_spi", {1, kNewerPanel}));
        support::PrivateWorld::write(screenOf("oled_spi"), "");
        support::PrivateWorld::write(screenOf("subsys_hps_oled_spi"), "");
    }

    static std::string screenOf(const std::string& device) {
        return "/sys/bus/avalon/devices/" + device + "/spi_master/spi1/spi1.0/screen";
    }

    static constexpr std::uint32_t kOlderPanel = 0x1000;
    static constexpr std::uint32_t kNewerPanel = 0x2000;
    static constexpr const char* kOledIsPresent = "Cardcontroller: this is a target build, oled is present.";

    support::DeviceRegisterWindow registers;
};
