#include "Vl/Common/Log/LogInterface.h"

#include <string>

namespace Valen::Log {

std::unique_ptr<LogInterface> vlLog;

LogInterface::LogInterface() {
    componentSeverity_.fill(SeverityLevel::SERVICE);
}

LogInterface::LogInterface(SeverityLevel_T level) : LogInterface() {
    if (level >= SeverityLevel::EMERGENCY) {
        setGlobalComponentSeverity(level);
    }
}

LogInterface::~LogInterface() = default;

void LogInterface::Log(Enums::OriginKey::Type key, SeverityLevel_T severity, std::stringstream& text) {
    text.clear();
    text.seekg(0);
    for (std::string line; std::getline(text, line);) {
        Log(key, severity, "%s", line.c_str());
    }
}

void LogInterface::setGlobalComponentSeverity(SeverityLevel_T level) {
    if (level <= SeverityLevel::RAMFILE) {
        componentSeverity_.fill(level);
    }
}

bool LogInterface::SetComponentSeverity(Enums::OriginKey::Type key, SeverityLevel_T level) {
    const auto index = static_cast<std::size_t>(key);
    if (index >= componentSeverity_.size() || level > SeverityLevel::RAMFILE) {
        return false;
    }
    componentSeverity_[index] = level;
    return true;
}

}  // namespace Valen::Log
