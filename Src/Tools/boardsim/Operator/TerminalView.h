#pragma once

#include <cstddef>
#include <limits>
#include <string>

#include "Tools/boardsim/Operator/Picture.h"

namespace boardsim {

/// The picture in plain text: one character for two pixels, one above the other, out of blank, "▀", "▄" and
/// "█" (UTF-8); a pixel is set when it is brighter than half. No escape sequences. Trailing blanks stay, so
/// that every line is equally wide; what an odd size leaves of a character counts as dark.
///
/// A picture wider than `columns` gets characters of two by two pixels ("▘", "▚", "▟"…), and is shrunk before
/// where that is still too wide. `columns` is at least 1.
std::string plainBlocks(const Picture& picture,
                        std::size_t columns = std::numeric_limits<std::size_t>::max());

/// The columns for plainBlocks() on standard output: those of the terminal, without a terminal no limit.
std::size_t plainColumns();

/// The picture for the terminal behind standard output, in the best way the terminal is known to understand:
/// graphics, or coloured characters that fit its width.
std::string forTerminal(const Picture& picture);

/// Whether standard output is a terminal that wants colours: a TTY, TERM neither empty nor "dumb", NO_COLOR
/// unset or empty.
bool terminalShowsColour();

}  // namespace boardsim
