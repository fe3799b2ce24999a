#include "Tools/boardsim/Host/ExitStatus.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

namespace {

/// What waitpid() says of a child that does `end`.
template <typename End>
int waitStatusOf(End end) {
    const pid_t child = fork();
    if (child == 0) {
        end();
        _exit(99);
    }
    int status = 0;
    EXPECT_EQ(child, waitpid(child, &status, 0));
    return status;
}

TEST(ExitStatusTest, IsTheProgramsOwn) {
    for (const int own : {0, 1, 42, 254, 255}) {
        EXPECT_EQ(own, boardsim::shellStatus(waitStatusOf([&] { _exit(own); })));
    }
}

TEST(ExitStatusTest, OfASignalIs128AndItsNumber) {
    for (const int number : {SIGKILL, SIGTERM, SIGINT}) {
        EXPECT_EQ(128 + number, boardsim::shellStatus(waitStatusOf([&] { raise(number); })));
    }
}

}  // namespace
