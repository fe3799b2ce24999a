#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The groups under which alarms are listed.
namespace Enums::AlarmGroup {

enum AlarmGroup_T : int {
    System = 1,
    Connections = 2,
    Topology = 3,
    Warnings = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {System, "System"},
    {Connections, "Connections"},
    {Topology, "Topology"},
    {Warnings, "Warnings"},
});

/// On purpose every other number is mere information.
/// @return the value's text, "Information" for a number without one.
constexpr const char* GetText(AlarmGroup_T group) {
    return TextTable<kRows>::contains(group) ? TextTable<kRows>::textOf(group) : "Information";
}

VL_ENUM_FUNCTIONS_BUT_TEXT(AlarmGroup_T, kRows);

}  // namespace Enums::AlarmGroup
