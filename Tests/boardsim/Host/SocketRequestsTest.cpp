#include "Tools/boardsim/Host/SocketRequests.h"

#include <gmock/gmock.h>
#include <net/if.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace {

using boardsim::Descriptor;
using boardsim::interceptSocketRequests;
using boardsim::IoctlAnswer;
using boardsim::SocketRequest;
using boardsim::SocketRequests;
using testing::ElementsAre;

/// Sends a descriptor over a socket, as processes do.
void give(int socket, int descriptor) {
    char byte = 0;
    iovec part{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> space{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = space.data();
    message.msg_controllen = space.size();
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
    sendmsg(socket, &message, 0);
}

int take(int socket) {
    char byte = 0;
    iovec part{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> space{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = space.data();
    message.msg_controllen = space.size();
    int descriptor = -1;
    if (recvmsg(socket, &message, MSG_CMSG_CLOEXEC) > 0 && CMSG_FIRSTHDR(&message) != nullptr) {
        std::memcpy(&descriptor, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof descriptor);
    }
    return descriptor;
}

/// A program whose requests are intercepted: runs `life` and ends with what it gives.
class Program {
public:
    explicit Program(const std::function<int()>& life) {
        std::array<int, 2> ends{};
        EXPECT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()));
        process_ = fork();
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Descriptor listener = interceptSocketRequests();
            give(ends[1], listener.get());
            listener.reset();
            _exit(life());
        }
        close(ends[1]);
        listener_ = Descriptor(take(ends[0]));
        close(ends[0]);
    }

    /// Answers until the program has ended. @return its exit status.
    int serve(SocketRequests::Answer answer) {
        SocketRequests requests(std::move(listener_), std::move(answer));
        pollfd waiting{requests.descriptor(), POLLIN, 0};
        while (poll(&waiting, 1, -1) > 0 && requests.serveOne()) {
        }
        int status = 0;
        waitpid(process_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    pid_t process() const { return process_; }

private:
    pid_t process_ = -1;
    Descriptor listener_;
};

/// What a program does: one request on a datagram socket. @return the result, or the negative error number.
int request(unsigned long code, const char* interface, std::uint16_t& value) {
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq record{};
    std::strncpy(record.ifr_name, interface, IFNAMSIZ);
    std::memcpy(&record.ifr_ifru, &value, sizeof value);
    const int result = ioctl(socket, code, &record);
    const int error = errno;
    std::memcpy(&value, &record.ifr_ifru, sizeof value);
    close(socket);
    return result < 0 ? -error : result;
}

TEST(SocketRequestsTest, AnswersReachTheProgramAndItsMemory) {
    std::vector<std::string> seen;
    const int status = Program([] {
                           std::uint16_t value = 0x1234;
                           const int result = request(0x8948, "eth0", value);
                           return result == 5 && value == 0xEDCB ? 0 : 1;
                       }).serve([&](SocketRequest& request) -> std::optional<IoctlAnswer> {
        seen.push_back(request.interface + " " + std::to_string(request.code));
        request.data[0] = ~request.data[0];
        request.data[1] = ~request.data[1];
        return IoctlAnswer{5};
    });
    EXPECT_EQ(0, status);
    EXPECT_THAT(seen, ElementsAre("eth0 35144"));
}

TEST(SocketRequestsTest, ARefusalIsTheProgramsErrorAndChangesNothing) {
    const int status = Program([] {
                           std::uint16_t value = 0x1234;
                           const int result = request(0x8947, "eth0", value);
                           return result == -EOPNOTSUPP && value == 0x1234 ? 0 : 1;
                       }).serve([](SocketRequest& request) -> std::optional<IoctlAnswer> {
        request.data[0] = std::byte{0};
        return IoctlAnswer{0, std::errc::operation_not_supported};
    });
    EXPECT_EQ(0, status);
}

TEST(SocketRequestsTest, WhatNobodyWantsToAnswerTheKernelAnswers) {
    const int status = Program([] {
                           std::uint16_t value = 0;
                           return request(0x8947, "no-such-device", value) == -ENODEV ? 0 : 1;
                       }).serve([](SocketRequest&) { return std::nullopt; });
    EXPECT_EQ(0, status);
}

TEST(SocketRequestsTest, OnlyTheRequestsOfTheListAreAsked) {
    std::vector<unsigned> seen;
    const int status = Program([] {
                           for (const unsigned long code : {0x8946UL, 0x8947UL, 0x8948UL, 0x8949UL, 0x894AUL,
                                                            0x89EFUL, 0x89F0UL, 0x89FFUL, 0x8A00UL}) {
                               std::uint16_t value = 0;
                               request(code, "eth0", value);
                           }
                           return 0;
                       }).serve([&](SocketRequest& request) -> std::optional<IoctlAnswer> {
        seen.push_back(request.code);
        return IoctlAnswer{};
    });
    EXPECT_EQ(0, status);
    EXPECT_THAT(seen, ElementsAre(0x8947, 0x8948, 0x8949, 0x89F0, 0x89FF));
}

TEST(SocketRequestsTest, ANameOfAllSixteenBytesIsTakenWhole) {
    std::string seen;
    Program([] {
        std::uint16_t value = 0;
        return request(0x8947, "sixteen-letters!", value);
    }).serve([&](SocketRequest& request) -> std::optional<IoctlAnswer> {
        seen = request.interface;
        return IoctlAnswer{};
    });
    EXPECT_EQ("sixteen-letters!", seen);
}

TEST(SocketRequestsTest, BadAddressesAreTheKernelsAffair) {
    const int status = Program([] {
                           const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
                           return ioctl(socket, 0x8947, nullptr) == -1 && errno == EFAULT ? 0 : 1;
                       }).serve([](SocketRequest&) { return IoctlAnswer{}; });
    EXPECT_EQ(0, status);
}

TEST(SocketRequestsTest, ARecordThatCannotBeWrittenIsABadAddress) {
    const int status = Program([] {
                           void* page = mmap(nullptr, 4096, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
                           const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
                           return ioctl(socket, 0x8947, page) == -1 && errno == EFAULT ? 0 : 1;
                       }).serve([](SocketRequest&) { return IoctlAnswer{}; });
    EXPECT_EQ(0, status);
}

TEST(SocketRequestsTest, ChildrenOfTheProgramAreAnsweredToo) {
    int answered = 0;
    const int status = Program([] {
                           const pid_t child = fork();
                           std::uint16_t value = 0;
                           if (child == 0) {
                               _exit(request(0x8947, "eth0", value) == 7 ? 0 : 1);
                           }
                           int ended = 0;
                           waitpid(child, &ended, 0);
                           return request(0x8947, "eth0", value) == 7 ? WEXITSTATUS(ended) : 2;
                       }).serve([&](SocketRequest&) -> std::optional<IoctlAnswer> {
        ++answered;
        return IoctlAnswer{7};
    });
    EXPECT_EQ(0, status);
    EXPECT_EQ(2, answered);
}

TEST(SocketRequestsTest, AProgramThatIsKilledWhileItWaitsHoldsNothingUp) {
    Program program([] {
        std::uint16_t value = 0;
        return request(0x8947, "eth0", value);
    });
    EXPECT_EQ(-1, program.serve([&](SocketRequest&) -> std::optional<IoctlAnswer> {
        kill(program.process(), SIGKILL);
        return IoctlAnswer{};
    }));
}

}  // namespace
