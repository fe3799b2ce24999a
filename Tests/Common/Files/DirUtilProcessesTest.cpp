// DirUtil: programs started without a shell, and their ends.
#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <utility>
#include <vector>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/DirUtil.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::DirUtil;

#ifdef SYS_vfork
constexpr std::initializer_list<long> kStartsOfProcesses = {SYS_clone, SYS_clone3, SYS_fork, SYS_vfork};
#else
constexpr std::initializer_list<long> kStartsOfProcesses = {SYS_clone, SYS_clone3};
#endif

class DirUtilProcessesTest : public LoggedWorld {
protected:
    static bool hasChildren() { return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD; }

    static std::string number(int value) { return std::to_string(value); }
};

TEST_F(DirUtilProcessesTest, TheResultIsTheExitStatus) {
    EXPECT_EQ(0, DirUtil::Exec("true", nullptr));
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_EQ(1, DirUtil::Exec("/bin/false", nullptr));
    EXPECT_EQ(200, DirUtil::Exec("sh", "-c", "exit 200", nullptr));
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("result of /bin/false is 1"), debugLine("result of sh is 200")));
}

TEST_F(DirUtilProcessesTest, AProgramThatDoesNotExistGives255) {
    EXPECT_EQ(255, DirUtil::Exec("/tmp/missing", "x", nullptr));
    EXPECT_EQ(255, DirUtil::Exec("", nullptr));
    world.write("/tmp/no-program", "text");
    EXPECT_EQ(255, DirUtil::Exec("/tmp/no-program", nullptr));
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("result of /tmp/missing is 255"), debugLine("result of  is 255"),
                            debugLine("result of /tmp/no-program is 255")));
}

TEST_F(DirUtilProcessesTest, AChildKilledByASignalCountsAsZeroOnPurpose) {
    EXPECT_EQ(0, DirUtil::Exec("sh", "-c", "kill -9 $$", nullptr));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilProcessesTest, ArgumentsReachTheProgramUnharmed) {
    const std::vector<std::string> arguments = {"a b", "",   "'\"`$HOME`\"'", "x; rm -rf y", "two\nlines",
                                                "*",   "-x", "\xff\x01"};
    const auto& a = arguments;
    EXPECT_EQ(0, DirUtil::Exec("sh", "-c", "for word; do printf '%s|' \"$word\"; done > /tmp/words", "sh",
                               a[0].c_str(), a[1].c_str(), a[2].c_str(), a[3].c_str(), a[4].c_str(),
                               a[5].c_str(), a[6].c_str(), a[7].c_str(), nullptr));
    std::string expected;
    for (const std::string& word : arguments) {
        expected += word + "|";
    }
    EXPECT_EQ(expected, world.read("/tmp/words"));
}

TEST_F(DirUtilProcessesTest, AProgramWithAnAwkwardNameIsFound) {
    const std::string program = "/tmp/my program; exit 1\n";
    std::filesystem::copy_file("/bin/true", program);
    EXPECT_EQ(0, DirUtil::Exec(program.c_str(), nullptr));
}

template <std::size_t... Index>
int execWithManyArguments(std::index_sequence<Index...>) {
    static const std::array<std::string, sizeof...(Index)> words{(std::to_string(Index))...};
    return DirUtil::Exec("sh", "-c", "echo \"$@\" > /tmp/words", "sh", words[Index].c_str()..., nullptr);
}

TEST_F(DirUtilProcessesTest, AnyNumberOfArgumentsIsPassed) {
    EXPECT_EQ(0, execWithManyArguments(std::make_index_sequence<500>()));
    EXPECT_EQ(outputOf("seq -s ' ' 0 499") + "\n", world.read("/tmp/words"));
}

TEST_F(DirUtilProcessesTest, TheProgramSeesThisProcesssEnvironment) {
    setenv("COLOUR", "deep blue", 1);
    EXPECT_EQ(0, DirUtil::Exec("sh", "-c", "test \"$COLOUR\" = 'deep blue'", nullptr));
    unsetenv("COLOUR");
    EXPECT_EQ(0, DirUtil::Exec("sh", "-c", "test -z \"$COLOUR\"", nullptr));
}

TEST_F(DirUtilProcessesTest, AThousandRunsLeaveNoDescriptorAndNoChild) {
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(0, DirUtil::Exec("/bin/true", nullptr));
    }
    EXPECT_EQ(before, openDescriptors());
    EXPECT_FALSE(hasChildren());
}

TEST_F(DirUtilProcessesTest, WithoutAProcessNothingRuns) {
    EXPECT_TRUE(holdsInChild([] {
        denySystemCalls(kStartsOfProcesses, EAGAIN);
        std::array<const char*, 1> environment{};
        return DirUtil::Exec("true", nullptr) == -1 &&
               DirUtil::execNonBlockingEnvironment(environment.data(), "false", nullptr) == -1;
    }));
    EXPECT_THAT(logged(), ElementsAre(errorLine("unable to vfork true: Resource temporarily unavailable"),
                                      errorLine("unable to vfork false: Resource temporarily unavailable")));
}

TEST_F(DirUtilProcessesTest, AChildThatIsCollectedElsewhereCannotBeWaitedFor) {
    signal(SIGCHLD, SIG_IGN);  // the kernel collects
    EXPECT_EQ(-1, DirUtil::Exec("true", nullptr));
    signal(SIGCHLD, SIG_DFL);
    const auto lines = logged();
    ASSERT_EQ(1U, lines.size());
    EXPECT_THAT(lines[0].text, testing::MatchesRegex("Firmware: failed to wait for process [0-9]+!"));
}

TEST_F(DirUtilProcessesTest, SignalsToTheCallerDoNotEndTheWait) {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 5'000}, {0, 5'000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(7, DirUtil::Exec("sh", "-c", "sleep 0.1; exit 7", nullptr));
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    signal(SIGALRM, SIG_DFL);
}

