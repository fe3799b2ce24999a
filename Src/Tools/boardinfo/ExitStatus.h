#pragma once

namespace boardinfo {

/// How the program ends.
constexpr int kAllAnswered = 0;
constexpr int kSomethingFailed = 1;  ///< of the board, or of writing the report
constexpr int kUsageError = 2;

}  // namespace boardinfo
