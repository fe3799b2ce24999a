#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What the whole system is up to.
namespace Enums::SystemMode {

enum Type : int {
    Normal = 0,
    Maintenance = 1,
    Update = 2,
    Test = 3,
    Recovery = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Normal, "Normal"},
    {Maintenance, "Maintenance"},
    {Update, "Update"},
    {Test, "Test"},
    {Recovery, "Recovery"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SystemMode