TEST_F(DirUtilProcessesTest, AStartedProgramHasItsOwnEnvironmentAndIsLogged) {
    std::array<const char*, 3> environment{"COLOUR=deep blue", "SIZE=3", nullptr};
    const int pid = DirUtil::execNonBlockingEnvironment(
        environment.data(), "sh", "-c", "exit $(test \"$COLOUR$HOME\" = 'deep blue' && echo $SIZE)", nullptr);
    EXPECT_EQ(3, DirUtil::waitForProcess(pid));
    EXPECT_THAT(logged(), ElementsAre(debugLine("started process 'sh' with pid " + number(pid)),
                                      debugLine("result of process " + number(pid) + " is 3")));
}

TEST_F(DirUtilProcessesTest, AStartedProgramThatCannotRunIsAChildThatEndsWith255) {
    std::array<const char*, 1> environment{};
    const int pid = DirUtil::execNonBlockingEnvironment(environment.data(), "/tmp/missing", nullptr);
    EXPECT_LT(0, pid);
    EXPECT_EQ(255, DirUtil::waitForProcess(pid));
}

TEST_F(DirUtilProcessesTest, InvalidPidsAreLoggedAndReturned) {
    for (const int pid : {0, -1, -4711}) {
        EXPECT_EQ(pid, DirUtil::terminateProcess(pid, true));
        EXPECT_THAT(logged(),
                    ElementsAre(debugLine("failed to terminate process " + number(pid) + ": invalid pid!"),
                                debugLine("failed to wait for process " + number(pid) + ": invalid pid!")));
        EXPECT_FALSE(DirUtil::killProcess(pid, false));
        EXPECT_THAT(logged(),
                    ElementsAre(debugLine("failed to terminate process " + number(pid) + ": invalid pid!")));
        EXPECT_EQ(pid, DirUtil::waitForProcess(pid));
        EXPECT_THAT(logged(),
                    ElementsAre(debugLine("failed to wait for process " + number(pid) + ": invalid pid!")));
    }
}

TEST_F(DirUtilProcessesTest, WhoIsNoChildCannotBeWaitedFor) {
    EXPECT_EQ(-1, DirUtil::waitForProcess(getpid()));
    EXPECT_THAT(logged(), ElementsAre(debugLine("failed to wait for process " + number(getpid()) + "!")));
}

/// Children that talk to the test through named pipes.
class TerminateTest : public DirUtilProcessesTest {
protected:
    TerminateTest() { outputOf("mkfifo /tmp/ready /tmp/go"); }

    /// Starts a shell that says when it is ready. @return its pid.
    int startReady(const char* before, const char* after) {
        const std::string script = std::string(before) + "; echo > /tmp/ready; " + after;
        const int pid = DirUtil::execNonBlockingEnvironment(const_cast<const char**>(environ), "sh", "-c",
                                                            script.c_str(), nullptr);
        world.read("/tmp/ready");
        logged();
        return pid;
    }

    /// A pid that belongs to nobody: its process has ended and was collected.
    int formerChild() {
        const int pid = startReady(":", "exit 0");
        EXPECT_EQ(0, DirUtil::waitForProcess(pid));
        return pid;
    }
};

TEST_F(TerminateTest, AChildEndsAndCountsAsZero) {
    for (const bool force : {false, true}) {
        EXPECT_EQ(0, DirUtil::terminateProcess(startReady(":", "exec sleep 1000"), force));
        EXPECT_THAT(logged(), IsEmpty());
    }
    EXPECT_FALSE(hasChildren());
}

TEST_F(TerminateTest, AChildThatCatchesTheSignalGivesItsStatus) {
    const int pid = startReady("trap 'exit 9' TERM", "read line < /tmp/go");
    EXPECT_EQ(9, DirUtil::terminateProcess(pid, false));
    EXPECT_THAT(logged(), ElementsAre(debugLine("result of process " + number(pid) + " is 9")));
}

TEST_F(TerminateTest, AChildMayIgnoreTheFriendlySignal) {
    const int pid = startReady("trap '' TERM", "read line < /tmp/go; exit 5");
    EXPECT_TRUE(DirUtil::killProcess(pid, false));
    world.write("/tmp/go", "\n");
    EXPECT_EQ(5, DirUtil::waitForProcess(pid));
}

TEST_F(TerminateTest, ForceEndsAChildThatIgnoresTheFriendlySignal) {
    const int pid = startReady("trap '' TERM", "read line < /tmp/go; exit 5");
    EXPECT_TRUE(DirUtil::killProcess(pid, false));
    EXPECT_EQ(0, DirUtil::terminateProcess(pid, true));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(TerminateTest, KillingDoesNotWait) {
    const int pid = startReady(":", "exec sleep 1000");
    EXPECT_TRUE(DirUtil::killProcess(pid, true));
    EXPECT_EQ(0, kill(pid, 0));  // still there to be collected
    EXPECT_EQ(0, DirUtil::waitForProcess(pid));
}

TEST_F(TerminateTest, AProcessThatIsGoneCannotBeKilledAndIsWaitedForInVainOnPurpose) {
    const int pid = formerChild();
    EXPECT_EQ(-1, DirUtil::terminateProcess(pid, false));
    EXPECT_THAT(logged(),
                ElementsAre(serviceLine("unable to kill process " + number(pid) + ": No such process"),
                            debugLine("failed to wait for process " + number(pid) + "!")));
    EXPECT_FALSE(DirUtil::killProcess(pid, true));
    EXPECT_THAT(logged(), ElementsAre(serviceLine("unable to force kill process " + number(pid) +
                                                  ": No such process")));
}

}  // namespace
