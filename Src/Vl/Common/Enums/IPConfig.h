#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Where an interface has its IP address from.
namespace Enums::IPConfig {

enum Type : int {
    Static = 0,
    Dhcp = 1,
    LinkLocal = 2,  ///< RFC 3927
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Static, "Static"},
    {Dhcp, "DHCP"},
    {LinkLocal, "Link-local"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::IPConfig
