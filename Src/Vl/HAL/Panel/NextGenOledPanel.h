#pragma once

#include <cstdint>

#include "Vl/Common/Enums/LEDState.h"
#include "Vl/HAL/Panel/HaldenOledPanel.h"

namespace Valen {

class CPInterface;

/// The panel with its controls: buttons, encoder and encoder LED are a block of FPGA registers. Its screen is
/// mounted upside down.
class NextGenOledPanel : public HaldenOledPanel {
public:
    /// Finds the registers in the FPGA core `ioSpiName` and the screen at the core `spiName`; what was done
    /// at the controls before is forgotten and the LED is switched off.
    /// @return whether both were found; what is missing is logged. The controls work without the screen.
    bool init(const char* spiName, const char* ioSpiName, CPInterface& cp);

    /// Whether the registers were found, deliberately whatever became of the screen.
    bool initOk() const override;
    /// One register read. Without registers nothing was ever done.
    bool getButtons(OledPanelButtons& buttons) override;
    /// Pushes the frame upside down and leaves it as it was. @return always true.
    bool updateScreen(VLGraphics::OLED* frame) override;
    /// Waits for 50 ms, then polls.
    bool waitButton(OledPanelButtons& buttons) override;

    /// Chooses what the encoder LED shall show; a number that is no state switches it off. Nothing is shown
    /// before applyLEDs(). @return whether that is a change.
    bool setEncoderLED(Enums::LEDState::LEDState_T state);
    /// Makes the encoder LED show what was chosen.
    void applyLEDs();

private:
    std::uint32_t encoderLed_ = 0;    // as last chosen, in the register's bits
    std::uint32_t lastCounters_ = 0;  // the counter register at the last poll
    volatile std::uint32_t* regs_ = nullptr;
    unsigned int regsSize_ = 0;  // what the look-up gives beside the registers
};

}  // namespace Valen
