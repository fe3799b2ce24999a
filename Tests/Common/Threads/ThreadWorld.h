#pragma once

#include <gmock/gmock.h>
#include <semaphore.h>

#include <ctime>
#include <memory>
#include <string>
#include <thread>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"
#include "Vl/Common/Log/LogImpl.h"
#include "Vl/Common/Threads/Thread.h"

inline constexpr auto kThreadKey = static_cast<Enums::OriginKey::Type>(34);
inline constexpr auto kOled = static_cast<Enums::OriginKey::Type>(61);
inline constexpr auto kOneWire = static_cast<Enums::OriginKey::Type>(68);

/// Waits for what another thread or the kernel is about to do; the test's own time limit ends it.
template <typename Condition>
void waitUntil(Condition condition) {
    while (!condition()) {
        std::this_thread::yield();
    }
}

/// Threads wait for what another one says once. In slices, because a sanitizer hands signals on where a call
/// begins or ends: one that comes just before the thread falls asleep would wait for its end.
class Gate {
public:
    Gate() { sem_init(&semaphore_, 0, 0); }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() { sem_destroy(&semaphore_); }

    void open() { sem_post(&semaphore_); }
    void wait() {
        timespec slice{};
        do {
            clock_gettime(CLOCK_REALTIME, &slice);
            ++slice.tv_sec;
        } while (sem_timedwait(&semaphore_, &slice) != 0);
        sem_post(&semaphore_);
    }

private:
    sem_t semaphore_;
};

/// A running thread that stands still in its function, and shows no sign of life, until it is let go.
class ParkedThread {
public:
    explicit ParkedThread(Enums::OriginKey::Type key = kOled)
        : thread(
              key,
              [this] {
                  id_ = pthread_self();
                  inside_.open();
                  leave_.wait();
              },
              0) {
        thread.start(false, 0);
        inside_.wait();
    }
    ParkedThread(const ParkedThread&) = delete;
    ParkedThread& operator=(const ParkedThread&) = delete;
    ~ParkedThread() { end(); }

    void letGo() { leave_.open(); }
    void end() {
        letGo();
        thread.quitAndJoin();
    }
    pthread_t id() const { return id_; }

private:
    pthread_t id_{};
    Gate inside_;
    Gate leave_;

public:
    Valen::Thread thread;
};

/// An outside world with the bug file's directory, and an open log at its default thresholds.
class ThreadWorld : public testing::Test {
protected:
    using Severity = Valen::Log::SeverityLevel::SeverityLevel_T;
    static constexpr const char* kBugs = "/opt/fw/log/bugs.txt";

    ThreadWorld() {
        support::PrivateWorld::makeDirectory("/opt/fw/log");
        Valen::Log::vlLog = std::make_unique<Valen::Log::LogImpl>();
        Valen::Log::vlLog->LogInit();
        syslog.lines();
    }
    ~ThreadWorld() override { Valen::Log::vlLog.reset(); }

    /// Threads that come and go would fill the log's queue.
    static void logErrorsOnly() { Valen::Log::vlLog->setGlobalComponentSeverity(static_cast<Severity>(3)); }
    static void logInDetail(Enums::OriginKey::Type key) {
        Valen::Log::vlLog->SetComponentSeverity(key, static_cast<Severity>(8));
    }
    static std::string bugs() { return support::PrivateWorld::read(kBugs); }

    support::PrivateWorld world;
    support::SyslogReceiver syslog;
};
