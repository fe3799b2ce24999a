#pragma once

#include <cstdint>
#include <string>

#include "Tools/boardinfo/Report.h"

namespace boardinfo {

/// The version of what asJson() writes: a member may be added without a new one, nothing else may change.
constexpr int kJsonSchema = 1;

enum class JsonLayout : std::uint8_t {
    Indented,
    OneLine,
};

/// The report as a JSON object, ending in a line feed; docs/boardinfo.schema.json describes it. Names are
/// those of the report in lower case, with "_" for what is neither letter nor digit; names that the board
/// gives are values and stay as they are. Units of details are not told: the description says them. What is
/// no UTF-8 becomes U+FFFD.
std::string asJson(const Report& report, JsonLayout layout);

}  // namespace boardinfo
