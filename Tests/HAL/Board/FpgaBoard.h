#pragma once

#include <string>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"
#include "Vl/Common/Log/SeverityLevel.h"

/// A control processor with GPIO and an FPGA whose accesses are recorded. What is logged up to DEBUG is there
/// to be read.
class FpgaBoard : public BoardWorld {
protected:
    static constexpr unsigned int kLength = 0x10000;
    static constexpr unsigned int kSync = 0x2000;

    explicit FpgaBoard(const std::string& cores = core("central_sync", {1, kSync})) : devices(cores) {
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
    }

    struct Devices {
        explicit Devices(const std::string& cores) {
            support::PrivateWorld::write("/dev/gpio", "");
            writeLayout("fpga", cores);
        }
    };

    static constexpr int kServiceLog = 16;
    static support::LogLine service(const std::string& text) { return {kServiceLog, kInfo, text}; }

    Devices devices;
    support::DeviceRegisterWindow registers{kLength};
    TestBoard board;
};
