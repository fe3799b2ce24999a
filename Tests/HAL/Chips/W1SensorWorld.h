#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/HAL/Bus/W1World.h"
#include "Vl/HAL/Chips/W1Temp.h"
#include "Vl/HAL/Chips/W1TempThread.h"

/// A board with one 1-Wire bus, whose temperature sensors a test reads by itself. The poller ends with the
/// test.
class W1SensorWorld : public W1World {
protected:
    static constexpr int kUnknown = 0x7FFFFFFF;
    static inline const std::string kName = "22-0000001a2b3c";
    static constexpr std::uint64_t kId = 0x1a2b3c'2200;

    W1SensorWorld() {
        addBus(1);
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
        faults.onSleep = [this] { collect(); };
    }
    ~W1SensorWorld() override { Valen::HAL::W1TempThread::instance().quitAndJoin(); }

    /// A sensor that the poller does not touch any more, as its constructor leaves it.
    std::unique_ptr<Valen::HAL::W1Temp> makeSensor(unsigned int userData, int select = 0) {
        auto sensor = std::make_unique<Valen::HAL::W1Temp>(userData, 1, select);
        Valen::HAL::W1TempThread::RemoveSensor(sensor.get());
        collect();
        lines_.clear();
        faults.sleeps.clear();
        sensor->Find();
        return sensor;
    }
    static void setTemperature(const std::string& name, std::string_view bytes) {
        support::PrivateWorld::write(busDirectory(1) / name / "temp", bytes);
    }

    /// What was logged since the last time.
    std::vector<support::LogLine> logged() {
        collect();
        return std::exchange(lines_, {});
    }

    support::FileFaults faults{"/sys/bus/w1/"};

private:
    void collect() {
        for (auto& line : w1Lines()) {
            lines_.push_back(std::move(line));
        }
    }

    std::vector<support::LogLine> lines_;  ///< read while they come, for the log holds few
};
