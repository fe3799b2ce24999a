#include "Tools/panelprobe/Check.h"

#include <cstdint>
#include <cstdio>

#include "Tools/panelprobe/Colours.h"
#include "Tools/panelprobe/UI.h"

namespace {

using Valen::OledPanelButtons;

/// All three buttons and the encoder.
constexpr std::uint32_t kAnyControl = 0xF9FF0000;

struct Step {
    const char* line1;
    const char* line2;
    int (*isDone)(OledPanelButtons&);
};

constexpr Step kSteps[] = {
    {"< Press ", "< Button", [](OledPanelButtons& reading) -> int { return reading.left() != 0; }},
    {"Press >", "Button >", [](OledPanelButtons& reading) -> int { return reading.right() != 0; }},
    {"Press red", "Button", [](OledPanelButtons& reading) -> int { return reading.redPush() != 0; }},
    {"< Turn rotary", "< left (ccw)",
     [](OledPanelButtons& reading) -> int { return reading.encoderSteps() < 0; }},
    {"Turn rotary >", "right (cw) >",
     [](OledPanelButtons& reading) -> int { return reading.encoderSteps() > 0; }},
};

}  // namespace

int check(UI& ui, const char* line1, const char* line2, const Predicate& isDone) {
    ui.print(line1, line2, kBlack);
    OledPanelButtons reading;
    for (;;) {
        ui.panel->getButtons(reading);
        if (isDone(reading) != 0) {
            return 1;
        }
        if ((reading.word & kAnyControl) != 0) {
            std::printf("Waiting for:\n\t%s\n\t%s\n", line1, line2);
            ui.panel->setState(Valen::OledPanelInterface::kFrameShown);
        }
    }
}

void checkAllControls(UI& ui) {
    for (const Step& step : kSteps) {
        check(ui, step.line1, step.line2, step.isDone);
    }
    ui.print("Result:", "Success", kSuccessGreen);
}
