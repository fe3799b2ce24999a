#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The role of one entry on the way of a connection.
namespace Enums::ConnectionEntryType {

enum Type : int {
    Undefined = 0,
    Source = 1,
    Hop = 2,
    Destination = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Undefined, "Undefined"},
    {Source, "Source"},
    {Hop, "Hop"},
    {Destination, "Destination"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ConnectionEntryType
