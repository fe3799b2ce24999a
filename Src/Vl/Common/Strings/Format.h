#pragma once

#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

/// A text made from a printf format and its arguments: `Format("%d°C", celsius).c_str()`. "out of memory",
/// not owned, when formatting fails.
class Format : public SimpleString {
public:
    [[gnu::format(printf, 2, 3)]] explicit Format(const char* format, ...);
};

static_assert(sizeof(Format) == sizeof(SimpleString));

}  // namespace Valen

// Known without its namespace, as the string is.
using Valen::Format;
