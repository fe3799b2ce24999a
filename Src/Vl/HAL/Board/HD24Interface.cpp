#include "Vl/HAL/Board/HD24Interface.h"

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Chips/EthernetPhy88E1510.h"
#include "Vl/HAL/Panel/NextGenOledPanel.h"

namespace Valen {

HD24Interface::HD24Interface(CPLinkInterface* link) : link_(link) {}

HD24Interface::~HD24Interface() = default;

std::shared_ptr<HAL::GenericEthernetPhy> HD24Interface::getPhy(int port) {
    auto phy = std::make_shared<HAL::EthernetPhy88E1510>();
    phy->setMDIO(getMdio(port));
    return phy;
}

int HD24Interface::GetCardTemperature(unsigned int& /*temperature*/, Enums::Temperature::Type /*place*/) {
    return -7;
}

int HD24Interface::getOledPanelCount() const {
    return 1;
}

std::unique_ptr<OledPanelInterface> HD24Interface::getOledPanel(int /*index*/) {
    return makePanel("oled_spi", "oled_io_spi");
}

std::unique_ptr<OledPanelInterface> HD24Interface::makePanel(const char* screenCore, const char* buttonCore) {
    VL_LOG(Cardcontroller, DEBUG, "this is a target build, oled is present.");
    auto panel = std::make_unique<NextGenOledPanel>();
    panel->init(screenCore, buttonCore, *this);
    return panel;
}

}  // namespace Valen
