#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <mutex>

#include "Tests/Common/Threads/SystemCalls.h"
#include "Tests/Common/Threads/ThreadWorld.h"

namespace {

using support::LogLine;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Valen::Thread;

constexpr int kService = 16;
constexpr int kUser = 17;
constexpr int kDebugLog = 18;

/// A thread that shows no sign of life since second 1000, and what is said of it.
class SilentThread : public ParkedThread {
public:
    using ParkedThread::ParkedThread;

    /// "OLED (id 140…/712)"
    std::string identity() const {
        return std::string(thread.name()) + " (id " + std::to_string(static_cast<long>(id())) + "/" +
               std::to_string(thread.tid()) + ")";
    }
    LogLine warning(int seconds) const {
        return {kService, 6,
                "Thread: WTG " + identity() + " no response since " + std::to_string(seconds) + "s"};
    }
};

class ThreadWatchdogTest : public ThreadWorld {
protected:
    ThreadWatchdogTest() {
        changed->monotonicSeconds = 1000;
        logErrorsOnly();
        Valen::Log::vlLog->SetComponentSeverity(kThreadKey, static_cast<Severity>(7));
    }

    /// What one pass writes, at that second.
    std::vector<LogLine> pass(int second) {
        changed->monotonicSeconds = second;
        Thread::handleDeadlockedThreads();
        return syslog.lines();
    }
    /// The first warning with what follows from it.
    void firstPass(int second) {
        std::vector<LogLine> lines = pass(second);
        while (std::find(lines.begin(), lines.end(), kDeadlock) == lines.end()) {
            const std::vector<LogLine> more = syslog.lines();
            lines.insert(lines.end(), more.begin(), more.end());
        }
    }

    static LogLine signalled(const char* name) {
        return {1, 4,
                std::string("signalDeadlocked() called for thread ") + name + "/" + std::to_string(gettid())};
    }
    int bugReports() {
        const std::string text = bugs();
        int count = 0;
        for (std::size_t at = 0; (at = text.find("Deadlock?", at)) != std::string::npos; ++at) {
            ++count;
        }
        return count;
    }

