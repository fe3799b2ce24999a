#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/boardsim/RegisterTrap/Preload/Event.h"

namespace registertrap {

namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kSocketPath = "/tmp/trap.socket";

class PreloadTest : public testing::Test {
protected:
    PreloadTest() {
        world_.write("/dev/fpga", std::string(0x1000, '\0'));
        world_.write("/tmp/panel/screen", "");
        world_.write("/tmp/panel/other", "");
        ::unlink(kSocketPath);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strcpy(address.sun_path, kSocketPath);
        EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ~PreloadTest() override {
        ::close(socket_);
        ::unlink(kSocketPath);
    }

    /// Runs the program to its end, taking in its events.
    void run(const char* action, const char* socketPath = kSocketPath) {
        int errors[2];
        ASSERT_EQ(::pipe2(errors, O_CLOEXEC), 0);
        process_ = ::fork();
        ASSERT_GE(process_, 0);
        if (process_ == 0) {
            ::dup2(errors[1], STDERR_FILENO);
            ::setenv("LD_PRELOAD", TRAP_LIBRARY, 1);
            ::setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
            if (socketPath != nullptr) {
                ::setenv("BOARDSIM_TRAP_SOCKET", socketPath, 1);
            }
            ::execl(TRAPPED_PROGRAM, TRAPPED_PROGRAM, action, nullptr);
            ::_exit(127);
        }
        ::close(errors[1]);
        receiveUntilEnd();
        int status = -1;
        ASSERT_EQ(::waitpid(process_, &status, 0), process_);
        char text[1000];
        const ssize_t length = ::read(errors[0], text, sizeof text);
        errors_.assign(text, length > 0 ? static_cast<std::size_t>(length) : 0);
        ::close(errors[0]);
        EXPECT_EQ(status, 0) << errors_;
    }

    support::PrivateWorld world_;
    int socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    pid_t process_ = -1;
    std::vector<Event> events_;
    std::string errors_;

private:
    void receiveUntilEnd() {
        const int end = static_cast<int>(::syscall(SYS_pidfd_open, process_, 0));
        for (;;) {
            pollfd waiting[] = {{socket_, POLLIN, 0}, {end, POLLIN, 0}};
            ASSERT_GT(::poll(waiting, 2, -1), 0);
            if (!(waiting[0].revents & POLLIN)) {
                break;
            }
            Event event;
            ASSERT_EQ(::recv(socket_, &event, sizeof event, MSG_TRUNC), ssize_t{sizeof event});
            events_.push_back(event);
        }
        ::close(end);
    }
};

TEST_F(PreloadTest, ReportsEachAccessToTheRegisterDevice) {
    run("registers");

    EXPECT_THAT(events_, ElementsAre(IsEvent(kWrite, 4, 0x10, 0x11223344), IsEvent(kRead, 1, 0x11, 0x33),
                                     IsEvent(kWrite, 2, 0x20, 0xBEEF), IsEvent(kRead, 8, 0x10, 0x11223344)));
    EXPECT_THAT(events_, Each(AllOf(Field(&Event::process, process_), Field(&Event::thread, process_))));
    EXPECT_EQ(world_.read("/dev/fpga").substr(0x10, 4), "\x44\x33\x22\x11");
}

TEST_F(PreloadTest, DoesNothingWithoutASocket) {
    run("registers", nullptr);

    EXPECT_THAT(events_, IsEmpty());
    EXPECT_EQ(errors_, "");
    EXPECT_EQ(world_.read("/dev/fpga").substr(0x10, 4), "\x44\x33\x22\x11");
}

TEST_F(PreloadTest, SaysOnceThatNobodyListensAndLetsTheProgramRun) {
    run("registers", "/tmp/nobody.socket");

    EXPECT_EQ(errors_, "boardsim: register accesses cannot be reported to /tmp/nobody.socket: ENOENT\n");
    EXPECT_EQ(world_.read("/dev/fpga").substr(0x10, 4), "\x44\x33\x22\x11");
}

TEST_F(PreloadTest, SaysThatASocketPathIsTooLongAndLetsTheProgramRun) {
    const std::string path(200, 'x');

    run("registers", path.c_str());

    EXPECT_EQ(errors_, "boardsim: BOARDSIM_TRAP_SOCKET is no path of a socket: '" + path + "'\n");
}

TEST_F(PreloadTest, LeavesTheNumbersOfTheProgramsDescriptorsAlone) {
    run("descriptors");

    EXPECT_THAT(events_, SizeIs(1));
}

TEST_F(PreloadTest, ConnectsAgainWhenTheProgramHasClosedAllDescriptors) {
    run("close");

    EXPECT_THAT(events_, ElementsAre(IsEvent(kWrite, 4, 0, 1), IsEvent(kWrite, 4, 0, 2)));
    EXPECT_EQ(errors_, "");
}

TEST_F(PreloadTest, ReportsForParentAndChild) {
    run("fork");

    EXPECT_THAT(events_,
                ElementsAre(IsEvent(kWrite, 4, 0, 1), IsEvent(kWrite, 4, 0, 2), IsEvent(kWrite, 4, 0, 3)));
    ASSERT_THAT(events_, SizeIs(3));
    EXPECT_EQ(events_[0].process, process_);
    EXPECT_NE(events_[1].process, process_);
    EXPECT_EQ(events_[2].process, process_);
}

TEST_F(PreloadTest, ReportsEveryAccessOfTwoThreadsInOrder) {
    run("threads");

    ASSERT_THAT(events_, SizeIs(1000));
    std::uint64_t last[2] = {0, 0};
    for (const Event& event : events_) {
        EXPECT_EQ(event.value, ++last[event.offset / 4]);
        EXPECT_NE(event.thread, process_);
    }
}

TEST_F(PreloadTest, ReportsWhereAScreenFileIsPositioned) {
    run("seek");

    EXPECT_THAT(events_, ElementsAre(IsEvent(kSeek, 0, 7, 0), IsEvent(kSeek, 0, 11, 0)));
}

}  // namespace

}  // namespace registertrap
