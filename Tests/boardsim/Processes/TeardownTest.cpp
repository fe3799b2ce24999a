// Nothing of a board is left, however boardsim ends. The test program has a mount namespace of its own with
// empty /tmp and /dev/shm (but for a checkout that may lie in /tmp), so that everything new in there is from
// its boards.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/boardsim/Support/OwnBuild.h"
#include "Tests/boardsim/Support/Process.h"
#include "Tools/boardsim/Host/Mounts.h"

namespace {

namespace fs = std::filesystem;
using processes::onBoard;
using processes::Process;
using testing::IsEmpty;

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class TeardownTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        boardsim::enterPrivateMounts();
        boardsim::coverDirectory("/tmp", processes::holdsOwnBuild);
        boardsim::coverDirectory("/dev/shm", boardsim::keepNothing);
    }

    void SetUp() override {
        setenv("BOARDSIM_MARK", mark.c_str(), 1);
        devices = namesIn("/dev");
        temporaries = namesIn("/tmp");
        mounts = contents("/proc/self/mountinfo");
    }

    /// Processes that have the test's mark in their environment, but for the test program itself.
    std::vector<std::string> markedProcesses() const {
        std::vector<std::string> found;
        for (const fs::directory_entry& process : fs::directory_iterator("/proc")) {
            const std::string id = process.path().filename();
            const bool isOther =
                std::isdigit(static_cast<unsigned char>(id[0])) && id != std::to_string(getpid());
            if (isOther && contents(process.path() / "environ").find(mark) != std::string::npos) {
                found.push_back(id + " " + contents(process.path() / "cmdline"));
            }
        }
        return found;
    }

    void TearDown() override {
        unsetenv("BOARDSIM_MARK");
        EXPECT_THAT(markedProcesses(), IsEmpty());
        EXPECT_EQ(mounts, contents("/proc/self/mountinfo"));
        EXPECT_EQ(devices, namesIn("/dev"));
        EXPECT_EQ(temporaries, namesIn("/tmp"));
        EXPECT_THAT(namesIn("/dev/shm"), IsEmpty());
    }

    /// A program that fills the board with things that could stay behind: a child, files, open devices.
    static std::vector<std::string> untidyProgram(const std::string& ending) {
        return {"/bin/sh", "-c",
                "touch /tmp/left /opt/left /dev/left; exec 8</dev/fpga; " CLIENT " hang:child & " CLIENT
                " draw:1 state:1 log:x; " +
                    ending};
    }

    std::string mark = "BOARDSIM_MARK=" + std::to_string(getpid()) + "." +
                       testing::UnitTest::GetInstance()->current_test_info()->name();
    std::vector<std::string> devices;
    std::vector<std::string> temporaries;
    std::string mounts;
};

TEST_F(TeardownTest, AfterTheProgramsEnd) {
    std::string output;
    EXPECT_EQ(3, processes::runToEnd(onBoard({"--log", "-"}, untidyProgram("exit 3")), output));
    EXPECT_NE(std::string::npos, output.find("boardsim_test_client: x")) << output;
}

TEST_F(TeardownTest, AfterATimeOut) {
    std::string output;
    EXPECT_EQ(124, processes::runToEnd(onBoard({"--timeout", "0.2"}, untidyProgram("exec " CLIENT " hang:x")),
                                       output));
}

class TeardownBySignal : public TeardownTest, public testing::WithParamInterface<int> {};

TEST_P(TeardownBySignal, Sent) {
    // What comes out at the end: nothing of it may be there when there was no end.
    const support::TemporaryDirectory outputs;
    Process board(onBoard({"--frame", outputs.file("frame"), "--screenshot", outputs.file("panel.png")},
                          untidyProgram("exec " CLIENT " hang:ready")));
    board.waitForOutput("child");
    board.waitForOutput("ready");
    board.signal(GetParam());
    EXPECT_EQ(128 + GetParam(), board.wait());
    // The pipe ends when the last process of the board is gone: after SIGKILL that may be a moment later.
    board.readToEnd();
    const std::vector<std::string> all{"frame", "panel.png"};
    EXPECT_EQ(GetParam() == SIGKILL ? std::vector<std::string>{} : all, namesIn(outputs.file("")));
}

