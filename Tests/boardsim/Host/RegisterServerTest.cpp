#include "Tools/boardsim/Host/RegisterServer.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <thread>

#include "Tests/Support/TemporaryDirectory.h"

namespace {

using boardsim::Descriptor;
using boardsim::EventLoop;
using boardsim::RegisterServer;
using testing::ElementsAre;

class RegisterServerTest : public testing::Test {
protected:
    RegisterServerTest() {
        address.sun_family = AF_UNIX;
        std::strcpy(address.sun_path, files.file("s").c_str());
        Descriptor listener(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        EXPECT_EQ(0, bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
        EXPECT_EQ(0, listen(listener.get(), 8));
        server.emplace(std::move(listener), loop, [this](std::string_view request) {
            requests.emplace_back(request);
            if (request == "stop") {
                loop.stop();
            }
            return request == "nonsense" ? std::nullopt : std::optional<std::uint64_t>(requests.size());
        });
    }

    Descriptor connected() const {
        Descriptor end(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
        EXPECT_EQ(0, connect(end.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
        return end;
    }

    /// The answer, or 0 when the connection is closed instead.
    static std::uint64_t ask(const Descriptor& end, std::string_view request) {
        std::uint64_t answer = 0;
        EXPECT_EQ(static_cast<ssize_t>(request.size()), send(end.get(), request.data(), request.size(), 0));
        return recv(end.get(), &answer, sizeof answer, 0) == sizeof answer ? answer : 0;
    }

    /// Serves while `programs` runs.
    template <typename Programs>
    void serve(Programs programs) {
        std::thread thread([&] {
            programs();
            ask(connected(), "stop");
        });
        loop.run();
        thread.join();
    }

    const support::TemporaryDirectory files;
    sockaddr_un address{};
    EventLoop loop;
    std::vector<std::string> requests;
    std::optional<RegisterServer> server;
};

TEST_F(RegisterServerTest, AnswersEachConnectionInTurn) {
    serve([&] {
        const Descriptor one = connected();
        const Descriptor other = connected();
        EXPECT_EQ(1U, ask(one, "a"));
        EXPECT_EQ(2U, ask(other, "b"));
        EXPECT_EQ(3U, ask(one, "c"));
    });
    EXPECT_THAT(requests, ElementsAre("a", "b", "c", "stop"));
}

TEST_F(RegisterServerTest, WhatIsNoRequestEndsItsConnectionAndNoOther) {
    serve([&] {
        const Descriptor good = connected();
        const Descriptor bad = connected();
        EXPECT_EQ(1U, ask(good, "a"));
        EXPECT_EQ(0U, ask(bad, "nonsense"));
        EXPECT_EQ(3U, ask(good, "b"));
    });
}

TEST_F(RegisterServerTest, AProgramThatLeavesIsForgotten) {
    serve([&] {
        connected();
        EXPECT_EQ(1U, ask(connected(), "a") == 0 ? 0U : 1U);
        EXPECT_NE(0U, ask(connected(), "b"));
    });
}

TEST_F(RegisterServerTest, AProgramThatTakesNoAnswersIsLetGo) {
    serve([&] {
        const Descriptor deaf = connected();
        while (send(deaf.get(), "x", 1, MSG_NOSIGNAL) == 1) {
        }
        EXPECT_THAT(errno, testing::AnyOf(EPIPE, ECONNRESET));
    });
}

TEST_F(RegisterServerTest, WhoWaitsIsLetGoWithTheServer) {
    const Descriptor waiting = connected();
    EXPECT_EQ(1, send(waiting.get(), "a", 1, 0));
    server.reset();
    char byte = 0;
    EXPECT_GE(0, recv(waiting.get(), &byte, 1, 0));
}

}  // namespace
