#pragma once

#include <limits>
#include <string_view>

#include "Vl/Common/Streams/InputStream.h"

/// A stream over these bytes.
inline Valen::InputStream over(std::string_view bytes) {
    return {bytes.data(), bytes.size()};
}

/// As far away as a number can say.
constexpr long kFar = std::numeric_limits<long>::max();
