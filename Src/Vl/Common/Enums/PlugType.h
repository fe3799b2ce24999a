#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The kind of connector that a port has.
namespace Enums::PlugType {

enum Type : int {
    None = 0,
    Bnc = 1,
    HdBnc = 2,
    Rj45 = 3,
    Sfp = 4,
    Lc = 5,
    Sc = 6,
    Xlr = 7,
    DSub = 8,
    Dvi = 9,
    DisplayPort = 10,
    Hdmi = 11,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Bnc, "BNC"},
    {HdBnc, "HD-BNC"},
    {Rj45, "RJ45"},
    {Sfp, "SFP"},
    {Lc, "LC"},
    {Sc, "SC"},
    {Xlr, "XLR"},
    {DSub, "D-Sub"},
    {Dvi, "DVI"},
    {DisplayPort, "DisplayPort"},
    {Hdmi, "HDMI"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PlugType
