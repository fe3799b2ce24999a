#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Tests/HAL/Board/BoardCalls.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"

/// A whole board of either variant, on which everything answers.
class VariantWorld : public BoardWorld {
protected:
    VariantWorld();
    ~VariantWorld() override;

    static std::string screenOf(const std::string& device);

    /// Writes the FPGA's layout anew, without the core of this name.
    static void removeCore(const std::string& name);
    /// Registers a bus or a device of I2C anew, or takes it away.
    static void link(const std::string& name, const std::string& target);
    static void unlink(const std::string& name);
    /// Takes away the FPGA and all cores, GPIO, and all that is registered.
    static void removeEverything();

    /// How many descriptors this process has.
    static int descriptors();

    // Where the cores are.
    static constexpr std::uint32_t kOlderPanel = 0x1000;
    static constexpr std::uint32_t kNewerPanel = 0x2000;
    static constexpr std::uint32_t kMiscPio = 0x3000;
    static constexpr std::uint32_t kMdio = 0x3040;
    static constexpr std::uint32_t kFpgaTemperature = 0x3080;
    static constexpr std::uint32_t kTile0Temperature = 0x30C0;
    static constexpr std::uint32_t kTile1Temperature = 0x3100;

    static constexpr const char* kOledIsPresent = "Cardcontroller: this is a target build, oled is present.";

    support::DeviceRegisterWindow registers;
    BoardCalls kernel;
};
