#pragma once

#include "Vl/HAL/Board/HD24Interface.h"

namespace Valen {

/// The newer board: one OLED panel on the cores "subsys_hps_oled_spi" and "subsys_hps_oled_io_spi".
class OrcaInterface : public HD24Interface {
public:
    /// @param link as for HD24Interface.
    explicit OrcaInterface(CPLinkInterface* link);
    ~OrcaInterface() override;

    int getOledPanelCount() const override;
    /// As HD24Interface's, on this board's cores.
    std::unique_ptr<OledPanelInterface> getOledPanel(int index) override;
};

}  // namespace Valen
