#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Models/PanelRegisters.h"

namespace boardsim {

/// One key, pressed or turned `times` times.
struct KeyStroke {
    PanelKey key;
    unsigned times;
};

/// What an operator does at one moment: all strokes of a step reach the counters at the same instant, so that
/// the program may see them in one poll. A step without strokes is a pause.
struct KeyStep {
    std::string text;  ///< as it was written
    std::vector<KeyStroke> strokes{};
    std::chrono::milliseconds pause{};
};

/// Reads an operator's script: steps separated by blanks, commas or line ends.
///
///     STEP   = STROKE { "+" STROKE } | "wait:" MILLISECONDS
///     STROKE = [ COUNT "x" ] ( "left" | "right" | "red" | "cw" | "ccw" )
///
/// COUNT is 1 to 255, MILLISECONDS 0 to 3600000. An empty script has no steps.
/// @throws std::invalid_argument naming the word that is wrong and what could stand there.
std::vector<KeyStep> parseKeyScript(std::string_view script);

}  // namespace boardsim
