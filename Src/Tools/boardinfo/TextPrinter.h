#pragma once

#include <cstdint>
#include <string>

#include "Tools/boardinfo/Report.h"

namespace boardinfo {

enum class Colours : std::uint8_t { Off, On };

/// The report for people: a heading for each section, and below it its rows in aligned columns, each with its
/// value, "FAILED" or "not present", and then its details. With colours, headings are bold, what is not there
/// is dim, and what failed or is over its limit is red.
std::string asText(const Report& report, Colours colours);

}  // namespace boardinfo
