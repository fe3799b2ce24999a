#pragma once

#include "Vl/Graphics/Pixels/Rgba.h"

/// The tool's colours; all opaque.
inline constexpr rgba kBlack{0x80000000};
inline constexpr rgba kWhite{0x80ffffff};
inline constexpr rgba kSuccessGreen{0x80009600};
