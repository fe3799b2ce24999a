#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The state of an Ethernet port; when it is up, its speed.
namespace Enums::EthernetLinkState {

enum Type : int {
    Down = 0,
    Up10M = 1,
    Up100M = 2,
    Up1G = 3,
    Up10G = 4,
    Up25G = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Down, "Down"},
    {Up10M, "10M"},
    {Up100M, "100M"},
    {Up1G, "1G"},
    {Up10G, "10G"},
    {Up25G, "25G"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::EthernetLinkState
