// The ends of a thread, as its owner sees them.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <thread>

#include "Vl/Common/Log/BugReport.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Common/Threads/Thread.h"
#include "Vl/System/LinuxClock.h"

namespace Valen {
namespace {

constexpr int kTooLongStatus = 66;

struct JoinFailure {
    int error;
    const char* text;
};

constexpr auto kJoinFailures = std::to_array<JoinFailure>({
    {EINVAL, "Thread::Join - is no joinable thread"},
    {EDEADLK, "Thread::Join - would deadlock"},
    {ESRCH, "Thread::Join - is no thread id"},
});

void logJoinFailure(int error) {
    const auto failure = std::find_if(kJoinFailures.begin(), kJoinFailures.end(),
                                      [error](const JoinFailure& row) { return row.error == error; });
    if (failure != kJoinFailures.end()) {
        VL_LOG(Thread, DEBUG, "%s", failure->text);
    }
}

std::int64_t nowInMilliseconds() {
    const timespec now = system::clock::LinuxClock::getTime();
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

}  // namespace

/// join and joinOrExit warn in the name of isJoinNeeded too, on purpose: it is the text that is known.
bool Thread::isAttached() const {
    if (!joinable_) {
        VL_LOG(Thread, DEBUG,
               "Thread::isJoinNeeded(): WARNING: Thread is not attached or was joined previously (%s)!",
               name());
    }
    return joinable_;
}

bool Thread::isJoinNeeded() {
    return isAttached() && threadId_ != 0;
}

int Thread::join(void** result) {
    if (!isJoinNeeded()) {
        return 0;
    }
    void* value = nullptr;
    const int error = pthread_join(threadId_, &value);
    logJoinFailure(error);
    if (error == EDEADLK) {
        // Nobody joins it any more; let it at least free its stack.
        pthread_detach(threadId_);
    }
    if (result != nullptr) {
        *result = value;
    }
    threadId_ = 0;
    joinable_ = false;
    return error;
}

void Thread::quitAndJoin() {
    quit();
    if (joinable_) {
        join(nullptr);
    }
}

int Thread::joinOrExit(int timeoutMs) {
    if (!isJoinNeeded()) {
        return 0;
    }
    const std::int64_t start = nowInMilliseconds();
    while (isRunning()) {
        if (nowInMilliseconds() - start >= timeoutMs) {
            report_bug(true, "WAITED TOO LONG FOR THREAD TO QUIT!\tDOING EXIT! ==> %s (pid %d)", name(),
                       tid());
            _exit(kTooLongStatus);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    // It is not joined, but may free its stack when it ends.
    pthread_detach(threadId_);
    joinable_ = false;
    return 0;
}

}  // namespace Valen
