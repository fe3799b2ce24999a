#pragma once

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace Valen {

/// The screen of a panel with 160 × 48 pixels, driven through the "screen" file of its kernel driver: a long
/// write at offset 0 is a frame, a state character and a line feed switch the state, and a read tells whether
/// the screen is lit. Who derives from it adds the controls.
class HaldenOledPanel : public OledPanelInterface {
public:
    /// Opens the screen of the SPI device that hangs off the FPGA core `spiName` with this chip select. A
    /// screen that was open before is closed, unless the device is not found. @return whether one is open
    /// now.
    bool open(const char* spiName, int chipSelect);

    /// Stops at the first write that fails. @return always true.
    bool updateScreen(VLGraphics::OLED* frame) override;
    bool setState(OledState state) override;
    /// @return true also when the panel does not say: it is taken to be lit.
    bool isIlluminated() override;
    int getXres() override;
    int getYres() override;

private:
    Descriptor screen_;
};

}  // namespace Valen
