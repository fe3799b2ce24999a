#include "Tools/overlayview/GlyphSheet.h"

#include <algorithm>

#include "Tools/overlayview/Container.h"

namespace overlayview {
namespace {

std::uint64_t countRows(Bytes body, std::uint64_t bytesPerRow) {
    const std::uint64_t whole = body.size() / bytesPerRow;
    const Bytes rest = body.subspan(static_cast<std::size_t>(whole * bytesPerRow));
    const bool blank = std::all_of(rest.begin(), rest.end(), [](std::byte b) { return b == std::byte{0}; });
    return rest.size() < kBodyUnit && blank ? whole : whole + 1;
}

}  // namespace

GlyphSheet::GlyphSheet(const GlyphFormat& format, Bytes file, std::size_t offset, const SheetLayout& layout)
    : format_(format),
      file_(file),
      offset_(offset),
      layout_(layout),
      rows_(countRows(file.subspan(offset), format.bytesPerCharRow(layout))) {}

std::uint64_t GlyphSheet::pixels() const {
    return rows_ * layout_.columns * layout_.cell.pixels();
}

Size GlyphSheet::size() const {
    return {layout_.cell.width * layout_.columns, layout_.cell.height * static_cast<std::uint32_t>(rows_)};
}

std::vector<std::uint8_t> GlyphSheet::levels() const {
    std::vector<std::uint8_t> levels(pixels());
    std::uint8_t* next = levels.data();
    const std::uint32_t height = size().height;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t column = 0; column < layout_.columns; ++column) {
            const GlyphRow row{y / layout_.cell.height, column, y % layout_.cell.height};
            format_.readRow(file_, offset_, layout_, row, next);
            next += layout_.cell.width;
        }
    }
    return levels;
}

Picture GlyphSheet::picture() const {
    Picture picture{size()};
    picture.pixels.reserve(pixels());
    for (const std::uint8_t level : levels()) {
        const auto grey = static_cast<std::uint8_t>(level * 255 / format_.brightest());
        picture.pixels.push_back({grey, grey, grey, 255});
    }
    return picture;
}

}  // namespace overlayview
