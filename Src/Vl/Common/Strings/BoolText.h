#pragma once

#include <string>

namespace Valen {

/// "true" or "false".
constexpr const char* BoolToCString(bool value) {
    return value ? "true" : "false";
}
inline std::string BoolToString(bool value) {
    return BoolToCString(value);
}

}  // namespace Valen
