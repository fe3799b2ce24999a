#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace overlayview {

/// What a body holds. No file tells it.
enum class Kind { Unknown, Runs, Pattern, Font, Numbers };

constexpr std::array<std::string_view, 5> kKindNames{"unknown", "rle", "pattern", "font", "numbers"};

/// The name on the command line and in descriptions.
constexpr std::string_view nameOf(Kind kind) {
    return kKindNames[static_cast<std::size_t>(kind)];
}

}  // namespace overlayview
