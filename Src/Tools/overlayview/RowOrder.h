#pragma once

#include <cstdint>

namespace overlayview {

/// The order in which a file stores the rows of a picture.
enum class RowOrder { Progressive, Interlaced };

/// Where the row that is stored as number `stored` belongs in a picture of `height` rows. Interlaced files
/// store rows 0, 2, 4… first and 1, 3, 5… behind them. `stored` is below `height`.
constexpr std::uint32_t pictureRow(std::uint32_t stored, std::uint32_t height, RowOrder order) {
    if (order == RowOrder::Progressive) {
        return stored;
    }
    const std::uint32_t evenRows = height - height / 2;
    return stored < evenRows ? 2 * stored : 2 * (stored - evenRows) + 1;
}

}  // namespace overlayview
