#pragma once

#include <string>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"
#include "Vl/HAL/Panel/NextGenOledPanel.h"

/// A board whose FPGA has the panel's registers and, unless removed, its screen.
class PanelWorld : public BoardWorld {
protected:
    static constexpr std::size_t kLed = 0x1040;
    static constexpr std::size_t kCounters = 0x1044;

    PanelWorld() {
        writeLayout("fpga", core("oled_io_spi", {7, kLed}));
        support::PrivateWorld::write(kScreen, "");
        syslog.lines();  // what the board missed
    }

    bool init() { return panel.init("oled_spi", "oled_io_spi", board); }

    const std::string kScreen = "/sys/bus/avalon/devices/oled_spi/spi1.0/screen";
    support::DeviceRegisterWindow registers;
    TestBoard board;
    Valen::NextGenOledPanel panel;
};
