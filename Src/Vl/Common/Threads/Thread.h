#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <ctime>
#include <functional>
#include <iosfwd>
#include <vector>

#include "Vl/Common/Threads/Event.h"
#include "Vl/Common/Threads/Mutex.h"
#include "Vl/Common/Threads/ThreadRecord.h"

namespace Valen {

/// Runs one function in a POSIX thread, once or periodically, under the name of its component, and lets a
/// watchdog see whether it still responds.
///
/// One thread owns the object: it starts, joins and destroys it. The other operations may be called by any
/// thread. The object must outlive the thread unless the thread was joined; one whose function uses members
/// of a derived class calls quitAndJoin() in that class's destructor. It may be started again after it was
/// joined or has ended. From start to end it is in known_threads and watched: a function that neither sleeps
/// on an Event, nor marks its waits with ThreadInIO, nor calls reportAlive() for more than five seconds is
/// reported as dead.
///
/// Each thread catches SIGUSR1 and SIGHUP (see signalQuit and handleDeadlockedThreads). An exception that
/// leaves the function is reported in the bug file and ends the process.
class Thread : public ThreadRecord {
public:
    /// What getCPULoadSummary remembers of one thread until the next call.
    struct LoadBuffer {
        pthread_t thread;
        std::int64_t cpuTime;  ///< nanoseconds that the thread had used
        std::int64_t total;    ///< nanoseconds that the process had used then
    };

    /// The threads that are running, in the order of their starts; guarded by `mut`. Both live until the
    /// process ends, so that a detached thread may end after main has returned.
    static std::vector<Thread*>& known_threads;
    static Mutex& mut;
    static const pthread_t mainThread;

    /// `periodMs`: the function is called again after this many milliseconds of sleep; 0 and less: it is
    /// called once.
    Thread(Enums::OriginKey::Type key, std::function<void()>&& function, int periodMs);
    /// Requests the end and waits for it. A detached thread must have ended before.
    ~Thread();

    /// Starts the thread; quit requests from before are forgotten. On return it bears its name (at most the
    /// first 15 characters of the component's text, the kernel's limit) and is ready for signals.
    /// `stackSize` in bytes; 0 is the system's default. Less than 64 KB or than the system's minimum (128 KB
    /// on the device) becomes that. A detached thread cannot be joined.
    /// @return 0 or the error of pthread_create(3); EINVAL for a negative size; EBUSY, with nothing changed,
    /// while an earlier start still runs or is not joined.
    int start(bool detached, int stackSize);
    bool isRunning() const { return running_.get(); }
    /// The kernel's thread id of the last start, 0 before the first.
    int tid() const { return tid_; }

    /// Requests the end: a periodic thread ends after its current call, its sleep ends at once. Never blocks.
    void quit() { quitEvent_.Set(); }
    /// Is signalled when the thread shall end; the function may sleep on it, and others may set bits of
    /// their own.
    Event& quitEvent() { return quitEvent_; }
    /// Lets the system call in which the thread blocks return early with EINTR. Without effect when it is
    /// not running.
    void signalQuit();

    /// Waits for the thread's end; 0 at once when there is none. One that was started detached or joined
    /// before is logged as such. `result`, unless null, receives the thread's result, null on every error.
    /// @return 0 or the error of pthread_join(3), which is logged; there is nothing left to join either way.
    int join(void** result);
    void quitAndJoin();
    /// Waits, looking every 3 ms, but ends the whole process with status 66 after a bug report when the
    /// thread has not finished its function in time. 0 and less look once. @return 0.
    int joinOrExit(int timeoutMs);
    /// Whether there is a thread to join; one that was started detached or joined before is logged as such.
    bool isJoinNeeded();

    /// Sets the nice value of this thread. @return 0; -1 with errno set, ESRCH when it is not running.
    int setPriority(int nice);
    /// The same for the calling thread, whichever it is.
    static int setRunningThreadPriority(int nice);

    /// Unblock and block `signo` for the calling thread.
    static void registerSignal(int signo);
    static void unRegisterSignal(int signo);
    /// The same for what signalQuit sends.
    static void listenSignalQuit();
    static void ignoreSignalQuit();

    /// A sign of life of the calling thread, for functions that work longer than a few seconds between their
    /// sleeps. Waits for a watchdog pass to end. Without effect in a thread that is not a Thread.
    static void reportAlive();

    /// One pass of the watchdog, to be called every few seconds by a supervising thread. Who has not been
    /// alive for more than five seconds is warned about, once a stall with SIGHUP, upon which it writes its
    /// own backtrace to the bug file; after panicThreshold warnings in a row the counting begins anew.
    /// Sleeps 200 ms after each late thread and holds `mut` throughout.
    static void handleDeadlockedThreads();
    /// Whether as many warnings have been given as setPanicTreshold allows (5 by default).
    bool needPanicReset() const { return panicCounter_ >= panicThreshold_; }
    void setPanicTreshold(int warnings) { panicThreshold_ = warnings; }
    /// What is done when the warnings are used up: this system only logs that it does nothing.
    void panicReset();

    /// Writes one row for each known thread and the main thread: kernel id, its share of the process's CPU
    /// time in percent since the start and since the previous call, its CPU time in milliseconds, its name:
    ///
    ///     Thread CPU loads
    ///     tot -   since last
    ///       712   1.2 %    0.4 %         31 ms OneWire
    ///       708  97.9 %   99.6 %       2502 ms main
    ///
    /// The caller keeps `buffers` between calls, empty before the first (whose two shares are the same).
    static void getCPULoadSummary(std::ostream& out, std::vector<LoadBuffer>& buffers);

private:
    class Known;
    class Running;

    static void* entryPoint(void* thread);
    void run();
    void work();
    void logResourceUse() const;
    bool isAttached() const;
    void warn(time_t now, time_t alive);
    void signalDeadlocked(time_t alive);

    std::atomic<int> tid_{0};
    int period_;
    std::atomic<int> panicCounter_{0};
    std::atomic<int> panicThreshold_{5};
    Guarded<bool> running_{false};
    Event quitEvent_{false};
    std::function<void()> function_;
    pthread_t threadId_ = 0;
    bool joinable_ = true;
};

}  // namespace Valen
