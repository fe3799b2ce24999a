// The supervision of the running threads.
#include <syslog.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <mutex>
#include <thread>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Common/Threads/Thread.h"
#include "Vl/System/LinuxClock.h"

namespace Valen {
namespace {

using Log::isWanted;
using Log::vlLog;

/// A thread may be silent for so many seconds.
constexpr time_t kGraceSeconds = 5;
constexpr auto kPauseAfterLateThread = std::chrono::milliseconds(200);

}  // namespace

void Thread::handleDeadlockedThreads() {
    const time_t now = system::clock::LinuxClock::getTime().tv_sec;
    const std::lock_guard lock(mut);
    for (Thread* thread : known_threads) {
        const time_t alive = thread->aliveTime().tv_sec;
        if (thread->isInIO() || alive + kGraceSeconds >= now) {
            thread->panicCounter_ = 0;
            continue;
        }
        thread->warn(now, alive);
        std::this_thread::sleep_for(kPauseAfterLateThread);
    }
}

void Thread::warn(time_t now, time_t alive) {
    const auto id = static_cast<long>(threadId_);
    // The grace is taken off on purpose: what is logged is how long the thread has been late.
    const long late = now - kGraceSeconds - alive;
    if (needPanicReset()) {
        VL_LOG(Thread, ERROR, "WTG RESET %s (id %ld/%d) no response since %lds", name(), id, tid(), late);
        panicReset();
        panicCounter_ = 0;
        return;
    }
    VL_LOG(Thread, SERVICE, "WTG %s (id %ld/%d) no response since %lds", name(), id, tid(), late);
    ++panicCounter_;
    if (alive != lastSignalledTime_) {
        signalDeadlocked(alive);
    }
}

void Thread::signalDeadlocked(time_t alive) {
    lastSignalledTime_ = alive;
    const auto watchdog = static_cast<unsigned>(gettid());
    if (isWanted(originKey(), Log::SeverityLevel::DEBUG)) {
        vlLog->Log(originKey(), Log::SeverityLevel::DEBUG, "signalDeadlocked() called for thread %u",
                   watchdog);
    }
    pthread_kill(threadId_, SIGHUP);
    syslog(LOG_WARNING, "signalDeadlocked() called for thread %s/%u", name(), watchdog);
}

void Thread::panicReset() {
    VL_LOG(Thread, SERVICE, "WTG RESET not implemented for Thread %s", name());
}

}  // namespace Valen
