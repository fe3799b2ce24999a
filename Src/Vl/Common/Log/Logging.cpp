#include "Vl/Common/Log/Logging.h"

#include <syslog.h>

#include <array>
#include <cstddef>
#include <cstdio>

namespace Valen {
namespace {

/// Indexed by Loglevel; number 0 is none of its values.
constexpr std::array kSyslogLevels = {LOG_NOTICE, LOG_ERR, LOG_WARNING, LOG_INFO, LOG_DEBUG};

int syslogLevel(Logging::Level level) {
    const auto index = static_cast<std::size_t>(level);
    return index < kSyslogLevels.size() ? kSyslogLevels[index] : LOG_NOTICE;
}

[[gnu::format(printf, 4, 0)]] void write(int facility, Logging::Key key, Logging::Level level,
                                         const char* format, va_list list) {
    char message[600];
    std::vsnprintf(message, sizeof message, format, list);
    syslog(facility | syslogLevel(level), "%s: %s", Enums::OriginKey::GetText(key), message);
}

}  // namespace

void Logging::Log(Key key, Level level, const char* format, ...) {
    va_list list;
    va_start(list, format);
    write(LOG_LOCAL0, key, level, format, list);
    va_end(list);
}

void Logging::StaticLog(Key key, Level level, const char* format, ...) {
    va_list list;
    va_start(list, format);
    write(LOG_LOCAL0, key, level, format, list);
    va_end(list);
}

void Logging::vStaticLog(Key key, Level level, const char* format, va_list list) {
    write(LOG_LOCAL0, key, level, format, list);
}

void Logging::UserLog(Key key, Level level, const char* format, ...) {
    va_list list;
    va_start(list, format);
    write(LOG_LOCAL1, key, level, format, list);
    va_end(list);
}

void Logging::StaticUserLog(Key key, Level level, const char* format, ...) {
    va_list list;
    va_start(list, format);
    write(LOG_LOCAL1, key, level, format, list);
    va_end(list);
}

void Logging::vStaticUserLog(Key key, Level level, const char* format, va_list list) {
    write(LOG_LOCAL1, key, level, format, list);
}

void Logging::DebugLog(Key key, Level level, const char* format, ...) {
    va_list list;
    va_start(list, format);
    write(LOG_LOCAL2, key, level, format, list);
    va_end(list);
}

}  // namespace Valen
