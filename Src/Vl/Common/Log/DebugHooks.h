#pragma once

#include "Vl/Common/Enums/OriginKey.h"

namespace Valen::Log {

/// The console of a debug build; this system has none, so the text is dropped.
[[gnu::format(printf, 2, 3)]] inline void DbgConsole(int /*key*/, const char* /*format*/, ...) {}

}  // namespace Valen::Log
