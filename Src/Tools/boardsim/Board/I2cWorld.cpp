#include "Tools/boardsim/Board/I2cWorld.h"

#include <array>

namespace boardsim {
namespace {

const std::string kRegistry = "/tmp/i2c/";

/// What the kernel calls a chip of each kind, in the order of the enumeration.
constexpr std::array kChipNames{"sx1509q", "tmp75", "24c64", "video-encoder", "pmbus"};

void planBus(WorldPlan& plan, const I2cBusName& bus) {
    // Number 89 is the kernel's for I2C buses, by Documentation/admin-guide/devices.txt.
    const std::string directory = "/sys/class/i2c-dev/" + bus.kernelName();
    const std::string label = "Board I2C adapter " + std::to_string(bus.number) + "\n";
    plan.files.push_back({directory + "/name", label});
    plan.files.push_back({directory + "/dev", "89:" + std::to_string(bus.number) + "\n"});
    plan.files.push_back({"/sys/bus/i2c/devices/" + bus.kernelName() + "/name", label});
    if (!bus.name.empty()) {
        plan.links.push_back({kRegistry + bus.name, "/dev/" + bus.kernelName()});
    }
}

void planDevice(WorldPlan& plan, const I2cDevice& device) {
    const std::string name = kChipNames[static_cast<std::size_t>(device.chip)];
    plan.files.push_back({device.directory() + "/name", name + "\n"});
    if (!device.name.empty()) {
        plan.links.push_back({kRegistry + device.name, device.directory()});
    }
}

}  // namespace

void planI2c(WorldPlan& plan, const I2cDescription& i2c) {
    for (const I2cBusName& bus : i2c.buses) {
        planBus(plan, bus);
    }
    for (const I2cDevice& device : i2c.devices) {
        planDevice(plan, device);
    }
}

}  // namespace boardsim
