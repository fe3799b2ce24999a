#include "Vl/HAL/Board/HD24Interface.h"

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Panel/NextGenOledPanel.h"

namespace Valen {

HD24Interface::HD24Interface(CPLinkInterface* link) : link_(link) {}

HD24Interface::~HD24Interface() = default;

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
