#include "Vl/Common/Log/LogImpl.h"

#include <cstdio>

#include "Vl/Common/Log/BufBase.h"
#include "Vl/Common/Log/DebugHooks.h"
#include "Vl/Common/Log/Logging.h"

namespace Valen::Log {
namespace {

// Seven stars in front, and fewer at the end of the second: both lines are of one length.
constexpr const char* kStarted = "******* Logging started *******";
constexpr const char* kShutdown = "******* Logging shutdown ******";

}  // namespace

LogImpl::LogImpl() = default;

LogImpl::LogImpl(SeverityLevel_T level) : LogInterface(level) {}

LogImpl::~LogImpl() {
    LogImpl::internalLog(Enums::OriginKey::Logging, SeverityLevel::INFO, kShutdown);
}

bool LogImpl::LogInit() {
    writer_ = std::make_unique<Logging>();
    Log(Enums::OriginKey::Logging, SeverityLevel::INFO, "%s", kStarted);
    return true;
}

bool LogImpl::LogUnInit() {
    Log(Enums::OriginKey::Logging, SeverityLevel::INFO, "%s", kShutdown);
    writer_.reset();
    return true;
}

void LogImpl::Log(Enums::OriginKey::Type key, SeverityLevel_T severity, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    LogWithList(key, severity, format, arguments);
    va_end(arguments);
}

void LogImpl::LogWithList(Enums::OriginKey::Type key, SeverityLevel_T severity, const char* format,
                          va_list arguments) {
    char text[5000];
    std::vsnprintf(text, sizeof text, format, arguments);
    internalLog(key, severity, text);
}

void LogImpl::Log(Enums::OriginKey::Type key, SeverityLevel_T severity, const BufBase& text) {
    internalLog(key, severity, text.text());
}

void LogImpl::internalLog(Enums::OriginKey::Type key, SeverityLevel_T severity, const char* text) {
    if (severity < SeverityLevel::EMERGENCY || severity > SeverityLevel::RAMFILE) {
        return;
    }
    const auto level = SeverityLevel::SeverityToLoglevel(severity);
    if (severity <= SeverityLevel::INFO) {
        if (writer_) {
            writer_->UserLog(key, level, "%s", text);
        }
    } else if (severity == SeverityLevel::SERVICE) {
        if (writer_) {
            writer_->Log(key, level, "%s", text);
        }
    } else {
        // RAMFILE goes to the console hook alone, which has no output: dropped, on purpose.
        if (writer_ && severity <= SeverityLevel::CONSOLEMAX) {
            writer_->DebugLog(key, level, "%s", text);
        }
        DbgConsole(key, "%s", text);
    }
}

}  // namespace Valen::Log
