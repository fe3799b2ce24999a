#pragma once

#include <cstdint>

namespace boardinfo {

/// Which of the board variants is asked.
enum class BoardKind : std::uint8_t { Orca, Hd24 };

}  // namespace boardinfo
