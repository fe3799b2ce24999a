#pragma once

#include <array>
#include <cstddef>
#include <cstring>

namespace Enums {

/// One row of an enumeration's table: a value and the text that logs, menus and protocols use for it.
struct TextRow {
    int value;
    const char* text;
};

inline constexpr const char* kUnknownText = "unknown";

/// Look-up in both directions over an enumeration's rows, which stand in ascending order of their values.
/// `Rows` is a constexpr std::array<TextRow, N> of static storage. Immutable; any thread may use it.
template <const auto& Rows>
class TextTable {
    static constexpr std::size_t kEntries = static_cast<std::size_t>(Rows.back().value) + 1;

public:
    /// @return the value's text, "unknown" for a number without one.
    static constexpr const char* textOf(int value) {
        const auto index = static_cast<std::size_t>(value);
        return index < kEntries ? kTexts[index] : kUnknownText;
    }

    /// @return the value whose text equals `text` exactly (case matters), -1 when there is none.
    static int valueOf(const char* text) {
        for (const TextRow& row : Rows) {
            if (std::strcmp(row.text, text) == 0) {
                return row.value;
            }
        }
        return -1;
    }

private:
    static constexpr bool ascending() {
        for (std::size_t i = 1; i < Rows.size(); ++i) {
            if (Rows[i - 1].value >= Rows[i].value) {
                return false;
            }
        }
        return Rows.front().value >= 0;
    }
    static_assert(ascending(), "rows stand in ascending order of their values, from 0 up");

    static constexpr std::array<const char*, kEntries> directTable() {
        std::array<const char*, kEntries> texts{};
        texts.fill(kUnknownText);
        for (const TextRow& row : Rows) {
            texts[static_cast<std::size_t>(row.value)] = row.text;
        }
        return texts;
    }
    static constexpr std::array<const char*, kEntries> kTexts = directTable();
};

}  // namespace Enums
