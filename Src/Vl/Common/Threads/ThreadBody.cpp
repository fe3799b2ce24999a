// What a thread does between its start and its end.
#include <cxxabi.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>

#include "Vl/Common/Log/BugReport.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Common/Threads/Thread.h"
#include "Vl/Common/Threads/ThreadSignals.h"
#include "Vl/System/LinuxClock.h"

namespace Valen {
namespace {

/// The kernel's limit without the terminating zero.
constexpr std::size_t kNameLength = 15;

/// "thread OLED, Src/Vl/Common/Thread line 280, entryPoint: …": the place is a fixed mark by which bug files
/// are searched, wherever the code stands now.
void reportException(const char* what) {
    std::array<char, kNameLength + 1> name{};
    pthread_getname_np(pthread_self(), name.data(), name.size());
    constexpr const char* kFile = "Src/Vl/Common/Thread";
    constexpr int kLine = 280;
    constexpr const char* kFunction = "entryPoint";
    if (what != nullptr) {
        report_bug(false, "thread %s, %s line %d, %s: a std::exception was thrown: %s", name.data(), kFile,
                   kLine, kFunction, what);
    } else {
        report_bug(false, "thread %s, %s line %d, %s: an unknown exception was thrown", name.data(), kFile,
                   kLine, kFunction);
    }
}

}  // namespace

/// In known_threads for as long as it exists.
class Thread::Known {
public:
    explicit Known(Thread& thread) : thread_(thread) {
        const std::lock_guard lock(mut);
        known_threads.push_back(&thread_);
    }
    Known(const Known&) = delete;
    Known& operator=(const Known&) = delete;
    ~Known() {
        const std::lock_guard lock(mut);
        std::erase(known_threads, &thread_);
    }

private:
    Thread& thread_;
};

/// Clears `running` as the last that the thread does with its object, also when it is cancelled.
class Thread::Running {
public:
    explicit Running(Thread& thread) : thread_(thread) { thread_.running_.set(true); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { thread_.running_.set(false); }

private:
    Thread& thread_;
};

void* Thread::entryPoint(void* thread) {
    static_cast<Thread*>(thread)->run();
    return nullptr;
}

void Thread::run() {
    threadId_ = pthread_self();
    pthread_setname_np(threadId_, std::string(std::string_view(name()).substr(0, kNameLength)).c_str());
    installThreadSignalHandler();
    inIOCount_.set(0);
    const Running running(*this);
    tid_ = gettid();
    tid_.notify_all();
    {
        const std::lock_guard lock(mut);
        setAliveTime(system::clock::LinuxClock::getTime());
    }
    pthread_setspecific(ThreadObject, static_cast<ThreadRecord*>(this));
    VL_LOG(Firmware, SERVICE, "%s (pid: %ld)", name(), static_cast<long>(tid()));
    {
        const Known known(*this);
        work();
    }
    logResourceUse();
}

void Thread::work() {
    try {
        do {
            function_();
        } while (period_ > 0 && !quitEvent_.WaitTimeout(period_, false));
    } catch (const std::exception& exception) {
        reportException(exception.what());
        throw;
    } catch (...) {
        // What has no type is no exception: the thread is being cancelled or leaves by pthread_exit.
        if (abi::__cxa_current_exception_type() != nullptr) {
            reportException(nullptr);
        }
        throw;
    }
}

void Thread::logResourceUse() const {
    rusage use{};
    getrusage(RUSAGE_THREAD, &use);
    VL_LOG(Firmware, SERVICE, "%s: maxrss: %ld, pageflt: %ld, ru_stime: %lu s %ld us", name(), use.ru_maxrss,
           use.ru_minflt, static_cast<unsigned long>(use.ru_stime.tv_sec), use.ru_stime.tv_usec);
}

}  // namespace Valen
