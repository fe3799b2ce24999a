#pragma once

#include <cstdarg>

#include "Vl/Common/Enums/Loglevel.h"
#include "Vl/Common/Enums/OriginKey.h"

namespace Valen {

/// The syslog writer. Every operation formats its message (cut at 599 characters) and sends "component:
/// message" to syslog(3) under one of three facilities. It has no state, never calls openlog, may be used
/// from any thread, and blocks as syslog(3) does.
class Logging {
public:
    using Key = Enums::OriginKey::Type;
    using Level = Enums::Loglevel::LoglevelType;

    /// Service log, LOG_LOCAL0.
    [[gnu::format(printf, 4, 5)]] void Log(Key key, Level level, const char* format, ...);
    [[gnu::format(printf, 3, 4)]] static void StaticLog(Key key, Level level, const char* format, ...);
    [[gnu::format(printf, 3, 0)]] static void vStaticLog(Key key, Level level, const char* format,
                                                         va_list list);

    /// User log, LOG_LOCAL1.
    [[gnu::format(printf, 4, 5)]] void UserLog(Key key, Level level, const char* format, ...);
    [[gnu::format(printf, 3, 4)]] static void StaticUserLog(Key key, Level level, const char* format, ...);
    [[gnu::format(printf, 3, 0)]] static void vStaticUserLog(Key key, Level level, const char* format,
                                                             va_list list);

    /// Debug log, LOG_LOCAL2.
    [[gnu::format(printf, 4, 5)]] void DebugLog(Key key, Level level, const char* format, ...);
};

}  // namespace Valen
