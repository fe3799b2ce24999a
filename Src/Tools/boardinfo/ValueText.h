#pragma once

#include <string>
#include <string_view>

#include "Tools/boardinfo/Report.h"

namespace boardinfo {

/// A value for people: "yes" and "no", numbers in the shortest form that is exact, lists with blanks between
/// the members, and behind it the unit.
std::string valueText(const Value& value, const std::string& unit);

/// Text from outside as it may stand on a terminal: control characters and what is no UTF-8 become '?'.
std::string printable(std::string_view text);

/// The number of columns that a text takes, one for each of its code points.
std::size_t columns(std::string_view text);

/// A number as the hardware's documents write it: "0x" and `digits` upper-case hexadecimal digits or more.
std::string hexText(std::uint64_t number, int digits);

}  // namespace boardinfo
