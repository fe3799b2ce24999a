#pragma once

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <memory>
#include <sstream>

#include "Vl/Common/Enums/OriginKey.h"
#include "Vl/Common/Log/SeverityLevel.h"

namespace Valen::Log {

class BufBase;
using SeverityLevel::SeverityLevel_T;

/// The log object of a process: a threshold for every component, and the operations that write a message.
///
/// A message is wanted when its severity is at most its component's threshold. Call sites ask first (VL_LOG
/// does) and the Log operations do not ask again. Any thread may log between LogInit() and LogUnInit(), which
/// run while no other does. Thresholds may change at any time: who reads meanwhile sees the old one or the
/// new. Logging may block, as syslog(3) does; a message that cannot be written is lost without a word.
class LogInterface {
public:
    static constexpr int kComponents = Enums::OriginKey::numberOfEntries;

    /// Every threshold is SERVICE.
    LogInterface();
    /// Every threshold is `level`; a level outside 0 to 14 leaves them at SERVICE.
    explicit LogInterface(SeverityLevel_T level);
    LogInterface(const LogInterface&) = delete;
    LogInterface& operator=(const LogInterface&) = delete;

    virtual ~LogInterface();
    /// Opens the log. @return true on success.
    virtual bool LogInit() = 0;
    /// Closes the log; what is logged afterwards is dropped. @return true on success.
    virtual bool LogUnInit() = 0;
    /// Writes one message; `format` is printf's.
    [[gnu::format(printf, 4, 5)]] virtual void Log(Enums::OriginKey::Type key, SeverityLevel_T severity,
                                                   const char* format, ...) = 0;
    [[gnu::format(printf, 4, 0)]] virtual void LogWithList(Enums::OriginKey::Type key,
                                                           SeverityLevel_T severity, const char* format,
                                                           va_list arguments) = 0;
    virtual void Log(Enums::OriginKey::Type key, SeverityLevel_T severity, const BufBase& text) = 0;
    /// Writes every line of `text`, from its beginning, as a message of its own; an empty stream writes
    /// nothing.
    virtual void Log(Enums::OriginKey::Type key, SeverityLevel_T severity, std::stringstream& text);

    /// Sets all thresholds; a level above 14 is ignored. A negative one admits nothing.
    void setGlobalComponentSeverity(SeverityLevel_T level);
    /// @return false, with nothing changed, for a key outside 0 to 124 or a level above 14.
    bool SetComponentSeverity(Enums::OriginKey::Type key, SeverityLevel_T level);
    /// Whether a message is wanted. The threshold of a key outside 0 to 124 counts as -1.
    bool ComponentSeverityMoreDetailedOrEqualTo(Enums::OriginKey::Type key, SeverityLevel_T level) const {
        const auto index = static_cast<std::size_t>(key);
        return level <= (index < componentSeverity_.size()
                             ? componentSeverity_[index].load(std::memory_order_relaxed)
                             : -1);
    }

    /// Dumps `length` bytes at `data` into the log that vlLog holds, as far as it wants such messages: eight
    /// 32-bit words a line in the machine's byte order, behind the offset of the line's first byte. Nothing
    /// is logged when `length` is 0 or negative. The last word is read whole, so the memory must be readable
    /// up to the next multiple of four bytes.
    void dumpMemory(Enums::OriginKey::Type key, SeverityLevel_T severity, const void* data, int length) const;

private:
    // Atomic without an order: a threshold is one load, the old one or the new while it changes.
    using Threshold = std::atomic<int>;
    static_assert(sizeof(Threshold) == 4 && Threshold::is_always_lock_free);

    std::array<Threshold, kComponents> componentSeverity_;
};

/// The one log object of the process. While it is empty nothing is logged. Set before threads start, reset
/// after they have ended.
extern std::unique_ptr<LogInterface> vlLog;

/// Whether a message of this component and severity is wanted now.
inline bool isWanted(Enums::OriginKey::Type key, SeverityLevel_T severity) {
    return vlLog && vlLog->ComponentSeverityMoreDetailedOrEqualTo(key, severity);
}

}  // namespace Valen::Log

/// Logs a message: VL_LOG(CPCardInterface, ERROR, "could not find: %s", path). A macro, because the threshold
/// is tested before any argument is evaluated.
#define VL_LOG(KEY, SEVERITY, ...)                                                                    \
    do {                                                                                              \
        if (::Valen::Log::isWanted(::Enums::OriginKey::KEY, ::Valen::Log::SeverityLevel::SEVERITY)) { \
            ::Valen::Log::vlLog->Log(::Enums::OriginKey::KEY, ::Valen::Log::SeverityLevel::SEVERITY,  \
                                     __VA_ARGS__);                                                    \
        }                                                                                             \
    } while (false)
