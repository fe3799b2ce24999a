#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "Vl/Common/Enums/TextHash.h"

namespace Enums {

/// One row of an enumeration's table: a value and the text that logs, menus and protocols use for it.
struct TextRow {
    int value;
    const char* text;
};

/// What a number without a text of its own reads.
inline constexpr const char* kUnknownText = "unknown";

/// Stands in a row instead of a text: the number is in use, yet reads "unknown".
inline constexpr const char* kNoText = nullptr;

/// Look-up in both directions over an enumeration's rows, which stand in ascending order of their values.
/// `Rows` is a constexpr std::array<TextRow, N> of static storage. Everything is made at compile time and
/// usable there: one pool with all the texts and small tables of offsets into it, so that a program loads
/// them without relocations. Immutable; any thread may use it; nothing blocks or allocates. Texts live as
/// long as the program.
template <const auto& Rows>
class TextTable {
public:
    /// @return the value's text, "unknown" for a number without one. One bounds check and two loads.
    static constexpr const char* textOf(int value) {
        const auto index = static_cast<std::size_t>(value);
        if (index < kDirect) {
            return kPool.data() + kOffsets[index];
        }
        for (std::size_t row = kNearRows; row < kRowCount; ++row) {
            if (kEntries[row].value == value) {
                return kPool.data() + kEntries[row].offset;
            }
        }
        return kPool.data();
    }

    /// @return the value whose text equals `text` exactly (case matters), -1 when there is none or it is
    /// null.
    ///     "unknown" finds nothing unless it stands in a row.
    static constexpr int valueOf(const char* text) {
        if (text == nullptr) {
            return -1;
        }
        const std::size_t length = Traits::length(text);
        for (std::size_t slot = firstSlot(text, length); kSlots[slot] != kFree; slot = nextSlot(slot)) {
            const Entry& entry = kEntries[kSlots[slot]];
            if (entry.length == length && Traits::compare(kPool.data() + entry.offset, text, length) == 0) {
                return entry.value;
            }
        }
        return -1;
    }

    /// @return whether the number stands in a row, with a text or without.
    static constexpr bool contains(long number) {
        const auto index = static_cast<unsigned long>(number);
        if (index < kDirect) {
            return (kDefined[index / kMaskBits] >> (index % kMaskBits) & 1U) != 0;
        }
        for (std::size_t row = kNearRows; row < kRowCount; ++row) {
            if (kEntries[row].value == number) {
                return true;
            }
        }
        return false;
    }

    /// @return one past the highest value that is not far away from the others (see kFarGap).
    static constexpr int size() { return static_cast<int>(kDirect); }

private:
    using Traits = std::char_traits<char>;
    using Offset = std::uint16_t;
    struct Entry {
        int value;
        Offset offset;
        Offset length;
    };

    static constexpr std::size_t kRowCount = Rows.size();

    static constexpr bool ascending() {
        for (std::size_t i = 1; i < kRowCount; ++i) {
            if (Rows[i - 1].value >= Rows[i].value) {
                return false;
            }
        }
        return Rows.front().value >= 0;
    }
    static_assert(ascending(), "rows stand in ascending order of their values, from 0 up");

    /// The rows before the first gap wider than this are looked up directly; the few behind it one by one.
    static constexpr int kFarGap = 1024;
    static constexpr std::size_t countNearRows() {
        std::size_t row = 1;
        while (row < kRowCount && Rows[row].value - Rows[row - 1].value <= kFarGap) {
            ++row;
        }
        return row;
    }
    static constexpr std::size_t kNearRows = countNearRows();
    static constexpr std::size_t kDirect = static_cast<std::size_t>(Rows[kNearRows - 1].value) + 1;

    static constexpr std::size_t kUnknownLength = Traits::length(kUnknownText);
    static constexpr std::size_t poolSize() {
        std::size_t size = kUnknownLength + 1;
        for (const TextRow& row : Rows) {
            size += row.text == kNoText ? 0 : Traits::length(row.text) + 1;
        }
        return size;
    }
    static constexpr std::size_t kPoolSize = poolSize();
    static_assert(kPoolSize <= std::numeric_limits<Offset>::max(), "an offset reaches every text");

    /// All texts, each with its NUL, one behind the other; "unknown" is the first.
    static constexpr std::array<char, kPoolSize> fillPool() {
        std::array<char, kPoolSize> pool{};
        char* next = std::copy_n(kUnknownText, kUnknownLength + 1, pool.data());
        for (const TextRow& row : Rows) {
            if (row.text != kNoText) {
                next = std::copy_n(row.text, Traits::length(row.text) + 1, next);
            }
        }
        return pool;
    }
    static constexpr std::array<char, kPoolSize> kPool = fillPool();

