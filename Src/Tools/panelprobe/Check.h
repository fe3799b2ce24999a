#pragma once

#include <functional>

#include "Vl/HAL/Panel/OledPanelButtons.h"

class UI;

/// Says with a non-zero result that a reading shows the awaited control operated.
using Predicate = std::function<int(Valen::OledPanelButtons&)>;

/// Shows two prompt lines and polls the panel, without a pause, until `isDone` accepts a reading. Any other
/// control that is operated meanwhile is answered with a reminder on standard output. The UI has a panel.
/// @return 1, always; there is no other way out.
/// @throws std::bad_function_call for an empty predicate, after the first poll.
int check(UI& ui, const char* line1, const char* line2, const Predicate& isDone);

/// Walks the operator through every control of the panel, then shows the result.
void checkAllControls(UI& ui);
