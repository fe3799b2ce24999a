#pragma once

#include <cstdarg>
#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

#include "Vl/Common/Log/BufBase.h"
#include "Vl/Common/Log/LogInterface.h"

namespace support {

/// A message as a log object receives it.
struct Message {
    int key;
    int severity;
    std::string text;

    bool operator==(const Message&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Message& message) {
    return out << message.key << '/' << message.severity << ' ' << message.text;
}

/// A log object that keeps what it is given.
class RecordingLog : public Valen::Log::LogInterface {
public:
    using Key = Enums::OriginKey::Type;
    using Severity = Valen::Log::SeverityLevel_T;
    using LogInterface::Log;
    using LogInterface::LogInterface;

    bool LogInit() override { return true; }
    bool LogUnInit() override { return true; }
    [[gnu::format(printf, 4, 5)]] void Log(Key key, Severity severity, const char* format, ...) override {
        va_list arguments;
        va_start(arguments, format);
        LogWithList(key, severity, format, arguments);
        va_end(arguments);
    }
    [[gnu::format(printf, 4, 0)]] void LogWithList(Key key, Severity severity, const char* format,
                                                   va_list arguments) override {
        char text[1000];
        std::vsnprintf(text, sizeof text, format, arguments);
        messages.push_back({key, severity, text});
    }
    void Log(Key key, Severity severity, const Valen::Log::BufBase& text) override {
        messages.push_back({key, severity, text.text()});
    }

    std::vector<Message> messages;
};

}  // namespace support
