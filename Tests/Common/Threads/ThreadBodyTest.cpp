#include <pthread.h>

#include <csignal>
#include <filesystem>
#include <stdexcept>

#include "Tests/Common/Threads/ThreadWorld.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using Valen::Thread;

class ThreadBodyTest : public ThreadWorld {
protected:
    ThreadBodyTest() { logErrorsOnly(); }

    /// In a child process.
    static void runToTheEnd(std::function<void()> function) {
        Thread thread(kOled, std::move(function), 0);
        thread.start(false, 0);
        thread.join(nullptr);
    }
};

using ThreadBodyDeathTest = ThreadBodyTest;

TEST_F(ThreadBodyDeathTest, AnExceptionThatLeavesTheFunctionIsReportedAndEndsTheProcess) {
    EXPECT_EXIT(runToTheEnd([] { throw std::runtime_error("100 %s"); }), testing::KilledBySignal(SIGABRT),
                "");
    EXPECT_THAT(bugs(),
                ContainsRegex("\\(OLED [0-9]+\\) thread OLED, Src/Vl/Common/Thread line 280, entryPoint: "
                              "a std::exception was thrown: 100 %s\n$"));
}

TEST_F(ThreadBodyDeathTest, AnExceptionOfAnyOtherTypeIsReportedAsUnknown) {
    EXPECT_EXIT(runToTheEnd([] { throw 42; }), testing::KilledBySignal(SIGABRT), "");
    EXPECT_THAT(bugs(),
                HasSubstr(") thread OLED, Src/Vl/Common/Thread line 280, entryPoint: an unknown exception "
                          "was thrown\n"));
}

TEST_F(ThreadBodyDeathTest, AnEmptyFunctionIsReportedAsTheExceptionThatItThrows) {
    EXPECT_EXIT(runToTheEnd(nullptr), testing::KilledBySignal(SIGABRT), "");
    EXPECT_THAT(bugs(), HasSubstr("entryPoint: a std::exception was thrown: bad_function_call\n"));
}

TEST_F(ThreadBodyDeathTest, AReportedThreadIsNamedAsTheKernelKnowsIt) {
    const auto longName = static_cast<Enums::OriginKey::Type>(9);
    EXPECT_EXIT(
        {
            Thread thread(
                longName, [] { throw std::runtime_error("x"); }, 0);
            thread.start(false, 0);
            thread.join(nullptr);
        },
        testing::KilledBySignal(SIGABRT), "");
    EXPECT_THAT(bugs(), ContainsRegex("\\(DeprecatedSwitchAccess [0-9]+\\) thread DeprecatedSwitc, Src"));
}

TEST_F(ThreadBodyTest, AThreadThatIsEndedFromWithinIsNoExceptionAndIsKnownNoMore) {
    int some = 0;
    Thread thread(
        kOled, [&some] { pthread_exit(&some); }, 0);
    thread.start(false, 0);
    void* result = nullptr;
    EXPECT_EQ(0, thread.join(&result));
    EXPECT_EQ(&some, result);
    EXPECT_FALSE(thread.isRunning());
    EXPECT_THAT(Thread::known_threads, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(kBugs));
}

}  // namespace
