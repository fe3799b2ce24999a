// The example daemon as a process of its own.
#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"
#include "Vl/Common/Streams/InputStream.h"

namespace {

using testing::Contains;
using testing::MatchesRegex;

/// What the daemon writes into its status file.
struct Status {
    int version;
    long pid;
    long runs;
    std::string state;
};

class DaemonTest : public testing::Test {
protected:
    void TearDown() override {
        if (daemon > 0) {
            kill(daemon, SIGKILL);
            waitpid(daemon, nullptr, 0);
        }
    }

    void start(std::vector<const char*> arguments) {
        arguments.insert(arguments.begin(), EXAMPLE_DAEMON);
        arguments.push_back(nullptr);
        ASSERT_EQ(0, posix_spawn(&daemon, EXAMPLE_DAEMON, nullptr, nullptr,
                                 const_cast<char**>(arguments.data()), environ));
    }

    /// Takes the syslog lines meanwhile: the daemon would wait for a reader that does not read.
    void waitUntil(const std::function<bool()>& condition) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline);
            takeLines();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    void takeLines() {
        for (const std::string& line : syslog.texts()) {
            lines.push_back(line);
        }
    }

    /// @return the exit status, -1 when a signal ended the daemon.
    int exitStatus() {
        int status = 0;
        waitUntil([&] { return waitpid(daemon, &status, WNOHANG) == daemon; });
        daemon = -1;
        takeLines();
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    static Status readStatus() {
        const std::string bytes = support::PrivateWorld::read(kStatusFile);
        Valen::InputStream record(bytes.data(), bytes.size());
        Status status{record.getUInt16(), record.getUInt32(), record.getUInt32(), record.getString().c_str()};
        EXPECT_EQ(0, record.GetRemainingSize());
        return status;
    }
    static bool hasRun(long times) {
        return std::filesystem::exists(kStatusFile) && readStatus().runs >= times;
    }

    static constexpr const char* kStatusFile = "/tmp/daemon.status";

    support::PrivateWorld world;
    support::SyslogReceiver syslog;
    std::vector<std::string> lines;
    pid_t daemon = -1;
};

TEST_F(DaemonTest, ItWorksUntilItIsToldToEnd) {
    start({kStatusFile, "5"});
    waitUntil([] { return hasRun(3); });
    const Status working = readStatus();
    EXPECT_EQ(1, working.version);
    EXPECT_EQ(daemon, working.pid);
    EXPECT_EQ("working", working.state);

    kill(daemon, SIGTERM);
    EXPECT_EQ(0, exitStatus());
    const Status ended = readStatus();
    EXPECT_EQ("ended", ended.state);
    EXPECT_GE(ended.runs, working.runs);
    EXPECT_EQ("Logging: ******* Logging started *******", lines.front());
    EXPECT_THAT(lines, Contains(MatchesRegex("Firmware: Firmware \\(pid: [0-9]+\\)")));
    EXPECT_THAT(lines, Contains("Firmware: ended after " + std::to_string(ended.runs) + " runs"));
    EXPECT_EQ("Logging: ******* Logging shutdown ******", lines.back());
}

TEST_F(DaemonTest, ASleepingWorkerEndsAtOnceToo) {
    start({kStatusFile, "3600000"});
    waitUntil([] { return hasRun(1); });
    kill(daemon, SIGTERM);
    EXPECT_EQ(0, exitStatus());
    EXPECT_EQ(1, readStatus().runs);
}

TEST_F(DaemonTest, AStatusFileThatCannotBeWrittenIsLogged) {
    const std::string expected = "Firmware: cannot write /tmp/absent/status: ";
    start({"/tmp/absent/status", "3600000"});
    waitUntil([&] { return !lines.empty() && lines.back().starts_with(expected); });
    EXPECT_EQ(expected + "No such file or directory", lines.back());
    kill(daemon, SIGTERM);
    EXPECT_EQ(0, exitStatus());
}

TEST_F(DaemonTest, WithoutAFileItSaysHowToCallIt) {
    start({});
    EXPECT_EQ(1, exitStatus());
    EXPECT_TRUE(lines.empty());
}

}  // namespace
