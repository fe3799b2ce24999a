#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The exchangeable parts of a Metron unit.
namespace Enums::MetronPart {

enum Type : int {
    Undefined = 0,
    MainBoard = 1,
    FrontPanel = 2,
    PowerSupply1 = 3,
    PowerSupply2 = 4,
    FanTray = 5,
    SyncModule = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Undefined, "Undefined"},
    {MainBoard, "Main board"},
    {FrontPanel, "Front panel"},
    {PowerSupply1, "Power supply 1"},
    {PowerSupply2, "Power supply 2"},
    {FanTray, "Fan tray"},
    {SyncModule, "Sync module"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::MetronPart
