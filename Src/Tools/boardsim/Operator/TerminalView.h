#pragma once

#include <string>

#include "Tools/boardsim/Operator/Picture.h"

namespace boardsim {

/// The picture in plain text: one character for two pixels, one above the other, out of blank, "▀", "▄" and
/// "█" (UTF-8); a pixel is set when it is brighter than half. No escape sequences. Trailing blanks stay, so
/// that every line has the panel's width; an odd last row counts as having dark pixels below it.
std::string plainBlocks(const Picture& picture);

/// The picture for the terminal behind standard output, in the best way the terminal is known to understand:
/// graphics, or coloured characters that fit its width.
std::string forTerminal(const Picture& picture);

/// Whether standard output is a terminal that wants colours: a TTY, TERM neither empty nor "dumb", NO_COLOR
/// unset or empty.
bool terminalShowsColour();

}  // namespace boardsim
