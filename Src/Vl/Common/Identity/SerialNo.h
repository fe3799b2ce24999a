#pragma once

#include <compare>
#include <cstdint>

#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

/// The unique number of a card: the 64-bit ID of a 1-Wire chip on it. A plain value; not thread-safe.
struct SerialNo {
    std::uint64_t number = 0;  ///< 0: none

    bool IsValid() const { return number != 0; }
    /// Sixteen upper-case hexadecimal digits: "28000000054A1D2E".
    SimpleString toString() const;

    auto operator<=>(const SerialNo&) const = default;
};

}  // namespace Valen
