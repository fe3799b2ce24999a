#pragma once

namespace overlayview {

/// How the program ends; the larger one wins.
constexpr int kGood = 0;
constexpr int kDamaged = 1;
constexpr int kUsageError = 2;
constexpr int kFileError = 3;

}  // namespace overlayview
