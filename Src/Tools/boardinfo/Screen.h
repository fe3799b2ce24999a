#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace boardinfo {

/// What to write so that a terminal shows `text` from its first line on in place of what it showed before,
/// without scrolling: of a text that is longer than the terminal's `lines` the last line says how much is
/// left out. 0 lines: the terminal does not tell, and all of it is shown.
std::string redrawn(std::string_view text, std::size_t lines);

}  // namespace boardinfo
