#include "Vl/Common/Log/LogInterface.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace Valen::Log {
namespace {

constexpr std::size_t kDumpWords = 8;
using DumpLine = std::array<std::uint32_t, kDumpWords>;
constexpr std::string_view kDumpFormat = "[%03X]: %08X %08X %08X %08X %08X %08X %08X %08X";
constexpr std::size_t kDumpOffsetLength = std::string_view("[%03X]:").size();
constexpr std::size_t kDumpWordLength = std::string_view(" %08X").size();
static_assert(kDumpFormat.size() == kDumpOffsetLength + kDumpWords * kDumpWordLength);

/// Logs one line of `length` bytes, 1 to 32.
void dumpLine(Enums::OriginKey::Type key, SeverityLevel_T severity, unsigned offset, const std::byte* data,
              std::size_t length) {
    const std::size_t count = (length + sizeof(DumpLine::value_type) - 1) / sizeof(DumpLine::value_type);
    DumpLine words{};
    std::memcpy(words.data(), data, count * sizeof words[0]);
    // The format ends behind the last word that there is; the arguments behind it are not looked at.
    std::array<char, kDumpFormat.size() + 1> format{};
    kDumpFormat.copy(format.data(), kDumpOffsetLength + count * kDumpWordLength);
    vlLog->Log(key, severity, format.data(), offset, words[0], words[1], words[2], words[3], words[4],
               words[5], words[6], words[7]);
}

}  // namespace

std::unique_ptr<LogInterface> vlLog;

LogInterface::LogInterface() {
    setGlobalComponentSeverity(SeverityLevel::SERVICE);
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
    if (level > SeverityLevel::RAMFILE) {
        return;
    }
    for (Threshold& threshold : componentSeverity_) {
        threshold.store(level, std::memory_order_relaxed);
    }
}

bool LogInterface::SetComponentSeverity(Enums::OriginKey::Type key, SeverityLevel_T level) {
    const auto index = static_cast<std::size_t>(key);
    if (index >= componentSeverity_.size() || level > SeverityLevel::RAMFILE) {
        return false;
    }
    componentSeverity_[index].store(level, std::memory_order_relaxed);
    return true;
}

void LogInterface::dumpMemory(Enums::OriginKey::Type key, SeverityLevel_T severity, const void* data,
                              int length) const {
    const auto* bytes = static_cast<const std::byte*>(data);
    const auto end = static_cast<unsigned>(std::max(length, 0));
    // The log object of the process is asked and written to, whichever this one is, on purpose.
    for (unsigned offset = 0; offset < end && vlLog; offset += sizeof(DumpLine)) {
        if (isWanted(key, severity)) {
            dumpLine(key, severity, offset, bytes + offset,
                     std::min<std::size_t>(end - offset, sizeof(DumpLine)));
        }
    }
}

}  // namespace Valen::Log
