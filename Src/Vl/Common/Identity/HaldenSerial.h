#pragma once

#include <cstdint>
#include <string>

#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

/// The serial record of a card: sixteen bytes as its EEPROM holds them. A plain value; not thread-safe.
/// Dates become text in the local time of the process (TZ).
struct HaldenSerial {
    std::uint64_t number = 0;          ///< thirteen decimal digits, the last an EAN-13 check digit; 0: none
    std::int32_t productionDate = 0;   ///< seconds since 1970
    std::int32_t lastServiceDate = 0;  ///< seconds since 1970

    /// Whether `number` is not 0 and its check digit is right.
    bool IsValid() const;
    /// The digit (0 to 9) that would make `number` valid in place of its last one.
    unsigned int checkDigit() const;

    /// "4006381333931  Production Date: 17.05.2024 08:09:10  Last Service Date: 01.01.1970 01:00:00".
    SimpleString toString() const;
    /// Stores the production date as "17.05.2024 08:09:10".
    void PD_ToString(std::string& text) const;
    /// Stores the last service date likewise.
    void SD_ToString(std::string& text) const;

    bool operator==(const HaldenSerial&) const = default;
};

static_assert(sizeof(HaldenSerial) == 16);

}  // namespace Valen
