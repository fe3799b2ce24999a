#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/BoardDescription.h"

namespace boards {

/// A board that `seed` chooses, the same on every machine: one of the built-in boards with other versions,
/// serial numbers, temperatures, places of cores and of chips, with cores that nobody knows, and here and
/// there without a part. It is always valid: what writeBoard() makes of it, readBoard() takes. Names of cores
/// and devices stay those that drivers look for. `board.name` is "orca-SEED" or "hd24-SEED", by the board it
/// was made from.
boardsim::BoardDescription randomBoard(std::uint32_t seed);

/// A board from which one device was taken, with everything that refers to it.
struct Removal {
    std::string device;  ///< "core misc_pio", "chip fan_radial_temp", "bus fan", "phy 1", "gpio oled_pio"…
    boardsim::BoardDescription board;
};

/// Every device of a board taken away in turn; each board is valid.
std::vector<Removal> removals(const boardsim::BoardDescription& board);

}  // namespace boards
