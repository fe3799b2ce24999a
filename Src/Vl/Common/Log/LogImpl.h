#pragma once

#include <memory>

#include "Vl/Common/Log/LogInterface.h"

namespace Valen {
class Logging;
}

namespace Valen::Log {

/// The log object that writes to syslog: severities 0 to 6 to the user log, 7 to the service log, 8 to 13 to
/// the debug log, others nowhere. A message is cut at 4999 characters when it is formatted and at 599 when
/// it is written. Between construction and LogInit(), and after LogUnInit(), messages are dropped.
class LogImpl : public LogInterface {
public:
    LogImpl();
    explicit LogImpl(SeverityLevel_T level);
    /// Writes the shutdown line when the log is open.
    ~LogImpl() override;

    /// Opens the log, anew when it is open, and writes the start line. @return true
    bool LogInit() override;
    /// Writes the shutdown line and closes the log. @return true
    bool LogUnInit() override;
    [[gnu::format(printf, 4, 5)]] void Log(Enums::OriginKey::Type key, SeverityLevel_T severity,
                                           const char* format, ...) override;
    [[gnu::format(printf, 4, 0)]] void LogWithList(Enums::OriginKey::Type key, SeverityLevel_T severity,
                                                   const char* format, va_list arguments) override;
    void Log(Enums::OriginKey::Type key, SeverityLevel_T severity, const BufBase& text) override;
    using LogInterface::Log;

    /// Routes a finished text as Log does.
    void internalLog(Enums::OriginKey::Type key, SeverityLevel_T severity, const char* text);

private:
    std::unique_ptr<Logging> writer_;
};

}  // namespace Valen::Log
