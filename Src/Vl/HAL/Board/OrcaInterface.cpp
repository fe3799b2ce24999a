#include "Vl/HAL/Board/OrcaInterface.h"

#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace Valen {

OrcaInterface::OrcaInterface(CPLinkInterface* link) : HD24Interface(link) {
    findTemperatureRegisters();
    openSdiSensor();
    openSensorBuses();
    openQsfpExpanders();
    setUpQsfpExpanders();
    openSyncExpander();
    setUpSyncExpander();
    openEthLedExpander();
    resetIos_ = std::make_unique<OrcaResetIOs>(&ethLedIo_);  // the reset signals share this expander
}

OrcaInterface::~OrcaInterface() = default;

int OrcaInterface::getOledPanelCount() const {
    return 1;
}

std::unique_ptr<OledPanelInterface> OrcaInterface::getOledPanel(int /*index*/) {
    return makePanel("subsys_hps_oled_spi", "subsys_hps_oled_io_spi");
}

}  // namespace Valen
