#pragma once

#include <string>
#include <vector>

#include "Tests/HAL/Bus/W1World.h"
#include "Tests/HAL/Checksum.h"
#include "Vl/HAL/Chips/W1EEPROM.h"

/// A board with an identity EEPROM, whose file a test writes. Everything is logged, and read while it comes:
/// the log holds few lines.
class W1EEPROMWorld : public W1World {
protected:
    static constexpr Valen::HAL::W1Util::W1Handle kHandle{0x1a2b3c'2d00};
    static inline const std::string kName = "2d-0000001a2b3c";
    static inline const std::string kFile = "/sys/bus/w1/devices/" + kName + "/eeprom";

    // The serial 4006381333931, made and serviced at the times 1 and 2.
    static constexpr Valen::HaldenSerial kSerial{4006381333931, 1, 2};
    static inline const std::string kSerialBytes{"\xAB\xAD\xEF\xCE\xA4\x03\0\0\1\0\0\0\2\0\0\0", 16};

    W1EEPROMWorld() {
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
        faults.onSleep = [this] { collect(); };
    }

    std::vector<support::LogLine> logged() {
        collect();
        return lines;
    }

    support::FileFaults faults{"/sys/bus/w1/"};
    std::vector<support::LogLine> lines;
    Valen::HAL::W1EEPROM eeprom{kHandle};

private:
    void collect() {
        for (const auto& line : syslog.lines()) {
            lines.push_back(line);
        }
    }
};
