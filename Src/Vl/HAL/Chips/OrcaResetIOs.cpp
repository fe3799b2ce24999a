#include "Vl/HAL/Chips/OrcaResetIOs.h"

#include "Vl/HAL/Chips/Sx1509b.h"

namespace Valen {
namespace {

constexpr int kClearPin = 0;
constexpr int kClear = 1 << kClearPin;

// Inputs of port A. A failed read, -1, has them all: meant, it ends a wait and requests nothing.
constexpr int kNoSoftwareReset = 1 << 2;
constexpr int kNoFactoryReset = 1 << 3;
constexpr int kCleared = kNoSoftwareReset | kNoFactoryReset;

}  // namespace

Enums::ResetMode::Type OrcaResetIOs::queryResetMode() {
    const int levels = expander_->getInputA();
    if ((levels & kNoSoftwareReset) != 0) {
        return Enums::ResetMode::None;
    }
    return (levels & kNoFactoryReset) != 0 ? Enums::ResetMode::Software : Enums::ResetMode::FactoryDefaults;
}

bool OrcaResetIOs::querySwReset() {
    return (expander_->getInputA() & kNoSoftwareReset) == 0;
}

bool OrcaResetIOs::resetFlipFlops() {
    if (!expander_->setAOutputs(kClear, 0)) {
        return false;
    }
    while ((expander_->getInputA() & kCleared) != kCleared) {
        // Meant to have neither a pause nor an end.
    }
    return expander_->setValueA(kClearPin, 1, false);
}

}  // namespace Valen
