#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How the panel's display behaves while nobody uses it.
namespace Enums::OLEDMode {

enum Type : int {
    Off = 0,
    On = 1,
    Dimmed = 2,
    ScreenSaver = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {On, "On"},
    {Dimmed, "Dimmed"},
    {ScreenSaver, "Screen saver"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::OLEDMode
