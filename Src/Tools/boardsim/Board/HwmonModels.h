#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Board/HwmonDescription.h"
#include "Tools/boardsim/Host/ServedTree.h"

namespace boardsim {

/// "/sys/class/hwmon" of a board: for each sensor a file "hwmonN/device/tempM_input" with millidegrees as
/// text. Not thread-safe. Source: the kernel's Documentation/hwmon/sysfs-interface.rst.
class HwmonModels {
public:
    HwmonModels(const std::vector<HwmonSensor>& sensors, const Tell& tell);
    HwmonModels(const HwmonModels&) = delete;
    HwmonModels& operator=(const HwmonModels&) = delete;

    /// Its functions refer to this object.
    ServedTree tree() const { return {"/sys/class/hwmon", root_}; }

    /// Lets a sensor ("hwmon0/temp1") do something wrong:
    ///
    /// | action      | what happens                                          |
    /// |-------------|-------------------------------------------------------|
    /// | value=MILLI | it is so warm, from the start and for good            |
    /// | text=TEXT   | its file says this                                    |
    /// | fail        | a read fails with an I/O error                        |
    /// | absent      | it has no file, from the start and for good           |
    ///
    /// @throws std::invalid_argument when there is no such sensor or action.
    void apply(const Fault& fault);

private:
    struct Sensor {
        HwmonSensor part;
        bool isAbsent = false;
        std::optional<FaultSchedule> failures{};
        std::optional<FaultSchedule> lies{};
        std::string lie{};
        std::shared_ptr<const ServedFile> file{};

        std::string name() const;
    };

    std::shared_ptr<const ServedDirectory> directoryOf(unsigned device);
    std::shared_ptr<const ServedFile> fileOf(Sensor& sensor, const Tell& tell);

    std::vector<Sensor> sensors_;
    std::shared_ptr<const ServedDirectory> root_;
};

}  // namespace boardsim