    const LogLine kDeadlock{1, 3, "Deadlock? (see bugs.txt)"};
    ChangedSystemCalls changed;
};

TEST_F(ThreadWatchdogTest, FiveSecondsOfSilenceAreNoDeath) {
    const SilentThread silent;
    EXPECT_THAT(pass(1000), IsEmpty());
    EXPECT_THAT(pass(1005), IsEmpty());
    EXPECT_THAT(pass(999), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(kBugs));
}

TEST_F(ThreadWatchdogTest, SixSecondsAreLoggedAsOneBecauseTheGraceIsTakenOff) {
    SilentThread silent;
    std::vector<LogLine> lines = pass(1006);
    silent.end();
    const std::vector<LogLine> more = syslog.lines();
    lines.insert(lines.end(), more.begin(), more.end());
    EXPECT_THAT(lines, UnorderedElementsAre(silent.warning(1), signalled("OLED"), kDeadlock));
    EXPECT_EQ(silent.warning(1), lines.at(0));
    EXPECT_THAT(bugs(),
                ContainsRegex("\\(OLED " + std::to_string(silent.thread.tid()) + "\\) Deadlock\\?\n.+\\[0x"));
}

TEST_F(ThreadWatchdogTest, ASilentThreadIsWarnedFiveTimesAndSignalledOnceAndThenCountingBeginsAnew) {
    SilentThread silent;
    firstPass(1010);
    EXPECT_THAT(pass(1020), ElementsAre(silent.warning(15)));
    EXPECT_THAT(pass(1030), ElementsAre(silent.warning(25)));
    EXPECT_THAT(pass(1040), ElementsAre(silent.warning(35)));
    EXPECT_FALSE(silent.thread.needPanicReset());
    EXPECT_THAT(pass(1050), ElementsAre(silent.warning(45)));
    EXPECT_TRUE(silent.thread.needPanicReset());
    EXPECT_THAT(
        pass(1060),
        ElementsAre(LogLine{kUser, 3, "Thread: WTG RESET " + silent.identity() + " no response since 55s"},
                    LogLine{kService, 6, "Thread: WTG RESET not implemented for Thread OLED"}));
    EXPECT_FALSE(silent.thread.needPanicReset());
    EXPECT_THAT(pass(1070), ElementsAre(silent.warning(65)));
    silent.end();
    EXPECT_EQ(1, bugReports());
}

TEST_F(ThreadWatchdogTest, TheNumberOfWarningsCanBeChosen) {
    SilentThread silent;
    silent.thread.setPanicTreshold(1);
    firstPass(1010);
    EXPECT_TRUE(silent.thread.needPanicReset());
    EXPECT_EQ(2U, pass(1020).size());
    EXPECT_THAT(pass(1030), ElementsAre(silent.warning(25)));
}

TEST_F(ThreadWatchdogTest, WithoutWarningsEveryPassIsAResetAndNobodyIsSignalled) {
    SilentThread silent;
    silent.thread.setPanicTreshold(0);
    EXPECT_EQ(2U, pass(1010).size());
    EXPECT_EQ(2U, pass(1020).size());
    silent.end();
    EXPECT_FALSE(std::filesystem::exists(kBugs));
}

TEST_F(ThreadWatchdogTest, ASignOfLifeEndsTheCounting) {
    SilentThread silent;
    silent.thread.setPanicTreshold(1);
    firstPass(1010);
    silent.thread.setAliveTime({.tv_sec = 1019, .tv_nsec = 0});
    EXPECT_THAT(pass(1020), IsEmpty());
    EXPECT_FALSE(silent.thread.needPanicReset());
}

TEST_F(ThreadWatchdogTest, EachStallIsSignalledOnce) {
    SilentThread silent;
    firstPass(1010);
    EXPECT_THAT(pass(1011), ElementsAre(silent.warning(6)));
    silent.thread.setAliveTime({.tv_sec = 1012, .tv_nsec = 0});
    firstPass(1020);
    EXPECT_THAT(pass(1021), ElementsAre(silent.warning(4)));
    silent.end();
    EXPECT_EQ(2, bugReports());
}

TEST_F(ThreadWatchdogTest, TheSignalIsADebugMessageOfTheThreadsComponent) {
    logInDetail(kOled);
    SilentThread silent;
    const std::vector<LogLine> lines = pass(1010);
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(silent.warning(5), lines[0]);
    EXPECT_EQ(
        (LogLine{kDebugLog, 6, "OLED: signalDeadlocked() called for thread " + std::to_string(gettid())}),
        lines[1]);
}

TEST_F(ThreadWatchdogTest, AThreadThatSleepsOnAnEventIsNeverTakenForDead) {
    Thread sleeper(
        kOled, [&sleeper] { sleeper.quitEvent().Wait(false); }, 0);
    sleeper.start(false, 0);
    waitUntil([&sleeper] { return sleeper.isInIO(); });
    for (int second = 1000; second <= 1060; ++second) {
        EXPECT_THAT(pass(second), IsEmpty());
    }
    EXPECT_FALSE(std::filesystem::exists(kBugs));
}

TEST_F(ThreadWatchdogTest, AWaitOnPurposeEndsTheCounting) {
    SilentThread silent;
    silent.thread.setPanicTreshold(1);
    firstPass(1010);
    silent.thread.enterIO();
    EXPECT_THAT(pass(1020), IsEmpty());
    silent.thread.leaveIO();
    EXPECT_FALSE(silent.thread.needPanicReset());
}

TEST_F(ThreadWatchdogTest, AStartResetsTheCounting) {
    SilentThread silent;
    silent.thread.setPanicTreshold(1);
    firstPass(1010);
    EXPECT_TRUE(silent.thread.needPanicReset());
    silent.end();
    silent.thread.start(false, 0);
    EXPECT_FALSE(silent.thread.needPanicReset());
}

TEST_F(ThreadWatchdogTest, EveryLateThreadCostsAPause) {
    SilentThread first;
    SilentThread second(kOneWire);
    const auto start = std::chrono::steady_clock::now();
    std::vector<LogLine> lines = pass(1006);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(400));
    const auto position = [&lines](const LogLine& line) {
        return std::find(lines.begin(), lines.end(), line);
    };
    EXPECT_LT(position(first.warning(1)), position(second.warning(1)));
    EXPECT_NE(lines.end(), position(second.warning(1)));
    EXPECT_NE(lines.end(), position(signalled("OneWire")));
}

TEST_F(ThreadWatchdogTest, AThreadThatEndsDuringAPassWaitsForIt) {
    ParkedThread ending(kOneWire);
    {
        const std::lock_guard pass(Thread::mut);
        ending.letGo();
        EXPECT_THAT(Thread::known_threads, ElementsAre(&ending.thread));
        EXPECT_TRUE(ending.thread.isRunning());
    }
    ending.end();
    EXPECT_THAT(Thread::known_threads, IsEmpty());
}

TEST_F(ThreadWatchdogTest, PassesRunBesideThreadsThatComeAndGo) {
    std::atomic<bool> stop = false;
    Thread watchdog(
        kOneWire,
        [&stop] {
            while (!stop) {
                Thread::handleDeadlockedThreads();
            }
        },
        0);
    watchdog.start(false, 0);
    for (int start = 0; start < 50; ++start) {
        Thread thread(
            kOled, [] { Thread::reportAlive(); }, 0);
        EXPECT_EQ(0, thread.start(start % 2 == 0, 0));
        waitUntil([&thread] { return !thread.isRunning(); });
    }
    stop = true;
    watchdog.join(nullptr);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

}  // namespace
