#pragma once

#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Board/MiscPio.h"

namespace Valen {

class CPLinkInterface;

/// The older board: one OLED panel on the cores "oled_spi" and "oled_io_spi", a miscellaneous register in the
/// FPGA, and PHYs 88E1510 on the management bus "ethernet_mdio".
///
/// As CPInterface: missing hardware is no error at construction. Temperatures are whole degrees Celsius;
/// where one cannot be read, the result is false and `celsius` stays as it was.
class HD24Interface : public CPInterface {
public:
    /// Finds the FPGA's cores and takes the panel out of reset.
    /// @param link the board's link to its network; not owned, must outlive the board, may be null.
    explicit HD24Interface(CPLinkInterface* link);
    ~HD24Interface() override;

    /// @return a new accessor of the PHY with this address, which fails where there is no bus or no such PHY.
    std::shared_ptr<HAL::GenericEthernetPhy> getPhy(int index) override;
    int getOledPanelCount() const override;
    /// Builds the panel anew; the index is ignored. Never empty, but initOk() may be false.
    std::unique_ptr<OledPanelInterface> getOledPanel(int index) override;
    /// These boards have no such sensors. @return always -7, `value` stays as it was.
    int GetCardTemperature(unsigned int& value, Enums::Temperature::Type sensor) override;

    /// The PHY at address 0 behind the network interface eth`index`. @return a new accessor, never empty; all
    /// of it fails without a link.
    std::shared_ptr<HAL::GenericEthernetPhy> getConfigEthPhy(int index);

    bool getFPGATemperature(int& celsius);
    /// Reads the miscellaneous register. @return false, and a value of 0, when the FPGA does not have it.
    bool readMiscPio(hd24_misc_pio_ctrl& value);

protected:
    /// Builds a panel whose screen hangs on one SPI core and whose buttons are read through another.
    std::unique_ptr<OledPanelInterface> makePanel(const char* screenCore, const char* buttonCore);
    CPLinkInterface* link() const { return link_; }

private:
    void findMiscPio();
    static void enablePanel();

    const volatile hd24_misc_pio_ctrl* miscPio_ = nullptr;
    CPLinkInterface* link_;
};

}  // namespace Valen
