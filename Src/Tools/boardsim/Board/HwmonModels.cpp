#include "Tools/boardsim/Board/HwmonModels.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <stdexcept>

#include "Tools/boardsim/Board/AttributeFile.h"
#include "Tools/boardsim/Models/FileAnswer.h"

namespace boardsim {
namespace {

constexpr std::size_t kPage = 4096;

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

std::int32_t millidegreesOf(const Fault& fault) {
    std::int32_t value = 0;
    const char* const last = fault.value.data() + fault.value.size();
    const auto [end, error] = std::from_chars(fault.value.data(), last, value);
    if (error != std::errc{} || end != last) {
        refuse(fault, "value wants millidegrees");
    }
    return value;
}

}  // namespace

std::string HwmonModels::Sensor::name() const {
    return "hwmon" + std::to_string(part.device) + "/temp" + std::to_string(part.sensor);
}

HwmonModels::HwmonModels(const std::vector<HwmonSensor>& sensors, const Tell& tell) {
    std::set<unsigned> devices;
    sensors_.reserve(sensors.size());
    for (const HwmonSensor& part : sensors) {
        Sensor& sensor = sensors_.emplace_back(Sensor{part});
        sensor.file = fileOf(sensor, tell);
        devices.insert(part.device);
    }
    std::vector<ServedEntry> entries;
    entries.reserve(devices.size());
    for (const unsigned device : devices) {
        entries.push_back(
            {"hwmon" + std::to_string(device), plainDirectory({{"device", directoryOf(device)}})});
    }
    root_ = plainDirectory(std::move(entries));
}

std::shared_ptr<const ServedDirectory> HwmonModels::directoryOf(unsigned device) {
    return std::make_shared<const ServedDirectory>(ServedDirectory{[this, device] {
        std::vector<ServedEntry> entries;
        for (const Sensor& sensor : sensors_) {
            if (sensor.part.device == device && !sensor.isAbsent) {
                entries.push_back({"temp" + std::to_string(sensor.part.sensor) + "_input", sensor.file});
            }
        }
        return entries;
    }});
}

std::shared_ptr<const ServedFile> HwmonModels::fileOf(Sensor& sensor, const Tell& tell) {
    const auto open = [&sensor, tell] {
        FileCalls calls;
        // Who reads from the beginning gets the text of that moment until he does so again.
        calls.read = [&sensor, text = std::make_shared<std::string>()](std::uint64_t offset,
                                                                       std::span<std::byte> into) {
            if (sensor.failures && sensor.failures->strikes()) {
                return Transfer{0, std::errc::io_error};
            }
            if (offset == 0) {
                const bool lies = sensor.lies && sensor.lies->strikes();
                *text = lies ? sensor.lie : std::to_string(sensor.part.millidegrees) + "\n";
            }
            return Transfer{readContents(std::as_bytes(std::span(*text)), offset, into).count};
        };
        return traced("hwmon " + sensor.name(), std::move(calls), tell);
    };
    return std::make_shared<const ServedFile>(ServedFile{open, kPage, 0444});
}

void HwmonModels::apply(const Fault& fault) {
    const auto found = std::find_if(sensors_.begin(), sensors_.end(),
                                    [&](const Sensor& sensor) { return sensor.name() == fault.device; });
    if (found == sensors_.end()) {
        refuse(fault, "no sensor '" + fault.device + "'; want hwmonN/tempM");
    }
    if (fault.action == "value") {
        found->part.millidegrees = millidegreesOf(fault);
    } else if (fault.action == "text") {
        found->lies = fault.schedule;
        found->lie = fault.value;
    } else if (fault.action == "fail" && fault.value.empty()) {
        found->failures = fault.schedule;
    } else if (fault.action == "absent" && fault.value.empty()) {
        found->isAbsent = true;
    } else {
        refuse(fault,
               "no action '" + fault.action + "'; there are value=MILLIDEGREES, text=TEXT, fail, absent");
    }
}

}  // namespace boardsim
