#pragma once

#include <chrono>
#include <optional>

#include "Tools/boardinfo/BoardKind.h"

namespace boardinfo {

/// What the command line asks for.
struct Options {
    BoardKind board = BoardKind::Orca;
    bool json = false;
    std::optional<std::chrono::milliseconds> watch{};  ///< the time between two reports; none: one report
};

}  // namespace boardinfo
