#include "Vl/HAL/Board/OrcaInterface.h"

#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace Valen {

OrcaInterface::OrcaInterface(CPLinkInterface* link) : HD24Interface(link) {}

OrcaInterface::~OrcaInterface() = default;

int OrcaInterface::getOledPanelCount() const {
    return 1;
}

std::unique_ptr<OledPanelInterface> OrcaInterface::getOledPanel(int /*index*/) {
    return makePanel("subsys_hps_oled_spi", "subsys_hps_oled_io_spi");
}

}  // namespace Valen
