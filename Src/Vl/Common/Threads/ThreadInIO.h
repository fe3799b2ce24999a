#pragma once

#include "Vl/Common/Threads/ThreadRecord.h"

namespace Valen {

/// A stretch in which the calling thread blocks on purpose: while one exists, the watchdog leaves the thread
/// alone. They may be nested. Made and destroyed by the same thread; without effect in a thread that is not
/// a Thread.
class ThreadInIO {
public:
    ThreadInIO() : thread_(ThreadRecord::current()) {
        if (thread_ != nullptr) {
            thread_->enterIO();
        }
    }
    ThreadInIO(const ThreadInIO&) = delete;
    ThreadInIO& operator=(const ThreadInIO&) = delete;
    ~ThreadInIO() {
        if (thread_ != nullptr) {
            thread_->leaveIO();
        }
    }

private:
    ThreadRecord* thread_;
};

}  // namespace Valen
