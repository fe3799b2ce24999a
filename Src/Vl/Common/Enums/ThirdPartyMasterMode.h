#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Whether this frame speaks to a third-party controller for the others.
namespace Enums::ThirdPartyMasterMode {

enum Type : int {
    Off = 0,
    Primary = 1,
    Secondary = 2,
    Automatic = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Primary, "Primary"},
    {Secondary, "Secondary"},
    {Automatic, "Automatic"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ThirdPartyMasterMode