TEST_F(TeardownTest, AfterBoardsimIsKilledBeforeAFrameWasSent) {
    const support::TemporaryDirectory outputs;
    Process board(onBoard({"--frame", outputs.file("frame"), "--screenshot", outputs.file("panel.png")},
                          {CLIENT, "hang:ready"}));
    board.waitForOutput("ready");
    EXPECT_THAT(namesIn(outputs.file("")), IsEmpty());
    board.signal(SIGKILL);
    EXPECT_EQ(128 + SIGKILL, board.wait());
    board.readToEnd();
    EXPECT_THAT(namesIn(outputs.file("")), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Signals, TeardownBySignal, testing::Values(SIGTERM, SIGINT, SIGKILL));

TEST_F(TeardownTest, AfterBoardsimIsKilledWhileItsProgramWritesFrames) {
    Process board(onBoard({}, {"/bin/sh", "-c", "while :; do " CLIENT " draw:1 state:1; echo drawn; done"}));
    board.waitForOutput("drawn");
    board.signal(SIGKILL);
    EXPECT_EQ(128 + SIGKILL, board.wait());
    board.readToEnd();
}

TEST_F(TeardownTest, AfterBoardsimIsKilledWhileItTraces) {
    Process board(onBoard({"--trace", "/dev/null"}, {CLIENT, "led:1", "draw:1", "hang:ready"}));
    board.waitForOutput("ready");
    board.signal(SIGKILL);
    EXPECT_EQ(128 + SIGKILL, board.wait());
    board.readToEnd();
}

TEST_F(TeardownTest, AfterTheBoardsOwnProcessesAreKilled) {
    Process board(onBoard({}, {CLIENT, "hang:ready"}));
    board.waitForOutput("ready");
    std::istringstream children(contents("/proc/" + std::to_string(board.id()) + "/task/" +
                                         std::to_string(board.id()) + "/children"));
    pid_t keeper = 0;
    ASSERT_TRUE(children >> keeper);
    kill(keeper, SIGKILL);
    EXPECT_NE(std::string::npos, board.readToEnd().find("the board's processes were killed"));
    EXPECT_EQ(125, board.wait());
}

TEST_F(TeardownTest, AfterABoardThatCouldNotBeMade) {
    const auto withoutFuse = [] {
        boardsim::enterPrivateMounts();
        boardsim::coverDirectory("/dev", [](std::string_view name) { return name != "fuse"; });
        return true;
    };
    std::string output;
    EXPECT_EQ(125, processes::runToEnd(onBoard({}, {"/bin/true"}), output, withoutFuse));
}

TEST_F(TeardownTest, ManyBoardsAtOnceDoNotMeet) {
    constexpr int kBoards = 8;
    const char* const keys[kBoards] = {"left", "right", "red", "cw", "ccw", "2xleft", "3xright", "4xred"};
    const char* const counters[kBoards] = {"0x00000001", "0x00000010", "0x00000100", "0x00010000",
                                           "0x00ff0000", "0x00000002", "0x00000030", "0x00000400"};
    std::vector<std::unique_ptr<Process>> boards;
    for (int i = 0; i < kBoards; ++i) {
        boards.push_back(std::make_unique<Process>(
            onBoard({"--keys", keys[i], "--frame", "/tmp/frame" + std::to_string(i)},
                    {CLIENT, "await:1", "draw:" + std::to_string(i + 1)})));
    }
    for (int i = 0; i < kBoards; ++i) {
        const auto index = static_cast<std::size_t>(i);
        EXPECT_EQ(counters[i] + std::string("\n"), boards[index]->readToEnd());
        EXPECT_EQ(0, boards[index]->wait());
        const std::string frame = "/tmp/frame" + std::to_string(i);
        EXPECT_EQ(std::string(15360, static_cast<char>(i + 1)), contents(frame));
        fs::remove(frame);
    }
}

}  // namespace
