#include "Vl/HAL/Board/HD24Interface.h"

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Bus/MDIO.h"
#include "Vl/HAL/Chips/EthernetPhy88E1510.h"
#include "Vl/HAL/Panel/NextGenOledPanel.h"

namespace Valen {
namespace {

constexpr int kAddressWord = 1;
constexpr int kAnyVersion = -1;

constexpr int kPanelLine = 3;  // of the GPIO block "oled_pio"
constexpr int kConfigPhyAddress = 0;
constexpr int kNoSuchSensor = -7;

std::shared_ptr<HAL::GenericEthernetPhy> makePhy(const std::shared_ptr<HAL::MDIO>& bus) {
    auto phy = std::make_shared<HAL::EthernetPhy88E1510>();
    phy->setMDIO(bus);
    return phy;
}

}  // namespace

HD24Interface::HD24Interface(CPLinkInterface* link) : link_(link) {
    findMiscPio();
    enablePanel();
    initMdio("ethernet_mdio");
}

HD24Interface::~HD24Interface() = default;

void HD24Interface::findMiscPio() {
    unsigned int address = 0;
    if (getCoreAddress("misc_pio", address, kAddressWord, kAnyVersion) == 1) {
        miscPio_ = reinterpret_cast<const volatile hd24_misc_pio_ctrl*>(registersAt(address));
    }
}

void HD24Interface::enablePanel() {
    const int base = HAL::GPIO::getBase("oled_pio");
    if (base < 0) {
        return;  // counting from there would drive a line of some other block
    }
    const int line = base + kPanelLine;
    HAL::GPIO gpio;
    gpio.request(line);
    gpio.setdir(line, true, true);
    gpio.free(line);
}

std::shared_ptr<HAL::GenericEthernetPhy> HD24Interface::getPhy(int index) {
    return makePhy(getMdio(index));
}

int HD24Interface::getOledPanelCount() const {
    return 1;
}

std::unique_ptr<OledPanelInterface> HD24Interface::getOledPanel(int /*index*/) {
    return makePanel("oled_spi", "oled_io_spi");
}

int HD24Interface::GetCardTemperature(unsigned int& /*value*/, Enums::Temperature::Type /*sensor*/) {
    return kNoSuchSensor;
}

std::shared_ptr<HAL::GenericEthernetPhy> HD24Interface::getConfigEthPhy(int index) {
    return makePhy(link_ != nullptr ? link_->getEthMDIO(index, kConfigPhyAddress) : nullptr);
}

bool HD24Interface::getFPGATemperature(int& celsius) {
    hd24_misc_pio_ctrl misc;
    if (!readMiscPio(misc)) {
        return false;
    }
    celsius = misc.celsius();
    return true;
}

bool HD24Interface::readMiscPio(hd24_misc_pio_ctrl& value) {
    value.value = miscPio_ != nullptr ? miscPio_->value : 0;
    return miscPio_ != nullptr;
}

std::unique_ptr<OledPanelInterface> HD24Interface::makePanel(const char* screenCore, const char* buttonCore) {
    VL_LOG(Cardcontroller, DEBUG, "this is a target build, oled is present.");
    auto panel = std::make_unique<NextGenOledPanel>();
    panel->init(screenCore, buttonCore, *this);
    return panel;
}

}  // namespace Valen
