#pragma once

#include <cstdint>

/// Calls `visit(row)` for each of a picture's rows from the top or, interlaced, for all even rows and then
/// for all odd ones, until it returns something other than 0. @return that, or 0.
template <typename Visit>
int visitRows(int height, bool interlaced, Visit visit) {
    const int fields = interlaced ? 2 : 1;
    for (int field = 0; field < fields; ++field) {
        for (int64_t row = field; row < height; row += fields) {
            if (const int result = visit(row); result != 0) {
                return result;
            }
        }
    }
    return 0;
}