    static constexpr std::array<Entry, kRowCount> placeRows() {
        std::array<Entry, kRowCount> entries{};
        std::size_t next = kUnknownLength + 1;
        for (std::size_t i = 0; i < kRowCount; ++i) {
            entries[i].value = Rows[i].value;
            if (Rows[i].text != kNoText) {
                entries[i].offset = static_cast<Offset>(next);
                entries[i].length = static_cast<Offset>(Traits::length(Rows[i].text));
                next += entries[i].length + std::size_t{1};
            }
        }
        return entries;
    }
    static constexpr std::array<Entry, kRowCount> kEntries = placeRows();

    static constexpr std::array<Offset, kDirect> placeValues() {
        std::array<Offset, kDirect> offsets{};  // 0: "unknown"
        for (std::size_t i = 0; i < kNearRows; ++i) {
            offsets[static_cast<std::size_t>(kEntries[i].value)] = kEntries[i].offset;
        }
        return offsets;
    }
    static constexpr std::array<Offset, kDirect> kOffsets = placeValues();

    static constexpr std::size_t kMaskBits = 64;
    using Mask = std::array<std::uint64_t, (kDirect + kMaskBits - 1) / kMaskBits>;
    static constexpr Mask maskValues() {
        Mask mask{};
        for (std::size_t i = 0; i < kNearRows; ++i) {
            const auto value = static_cast<std::size_t>(Rows[i].value);
            mask[value / kMaskBits] |= std::uint64_t{1} << (value % kMaskBits);
        }
        return mask;
    }
    static constexpr Mask kDefined = maskValues();

    /// A hash table of row numbers with open addressing; at most half full, so that a search always ends.
    static constexpr std::size_t kSlotCount = std::bit_ceil(2 * kRowCount);
    static constexpr std::uint16_t kFree = std::numeric_limits<std::uint16_t>::max();
    static_assert(kRowCount < kFree, "a slot holds every row's number");

    static constexpr std::size_t firstSlot(const char* text, std::size_t length) {
        return textHash(text, length) % kSlotCount;
    }
    static constexpr std::size_t nextSlot(std::size_t slot) { return (slot + 1) % kSlotCount; }

    static constexpr std::array<std::uint16_t, kSlotCount> hashTexts() {
        std::array<std::uint16_t, kSlotCount> slots{};
        slots.fill(kFree);
        for (std::size_t row = 0; row < kRowCount; ++row) {
            if (Rows[row].text == kNoText) {
                continue;
            }
            const std::size_t length = kEntries[row].length;
            std::size_t slot = firstSlot(Rows[row].text, length);
            for (; slots[slot] != kFree; slot = nextSlot(slot)) {
                if (kEntries[slots[slot]].length == length &&
                    Traits::compare(Rows[slots[slot]].text, Rows[row].text, length) == 0) {
                    throw "two rows have the same text";  // ends the compilation
                }
            }
            slots[slot] = static_cast<std::uint16_t>(row);
        }
        return slots;
    }
    static constexpr std::array<std::uint16_t, kSlotCount> kSlots = hashTexts();
};

}  // namespace Enums

/// Gives the enumeration `Type` of the namespace where it stands its four functions, all from its table ROWS.
/// All are constexpr, may be called from any thread and take any number that is cast to `Type`.
///   GetText     the value's text; "unknown" for a value without one
///   GetType     the value whose text equals the argument exactly; -1 when there is none or it is null
///   IsValidNum  whether the number is one of the enumeration's values
///   Size        one past the highest value
#define VL_ENUM_FUNCTIONS(ROWS)                         \
    constexpr const char* GetText(Type value) {         \
        return ::Enums::TextTable<ROWS>::textOf(value); \
    }                                                   \
    VL_ENUM_FUNCTIONS_BUT_TEXT(Type, ROWS)

/// The same without GetText, for an enumeration TYPE that has its own words for numbers without a text.
#define VL_ENUM_FUNCTIONS_BUT_TEXT(TYPE, ROWS)                             \
    constexpr TYPE GetType(const char* text) {                             \
        return static_cast<TYPE>(::Enums::TextTable<ROWS>::valueOf(text)); \
    }                                                                      \
    constexpr bool IsValidNum(long number) {                               \
        return ::Enums::TextTable<ROWS>::contains(number);                 \
    }                                                                      \
    constexpr int Size() {                                                 \
        return ::Enums::TextTable<ROWS>::size();                           \
    }                                                                      \
    static_assert(sizeof(TYPE) == sizeof(int), "a value is an int wherever it is kept")
