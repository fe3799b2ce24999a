#include "Vl/Common/Threads/Thread.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <utility>

#include "Vl/System/LinuxClock.h"

namespace Valen {
namespace {

/// What each thread needs for its own messages and, when it is taken for dead, for its own backtrace. The
/// system's minimum (16 KB on some machines) leaves no room for them.
constexpr long kSmallestStack = 65536;

class Attributes {
public:
    Attributes() { pthread_attr_init(&attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { pthread_attr_destroy(&attributes_); }

    void setDetached(bool detached) {
        pthread_attr_setdetachstate(&attributes_,
                                    detached ? PTHREAD_CREATE_DETACHED : PTHREAD_CREATE_JOINABLE);
    }
    int setStackSize(int size) {
        const long enough = std::max({long{size}, kSmallestStack, sysconf(_SC_THREAD_STACK_MIN)});
        return pthread_attr_setstacksize(&attributes_, static_cast<std::size_t>(enough));
    }
    const pthread_attr_t* native() const { return &attributes_; }

private:
    pthread_attr_t attributes_;
};

}  // namespace

std::vector<Thread*>& Thread::known_threads = *new std::vector<Thread*>;
Mutex& Thread::mut = *new Mutex;
const pthread_t Thread::mainThread = pthread_self();

Thread::Thread(Enums::OriginKey::Type key, std::function<void()>&& function, int periodMs)
    : ThreadRecord(key), period_(periodMs), function_(std::move(function)) {}

Thread::~Thread() {
    quit();
    if (joinable_) {
        join(nullptr);
    }
}

int Thread::start(bool detached, int stackSize) {
    if (isRunning() || (joinable_ && threadId_ != 0)) {
        return EBUSY;
    }
    if (stackSize < 0) {
        return EINVAL;
    }
    Attributes attributes;
    attributes.setDetached(detached);
    if (const int error = stackSize > 0 ? attributes.setStackSize(stackSize) : 0; error != 0) {
        return error;
    }
    panicCounter_ = 0;
    quitEvent_.Clear();
    tid_ = 0;
    threadId_ = 0;
    joinable_ = !detached;
    pthread_t thread = 0;
    if (const int error = pthread_create(&thread, attributes.native(), entryPoint, this); error != 0) {
        return error;
    }
    // The thread names itself: a detached one may have ended by now, and its pthread_t with it.
    tid_.wait(0);
    return 0;
}

int Thread::setPriority(int nice) {
    return running_.with([this, nice](bool running) {
        if (!running) {
            errno = ESRCH;
            return -1;
        }
        return setpriority(PRIO_PROCESS, static_cast<id_t>(tid()), nice);
    });
}

int Thread::setRunningThreadPriority(int nice) {
    return setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), nice);
}

void Thread::reportAlive() {
    ThreadRecord* thread = current();
    if (thread == nullptr) {
        return;
    }
    const std::lock_guard lock(mut);
    thread->setAliveTime(system::clock::LinuxClock::getTime());
}

}  // namespace Valen
