#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Tools/overlayview/GlyphFormat.h"
#include "Tools/overlayview/Kind.h"
#include "Tools/overlayview/RowOrder.h"

namespace overlayview {

/// What the caller knows about a file, and whether a picture is wanted.
struct Request {
    Kind kind = Kind::Unknown;               ///< unknown: to be found out
    std::optional<std::size_t> rawOffset{};  ///< there is no header, the body begins here
    std::optional<std::uint32_t> width{};    ///< at least 1
    std::optional<std::uint32_t> height{};   ///< at least 1
    RowOrder order = RowOrder::Progressive;
    std::optional<SheetLayout> sheet{};
    bool wantsPicture = false;
};

}  // namespace overlayview
