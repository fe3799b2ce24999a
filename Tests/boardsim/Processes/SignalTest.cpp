// Signals sent to boardsim, and those that the terminal sends to everybody.
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>

#include "Tests/boardsim/Support/Process.h"

namespace {

using processes::onBoard;
using processes::Process;

TEST(SignalTest, ASignalSentToBoardsimReachesTheProgram) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2}) {
        Process board(onBoard({}, {CLIENT, "hang:ready"}));
        board.waitForOutput("ready");
        board.signal(number);
        EXPECT_EQ(128 + number, board.wait()) << strsignal(number);
    }
}

TEST(SignalTest, AProgramMayTakeSignalsAndGoOn) {
    Process board(onBoard({}, {CLIENT, "signals", "exit:5"}));
    board.waitForOutput("ready\n");
    board.signal(SIGTERM);
    board.waitForOutput("signal 15\n");
    board.signal(SIGINT);
    board.waitForOutput("signal 2\n");
    board.signal(SIGUSR1);
    EXPECT_EQ("ready\nsignal 15\nsignal 2\nsignal 10\n", board.readToEnd());
    EXPECT_EQ(5, board.wait());
}

TEST(SignalTest, TheTerminalsInterruptReachesTheProgramOnce) {
    int terminal = -1;
    const pid_t board = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (board == 0) {
        execl(BOARDSIM, BOARDSIM, "run", "--", CLIENT, "signals", nullptr);
        _exit(98);
    }
    std::string output;
    const auto readUntil = [&](const std::string& text) {
        std::array<char, 256> buffer{};
        while (output.find(text) == std::string::npos) {
            const ssize_t count = read(terminal, buffer.data(), buffer.size());
            ASSERT_GT(count, 0) << output;
            output.append(buffer.data(), static_cast<std::size_t>(count));
        }
    };
    readUntil("ready");
    ASSERT_EQ(1, write(terminal, "\x03", 1));
    readUntil("signal 2");
    // Were the interrupt handed on too, it would be so before this one.
    kill(board, SIGUSR1);
    readUntil("signal 10");
    EXPECT_EQ(output.find("signal 2"), output.rfind("signal 2")) << output;

    int status = 0;
    EXPECT_EQ(board, waitpid(board, &status, 0));
    EXPECT_EQ(0, status);
    close(terminal);
}

}  // namespace
