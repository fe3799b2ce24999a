#include "Vl/HAL/Board/RawSocket.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <net/ethernet.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <thread>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/Support/PrivateNetwork.h"
#include "Vl/Common/Identity/MACAddress.h"

namespace {

using support::PrivateNetwork;
using Valen::RawSocket;

constexpr int kProtocol = 0x88B5;  // for local experiments, IEEE 802
constexpr std::string_view kAddresses("\x02\x00\x00\x00\x00\x01\x02\x00\x00\x00\x00\x02", 12);

class RawSocketTest : public BoardWorld {
protected:
    RawSocketTest() { PrivateNetwork::makePair("near", "far"); }

    static std::string frame(const std::string& payload, int protocol = kProtocol) {
        std::string bytes(kAddresses);
        bytes += static_cast<char>(protocol >> 8);
        bytes += static_cast<char>(protocol);
        return bytes + payload;
    }

    static ssize_t send(RawSocket& socket, std::string_view bytes) {
        return socket.Send(std::as_bytes(std::span(bytes)));
    }

    static std::string receive(RawSocket& socket) {
        std::array<std::byte, 2048> buffer{};
        const ssize_t count = socket.recv(buffer);
        EXPECT_GE(count, 0);
        return {reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(count)};
    }

    PrivateNetwork network;
};

TEST_F(RawSocketTest, AFrameGoesToTheFarEndAsItIs) {
    RawSocket near("near", 0);
    RawSocket far("far", kProtocol);
    ASSERT_TRUE(near.isOpen() && far.isOpen());
    EXPECT_EQ(19, send(near, frame("hello")));
    EXPECT_EQ(frame("hello"), receive(far));
}

TEST_F(RawSocketTest, OnlyFramesOfItsProtocolAndInterfaceAreReceived) {
    RawSocket near("near", kProtocol);
    RawSocket far("far", kProtocol);
    EXPECT_EQ(19, send(near, frame("other", 0x88B6)));
    EXPECT_EQ(18, send(far, frame("mine")));
    EXPECT_EQ(20, send(near, frame("wanted")));
    EXPECT_EQ(frame("wanted"), receive(far));
    EXPECT_EQ(frame("mine"), receive(near));
}

TEST_F(RawSocketTest, EveryProtocolCanBeReceivedAtOnce) {
    RawSocket near("near", 0);
    RawSocket far("far", ETH_P_ALL);
    send(near, frame("one", 0x88B5));
    send(near, frame("two", 0x0800));
    EXPECT_EQ(frame("one", 0x88B5), receive(far));
    EXPECT_EQ(frame("two", 0x0800), receive(far));
}

TEST_F(RawSocketTest, ABroadcastGoesToEverybodyFromTheInterfacesAddress) {
    RawSocket near("near", kProtocol);
    RawSocket far("far", kProtocol);
    EXPECT_EQ(19, near.broadcast(std::as_bytes(std::span(std::string_view("hello")))));
    const auto own = Valen::MACAddress::fromInterface("near").bytes();
    EXPECT_EQ("\xFF\xFF\xFF\xFF\xFF\xFF" + std::string(own.begin(), own.end()) + "\x88\xB5hello",
              receive(far));
}

TEST_F(RawSocketTest, WhatDoesNotFitIsLost) {
    RawSocket near("near", 0);
    RawSocket far("far", kProtocol);
    send(near, frame("first"));
    send(near, frame("second"));
    std::array<std::byte, 15> small{};
    EXPECT_EQ(15, far.recv(small));
    EXPECT_EQ(frame("second"), receive(far));
}

TEST_F(RawSocketTest, FramesThatNoInterfaceTakesAreRefused) {
    RawSocket near("near", 0);
    EXPECT_EQ(-1, send(near, std::string(13, 'x')));
    EXPECT_EQ(EINVAL, errno);
    EXPECT_EQ(1514, send(near, frame(std::string(1500, 'x'))));
    EXPECT_EQ(-1, send(near, frame(std::string(1501, 'x'), 0x0800)));
    EXPECT_EQ(EMSGSIZE, errno);
}

TEST_F(RawSocketTest, AnInterfaceThatIsDownRefuses) {
    RawSocket near("near", 0);
    PrivateNetwork::ip("link set near down");
    EXPECT_EQ(-1, send(near, frame("hello")));
    EXPECT_EQ(ENETDOWN, errno);
}

TEST_F(RawSocketTest, WithoutItsInterfaceEverythingFails) {
    for (const char* name : {"none", "", "a name that is longer than names are", "near "}) {
        RawSocket socket(name, kProtocol);
        EXPECT_FALSE(socket.isOpen()) << name;
        EXPECT_FALSE(socket.SetSendBufferSize(1024));
        EXPECT_EQ(-1, send(socket, frame("hello")));
        EXPECT_EQ(-1, socket.broadcast({}));
        EXPECT_EQ(-1, socket.recv({}));
        EXPECT_EQ(EBADF, errno);
    }
}

TEST_F(RawSocketTest, TheSendBufferHasTheSizeThatIsAskedForButNotLessThanTheKernels) {
    RawSocket socket("near", 0);
    const auto size = [&] {
        for (int number = 3; number < 1024; ++number) {
            int domain = 0;
            int bytes = 0;
            socklen_t length = sizeof domain;
            if (getsockopt(number, SOL_SOCKET, SO_DOMAIN, &domain, &length) == 0 && domain == AF_PACKET) {
                EXPECT_EQ(FD_CLOEXEC, fcntl(number, F_GETFD));
                EXPECT_EQ(0, getsockopt(number, SOL_SOCKET, SO_SNDBUF, &bytes, &length));
                return bytes;
            }
        }
        return -1;
    };
    EXPECT_TRUE(socket.SetSendBufferSize(20'000));
    EXPECT_EQ(40'000, size());  // the kernel doubles it for what it keeps beside the bytes
    EXPECT_TRUE(socket.SetSendBufferSize(1024));
    EXPECT_GE(size(), 2048);
    EXPECT_LT(size(), 40'000);
}

TEST_F(RawSocketTest, WithoutThePrivilegeThereIsNoSocket) {
    std::thread([] {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        std::array<__user_cap_data_struct, 2> none{};
        ASSERT_EQ(0, syscall(SYS_capset, &header, none.data()));  // of this thread only
        EXPECT_FALSE(RawSocket("near", 0).isOpen());
    }).join();
}

TEST_F(RawSocketTest, NothingStaysOpen) {
    const int before = dup(0);
    close(before);
    { const RawSocket socket("near", kProtocol); }
    { const RawSocket socket("none", kProtocol); }
    const int after = dup(0);
    close(after);
    EXPECT_EQ(before, after);
}

}  // namespace
