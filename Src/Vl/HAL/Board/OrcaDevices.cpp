// The newer board's single devices: video chip, configuration PHYs, EEPROM, power supply.
#include <fcntl.h>

#include <array>
#include <cstdio>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Board/Eeprom.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Board/VideoChip.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"
#include "Vl/HAL/Bus/MDIO.h"
#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"

namespace Valen {
namespace {

constexpr int kConfigInterface = 0;

constexpr const char* kBeforeReboot = "/tmp/exec_before_reboot.sh";
constexpr int kSupplyCommand = 0x0F;  // register and value by which the supply cycles the power
constexpr int kSupplyCycle = 0xF7;

}  // namespace

std::shared_ptr<ADVInterface> OrcaInterface::getADV() {
    return openVideoChipOnI2c(ADV_DEVICE_NAME);
}

std::shared_ptr<HAL::GenericEthernetPhy> OrcaInterface::getConfigEthPhy(int index) {
    auto phy = std::make_shared<HAL::EthernetPhyDP83867IS>();
    phy->setMDIO(link() != nullptr ? link()->getEthMDIO(kConfigInterface, index) : nullptr);
    return phy;
}

VersionsRecord OrcaInterface::getVersions() {
    VersionsRecord versions;
    const auto take = [&versions](const auto* field) { versions.take(*field); };
    const auto pass = [](const auto* /*field*/) {};
    auto file = SafeFileDescriptor::open(I2CRegisteredDevice::getPath("eeprom/eeprom").c_str(), O_RDONLY);
    Eeprom::read(file, false, pass, take, take, pass);
    return versions;
}

bool OrcaInterface::requestPowerCycleBoot() {
    const I2CAddress supply = I2CRegisteredDevice::getAddressOf(PSU_DEVICE_NAME);
    const Descriptor script(
        ::open(kBeforeReboot, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));  // NOLINT: variadic
    if (!script.isValid()) {
        return false;
    }
    std::array<char, 64> line;
    std::snprintf(line.data(), line.size(), "i2cset -y %d 0x%x 0x%x 0x%x\n", static_cast<int>(supply.bus),
                  supply.address, kSupplyCommand, kSupplyCycle);
    return writeExact(script.get(), line.data());
}

}  // namespace Valen
