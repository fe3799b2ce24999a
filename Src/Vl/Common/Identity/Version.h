#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

/// What a card or a programmable device is and which version of it: the card-ID record of the identity ROM
/// and of the "cardid" cores, three 32-bit little-endian words. A plain value; not thread-safe.
///
///     word 0   24-31 card type, 8-23 major version, 0-7 minor version; 0 marks a version that is only a date
///     word 1   25-31 year - 2000, 21-24 month (1-12), 16-20 day, 0-15 build number
///     word 2   bit 31 set:    16-27 and 0-15 are two further numbers
///              otherwise:     bit 30 the source tree had local changes, 0-29 the source revision; 0: none
///
/// Where text is read, numbers follow strtol(3): blanks, a sign and 0x may stand before the digits. On
/// purpose no range is checked: in word 0 and in the date, a number that is negative or too large for its
/// field spills over into the fields above it; elsewhere its low bits count.
struct Version {
    std::array<std::uint32_t, 3> words{};

    unsigned int cardType() const { return words[0] >> 24; }
    unsigned int majorVersion() const { return words[0] >> 8 & 0xFFFF; }
    unsigned int minorVersion() const { return words[0] & 0xFF; }
    unsigned int build() const { return words[1] & 0xFFFF; }
    /// 2000 to 2127.
    unsigned int year() const { return 2000 + (words[1] >> 25); }
    unsigned int month() const { return words[1] >> 21 & 0xF; }
    unsigned int day() const { return words[1] >> 16 & 0x1F; }

    /// Whether word 2 holds two further numbers rather than a source revision.
    bool hasFurtherNumbers() const { return words[2] >> 31 != 0; }
    unsigned int firstFurtherNumber() const { return words[2] >> 16 & 0xFFF; }
    unsigned int secondFurtherNumber() const { return words[2] & 0xFFFF; }
    unsigned int revision() const { return words[2] & 0x3FFFFFFF; }
    bool hasLocalChanges() const { return words[2] >> 30 == 1; }

    /// For people: "CT: 0x80 Ver: 0102.03.0004 (17/05/2024)". Two further numbers stand as " [01.02]" before
    /// the date, a revision as " [00abcde]" or " [00abcde-dirty]" behind it.
    SimpleString toString() const;
    /// For file names: "v80_0102.03.0004", or "v2024-05-17" when word 0 is 0.
    SimpleString toFileString() const;

    /// Reads what toFileString writes; what the text does not say becomes 0. Behind either form may stand "_"
    /// and word 2 in hexadecimal, which is kept only when its bit 31 is set; what follows it is ignored.
    /// @return false, with nothing changed, when `text` is null or has neither form.
    bool FromFileString(const char* text);
    /// Reads "2024-05-17", to the end of the text, into the date fields; everything else stays.
    /// @return false, with nothing changed, when `text` is null or no such date.
    bool ParseDate(const char* text);
    /// Reads any text that a version writes: toFileString's, as FromFileString does, or toString's.
    /// @return false, with nothing changed, when `text` is null or neither.
    bool Set(const char* text);

    bool operator==(const Version&) const = default;
};

static_assert(sizeof(Version) == 12);
static_assert(std::endian::native == std::endian::little,
              "records are read and written as they lie in memory");

}  // namespace Valen
