#include "Tools/panelprobe/WaitButton.h"

#include <cstdio>

#include "Tools/panelprobe/Colours.h"
#include "Tools/panelprobe/UI.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"

namespace {

using Valen::OledPanelButtons;

struct Key {
    bool (*isOperated)(const OledPanelButtons&);
    const char* name;
};

constexpr Key kKeys[] = {
    {[](const OledPanelButtons& reading) { return reading.left() != 0; }, "OLED left button"},
    {[](const OledPanelButtons& reading) { return reading.right() != 0; }, "OLED right button"},
    {[](const OledPanelButtons& reading) { return reading.redPush() != 0; }, "Red push button"},
    {[](const OledPanelButtons& reading) { return reading.encoderSteps() < 0; },
     "Red button turned left (counterclockwise)"},
    {[](const OledPanelButtons& reading) { return reading.encoderSteps() > 0; },
     "Red button turned right (clockwise)"},
};

const char* operatedKey(const OledPanelButtons& reading) {
    for (const Key& key : kKeys) {
        if (key.isOperated(reading)) {
            return key.name;
        }
    }
    return nullptr;
}

}  // namespace

void waitForAnyKey(UI& ui) {
    ui.print("Press any", "button", kBlack);
    OledPanelButtons reading;
    const char* key = nullptr;
    while (key == nullptr) {
        ui.panel->getButtons(reading);
        key = operatedKey(reading);
    }
    std::puts(key);
}
