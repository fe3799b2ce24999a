#include "Vl/HAL/Panel/NextGenOledPanel.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <thread>
#include <tuple>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Graphics/OLED.h"
#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"

namespace Valen {
namespace {

/// The panel's registers, as word indices.
enum Register : std::size_t {
    EncoderLed = 0,  // bits 0 and 1: the two colours
    Counters = 1,    // free-running: three buttons of 4 bits each from bit 0, encoder position in bits 16-23
};

/// A button's counter in the register, and where its presses are reported.
struct ButtonField {
    unsigned int counterBit;
    unsigned int reportBit;
};

constexpr ButtonField kButtons[] = {
    {0, 16},  // left
    {4, 19},  // right
    {8, 22},  // red push
};
constexpr std::uint32_t kReportedPresses =
    7;  // of the counters' four bits only three are reported, on purpose
constexpr unsigned int kPositionBit = 16;
constexpr unsigned int kStepsBit = 27;

/// The encoder LED's register by LED state: wired with the two colours the other way round.
constexpr auto kLedColours = std::to_array<std::uint32_t>({0b00, 0b10, 0b01, 0b11});

constexpr std::chrono::milliseconds kWait(50);

std::uint32_t reportOf(std::uint32_t now, std::uint32_t last) {
    std::uint32_t report = 0;
    for (const auto [counterBit, reportBit] : kButtons) {
        report |= (((now >> counterBit) - (last >> counterBit)) & kReportedPresses) << reportBit;
    }
    // What does not fit into the five bits is shifted out, and so are the bits beside the position.
    return report | ((now >> kPositionBit) - (last >> kPositionBit)) << kStepsBit;
}

}  // namespace

bool NextGenOledPanel::init(const char* spiName, const char* ioSpiName, CPInterface& cp) {
    std::tie(regs_, regsSize_) = cp.getCoreRegs(ioSpiName, 0);
    if (regs_ == nullptr) {
        VL_LOG(OLED, ERROR, "failed to get OLED regs %s!", ioSpiName);
        return false;
    }
    if (!open(spiName, 0)) {
        VL_LOG(OLED, ERROR, "failed to open OLED SPI %s!", spiName);
        return false;
    }
    encoderLed_ = 0;
    lastCounters_ = regs_[Counters];
    applyLEDs();
    return true;
}

bool NextGenOledPanel::initOk() const {
    return regs_ != nullptr;
}

bool NextGenOledPanel::getButtons(OledPanelButtons& buttons) {
    buttons.word = 0;
    if (regs_ == nullptr) {
        return false;
    }
    const std::uint32_t now = regs_[Counters];
    buttons.word = reportOf(now, lastCounters_);
    lastCounters_ = now;
    return buttons.any();
}

bool NextGenOledPanel::updateScreen(VLGraphics::OLED* frame) {
    frame->rotate();
    const bool result = HaldenOledPanel::updateScreen(frame);
    frame->rotate();
    return result;
}

bool NextGenOledPanel::waitButton(OledPanelButtons& buttons) {
    std::this_thread::sleep_for(kWait);
    return getButtons(buttons);
}

bool NextGenOledPanel::setEncoderLED(Enums::LEDState::LEDState_T state) {
    const auto index = static_cast<std::size_t>(state);
    const std::uint32_t colours = index < kLedColours.size() ? kLedColours[index] : 0;
    if (colours == encoderLed_) {
        return false;
    }
    encoderLed_ = colours;
    return true;
}

void NextGenOledPanel::applyLEDs() {
    if (regs_ != nullptr) {
        regs_[EncoderLed] = encoderLed_;
    }
}

}  // namespace Valen
