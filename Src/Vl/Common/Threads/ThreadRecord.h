#pragma once

#include <pthread.h>

#include <ctime>
#include <mutex>

#include "Vl/Common/Enums/OriginKey.h"
#include "Vl/Common/Threads/Mutex.h"

namespace Valen {

/// The little that the log, events and the watchdog need of a thread. It lies below all three, so that none
/// of them has to know Thread, which is one and registers itself. Each field has a mutex of its own; any
/// thread may call anything here, and nothing blocks longer than such a mutex is held.
class ThreadRecord {
public:
    /// Thread-specific: the calling thread's record, null in the main thread and in threads that others
    /// started.
    static const pthread_key_t ThreadObject;

    static ThreadRecord* current() { return static_cast<ThreadRecord*>(pthread_getspecific(ThreadObject)); }
    /// The text of the calling thread's component, "main" without a record.
    static const char* currentName();

    explicit ThreadRecord(Enums::OriginKey::Type key) : originKey_(key) {}

    Enums::OriginKey::Type originKey() const { return originKey_; }
    const char* name() const { return Enums::OriginKey::GetText(originKey_); }

    /// The last sign of life, a reading of the monotonic clock.
    timespec aliveTime() const { return aliveTime_.get(); }
    void setAliveTime(const timespec& now) { aliveTime_.set(now); }

    /// Counts the waits in progress, in which silence is no sign of death.
    void enterIO() { inIOCount_.add(1); }
    void leaveIO() { inIOCount_.add(-1); }
    bool isInIO() const { return inIOCount_.get() != 0; }

protected:
    template <typename Value>
    class Guarded {
    public:
        explicit Guarded(Value value) : value_(value) {}
        Value get() const {
            const std::lock_guard lock(mutex_);
            return value_;
        }
        void set(Value value) {
            const std::lock_guard lock(mutex_);
            value_ = value;
        }
        void add(Value difference) {
            const std::lock_guard lock(mutex_);
            value_ += difference;
        }
        /// Calls `use` with a value that stays as it is meanwhile.
        template <typename Use>
        auto with(Use use) const {
            const std::lock_guard lock(mutex_);
            return use(value_);
        }

    private:
        Value value_;
        mutable Mutex mutex_;
    };

    Guarded<timespec> aliveTime_{timespec{}};
    Guarded<int> inIOCount_{0};
    time_t lastSignalledTime_ = 0;
    Enums::OriginKey::Type originKey_;
};

}  // namespace Valen
