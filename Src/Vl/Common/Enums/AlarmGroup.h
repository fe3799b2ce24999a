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

/// @return the value whose text equals `text` exactly, -1 when there is none or it is null.
constexpr AlarmGroup_T GetType(const char* text) {
    return static_cast<AlarmGroup_T>(TextTable<kRows>::valueOf(text));
}

/// Whether the number is one of the enumeration's values.
constexpr bool IsValidNum(long number) {
    return TextTable<kRows>::contains(number);
}

/// One past the highest value.
constexpr int Size() {
    return TextTable<kRows>::size();
}

}  // namespace Enums::AlarmGroup
