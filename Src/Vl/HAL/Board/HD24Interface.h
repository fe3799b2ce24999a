#pragma once

#include "Vl/HAL/Board/CPInterface.h"

namespace Valen {

class CPLinkInterface;

/// The older board: one OLED panel on the cores "oled_spi" and "oled_io_spi".
class HD24Interface : public CPInterface {
public:
    /// @param link the board's link to its network; not owned, must outlive the board, may be null.
    explicit HD24Interface(CPLinkInterface* link);
    ~HD24Interface() override;

    /// Builds the accessor anew, on the bus of getMdio(port).
    std::shared_ptr<HAL::GenericEthernetPhy> getPhy(int port) override;
    int getOledPanelCount() const override;
    /// Builds the panel anew; the index is ignored. Never empty, but initOk() may be false.
    std::unique_ptr<OledPanelInterface> getOledPanel(int index) override;
    /// These boards do not know: always -7.
    int GetCardTemperature(unsigned int& temperature, Enums::Temperature::Type place) override;

protected:
    /// Builds a panel whose screen hangs on one SPI core and whose buttons are read through another.
    std::unique_ptr<OledPanelInterface> makePanel(const char* screenCore, const char* buttonCore);

    CPLinkInterface* link_;
};

}  // namespace Valen
