#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The protocol that a third-party controller speaks.
namespace Enums::ThirdPartyProtocol {

enum Type : int {
    None = 0,
    SwP02 = 1,
    SwP08 = 2,
    EmberPlus = 3,
    Tsl = 4,
    Ogp = 5,
    Nmos = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {SwP02, "SW-P-02"},
    {SwP08, "SW-P-08"},
    {EmberPlus, "Ember+"},
    {Tsl, "TSL UMD"},
    {Ogp, "OGP"},
    {Nmos, "NMOS"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ThirdPartyProtocol
