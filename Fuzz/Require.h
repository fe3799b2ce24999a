#pragma once

#include <cstdlib>

/// What must hold for every input; the fuzzer keeps the one for which it does not.
inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}
