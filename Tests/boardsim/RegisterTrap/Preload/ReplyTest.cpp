// Real programs whose registers are answered by this test.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/boardsim/RegisterTrap/Preload/Event.h"

namespace registertrap {

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kRegisters = "/tmp/registers.socket";
constexpr const char* kReports = "/tmp/reports.socket";

sockaddr_un addressOf(const char* path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, path);
    return address;
}

int boundSocket(const char* path, int type) {
    ::unlink(path);
    const sockaddr_un address = addressOf(path);
    const int made = ::socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    EXPECT_EQ(::bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    return made;
}

class ReplyTest : public testing::Test {
protected:
    /// What the board answers; nothing: it goes away instead.
    using Answer = std::function<std::optional<std::uint64_t>(const Event&)>;

    ReplyTest() {
        world_.write("/dev/fpga", std::string(0x2000, '\0'));
        world_.write("/tmp/panel/other", "");
        listener_ = boundSocket(kRegisters, SOCK_SEQPACKET);
        EXPECT_EQ(::listen(listener_, 8), 0);
    }
    ~ReplyTest() override { goAway(); }

    void run(const char* action, Answer answer) {
        answer_ = std::move(answer);
        int errors[2];
        ASSERT_EQ(::pipe2(errors, O_CLOEXEC), 0);
        const pid_t process = ::fork();
        ASSERT_GE(process, 0);
        if (process == 0) {
            ::dup2(errors[1], STDERR_FILENO);
            ::setenv("LD_PRELOAD", TRAP_LIBRARY, 1);
            ::setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
            ::setenv("BOARDSIM_REGISTER_SOCKET", kRegisters, 1);
            ::setenv("BOARDSIM_REGISTER_RANGES", ranges_, 1);
            if (reports_ >= 0) {
                ::setenv("BOARDSIM_TRAP_SOCKET", kReports, 1);
            }
            ::execl(TRAPPED_PROGRAM, TRAPPED_PROGRAM, action, nullptr);
            ::_exit(127);
        }
        ::close(errors[1]);
        serveUntilEnd(process);
        int status = -1;
        ASSERT_EQ(::waitpid(process, &status, 0), process);
        char text[1000];
        const ssize_t length = ::read(errors[0], text, sizeof text);
        errors_.assign(text, length > 0 ? static_cast<std::size_t>(length) : 0);
        ::close(errors[0]);
        EXPECT_EQ(status, 0) << errors_;
    }

    void goAway() {
        for (const int program : programs_) {
            ::close(program);
        }
        programs_.clear();
        if (listener_ >= 0) {
            ::close(listener_);
            ::unlink(kRegisters);
            listener_ = -1;
        }
    }

    support::PrivateWorld world_;
    const char* ranges_ = "800-81f";
    int reports_ = -1;  ///< the socket for reports, where there is one
    std::vector<Event> requests_;
    std::size_t connections_ = 0;
    std::string errors_;

private:
    void serveUntilEnd(pid_t process) {
        const int end = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
        for (bool isRunning = true; isRunning;) {
            std::vector<pollfd> waiting{{end, POLLIN, 0}, {listener_, POLLIN, 0}};
            for (const int program : programs_) {
                waiting.push_back({program, POLLIN, 0});
            }
            ASSERT_GT(::poll(waiting.data(), waiting.size(), -1), 0);
            for (std::size_t i = 2; i < waiting.size(); ++i) {
                if (waiting[i].revents && listener_ >= 0) {
                    answerOne(waiting[i].fd);
                }
            }
            if (waiting[1].revents & POLLIN && listener_ >= 0) {
                programs_.push_back(::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
                ++connections_;
            }
            isRunning = waiting[0].revents == 0;
        }
        ::close(end);
    }

    void answerOne(int program) {
        Event request;
        const ssize_t length = ::recv(program, &request, sizeof request, MSG_TRUNC);
        if (length == 0) {
            ::close(program);
            std::erase(programs_, program);
            return;
        }
        ASSERT_EQ(length, ssize_t{sizeof request});
        requests_.push_back(request);
        const std::optional<std::uint64_t> answer = answer_(request);
        if (!answer) {
            goAway();
            return;
        }
        ASSERT_EQ(::send(program, &*answer, sizeof *answer, 0), ssize_t{sizeof *answer});
    }

    int listener_ = -1;
    std::vector<int> programs_;
    Answer answer_;
};

TEST_F(ReplyTest, AReadFindsWhatTheBoardAnswersAndAWriteWaitsForIt) {
    int polls = 0;
    run("poll", [&](const Event& request) -> std::optional<std::uint64_t> {
        if (request.kind == kWrite) {
            const int device = ::open("/dev/fpga", O_RDWR | O_CLOEXEC);
            EXPECT_EQ(::pwrite(device, "\x55\x55", 2, 0x10), 2);
            ::close(device);
            return 0;
        }
        return ++polls < 3 ? 0x80000000U : 0x2000U;
    });

    EXPECT_THAT(requests_, ElementsAre(IsEvent(kWrite, 4, 0x800, 0x60080000), IsEvent(kRead, 4, 0x800, 0),
                                       IsEvent(kRead, 4, 0x800, 0), IsEvent(kRead, 4, 0x800, 0)));
    EXPECT_EQ(errors_, "");
}

TEST_F(ReplyTest, AccessesOfUpTo8BytesAreAskedForAsTheyAre) {
    run("widths", [](const Event& request) { return 0x0101 * (0x80 + (request.offset & 0xF)) + 0x0100; });

    EXPECT_THAT(requests_, ElementsAre(IsEvent(kRead, 1, 0x801, 0), IsEvent(kRead, 2, 0x802, 0),
                                       IsEvent(kWrite, 8, 0x808, 0x1122334455667788)));
}

TEST_F(ReplyTest, OtherRegistersAreMemoryThatNobodyIsAskedFor) {
    run("registers", [](const Event&) { return 0; });

    EXPECT_THAT(requests_, IsEmpty());
    EXPECT_EQ(connections_, 0U);
    EXPECT_EQ(world_.read("/dev/fpga").substr(0x10, 4), "\x44\x33\x22\x11");
}

TEST_F(ReplyTest, APageWithoutActingRegistersIsNotTrapped) {
    ranges_ = "1800-1803";
    run("pages", [](const Event&) { return 0; });
    run("second-page", [](const Event&) { return 0x2000; });

    EXPECT_THAT(requests_, ElementsAre(IsEvent(kRead, 4, 0x1800, 0)));
}

TEST_F(ReplyTest, AMappingForReadingIsAnsweredToo) {
    run("read-only", [](const Event&) { return 0x2000; });

    EXPECT_THAT(requests_, SizeIs(1));
}

TEST_F(ReplyTest, ReportsAndQuestionsGoTheirOwnWays) {
    reports_ = boundSocket(kReports, SOCK_DGRAM);
    run("poll", [](const Event& request) -> std::uint64_t {
        if (request.kind == kWrite) {
            const int device = ::open("/dev/fpga", O_RDWR | O_CLOEXEC);
            EXPECT_EQ(::pwrite(device, "\x55\x55", 2, 0x10), 2);
            ::close(device);
        }
        return 0x2000;
    });

    EXPECT_THAT(requests_, SizeIs(2));
    Event report;
    ASSERT_EQ(::recv(reports_, &report, sizeof report, 0), ssize_t{sizeof report});
    EXPECT_THAT(report, IsEvent(kRead, 4, 0x10, 0x5555));
    EXPECT_EQ(::recv(reports_, &report, sizeof report, 0), -1) << "and no other";
    ::close(reports_);
}

TEST_F(ReplyTest, EachOfTwoThreadsGetsItsAnswers) {
    run("ask-threads", [](const Event& request) { return static_cast<std::uint64_t>(request.thread); });

    EXPECT_THAT(requests_, SizeIs(1000));
    EXPECT_EQ(connections_, 1U);
}

TEST_F(ReplyTest, AThreadIsNotCancelledWhileItWaits) {
    run("ask-cancelled", [](const Event&) { return 0x2000; });

    EXPECT_THAT(requests_, SizeIs(2));
}

TEST_F(ReplyTest, ParentAndChildHaveConnectionsOfTheirOwn) {
    run("ask-fork", [](const Event& request) { return static_cast<std::uint64_t>(request.process); });

    EXPECT_THAT(requests_, SizeIs(2000));
    EXPECT_EQ(connections_, 2U);
}

TEST_F(ReplyTest, AsksOnANewConnectionWhenTheProgramHasPutAFileInItsPlace) {
    run("reuse", [](const Event&) { return 0x2000; });

    EXPECT_THAT(requests_, SizeIs(2));
    EXPECT_EQ(connections_, 2U);
    EXPECT_EQ(errors_, "");
}

TEST_F(ReplyTest, WithoutABoardRegistersAreMemoryWhichIsSaidOnce) {
    goAway();
    run("twice", [](const Event&) { return 0; });

    EXPECT_EQ(errors_,
              "boardsim: nobody answers for the board's registers at /tmp/registers.socket: ENOENT\n");
}

TEST_F(ReplyTest, AProgramThatWaitsGoesOnWhenTheBoardGoesAway) {
    run("twice", [](const Event&) { return std::nullopt; });

    EXPECT_THAT(requests_, SizeIs(1));
    EXPECT_EQ(errors_,
              "boardsim: nobody answers for the board's registers at /tmp/registers.socket: ECONNRESET\n");
}

TEST_F(ReplyTest, WhatIsNoListOfRangesIsSaidAndTheProgramRuns) {
    ranges_ = "800";
    run("twice", [](const Event&) { return 0; });

    EXPECT_THAT(requests_, IsEmpty());
    EXPECT_EQ(errors_, "boardsim: BOARDSIM_REGISTER_RANGES is no list of register ranges: '800'\n");
}

}  // namespace

}  // namespace registertrap
