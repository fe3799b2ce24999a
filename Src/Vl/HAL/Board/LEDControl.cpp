#include "Vl/HAL/Board/LEDControl.h"

namespace Valen {

using namespace Enums::LEDState;

void LEDControl::clear() {
    level = kFullLevel;
    setAll(Off);
}

void LEDControl::setAll(LEDState_T state) {
    if (state == Off) {
        first = kNone;
        second = kNone;
    }
    if ((state & SecondColour) != 0) {
        first = kAll;
    }
    if ((state & FirstColour) != 0) {
        second = kAll;
    }
    changeMark = kChanged;
}

}  // namespace Valen
