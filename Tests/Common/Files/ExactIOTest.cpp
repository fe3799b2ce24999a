#include "Vl/Common/Files/ExactIO.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <thread>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/Errno.h"

namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(0, pipe2(ends.data(), O_CLOEXEC));
        reader = Valen::Descriptor(ends[0]);
        writer = Valen::Descriptor(ends[1]);
    }
    Valen::Descriptor reader;
    Valen::Descriptor writer;
};

std::string readText(int descriptor, std::size_t size, ssize_t* result) {
    std::string text(size, '\0');
    *result = Valen::readExact(descriptor, std::as_writable_bytes(std::span(text)));
    return text;
}

TEST(ExactIOTest, MoreThanAPipeHoldsComesThroughWhole) {
    Pipe pipe;
    const std::string sent(300'000, 'x');
    std::thread sender([&] { EXPECT_TRUE(Valen::writeExact(pipe.writer.get(), sent)); });
    ssize_t count = 0;
    EXPECT_EQ(sent, readText(pipe.reader.get(), sent.size(), &count));
    EXPECT_EQ(300'000, count);
    sender.join();
}

TEST(ExactIOTest, AReadEndsWithTheFile) {
    Pipe pipe;
    EXPECT_TRUE(Valen::writeExact(pipe.writer.get(), "abc"));
    pipe.writer = Valen::Descriptor();
    ssize_t count = 0;
    EXPECT_EQ("abc", readText(pipe.reader.get(), 10, &count).substr(0, 3));
    EXPECT_EQ(3, count);
}

TEST(ExactIOTest, ErrorsAreReportedAndErrnoSaysWhich) {
    ssize_t count = 0;
    readText(-1, 1, &count);
    EXPECT_EQ(-1, count);
    EXPECT_EQ(EBADF, errno);
    EXPECT_FALSE(Valen::writeExact(-1, "x"));
    EXPECT_EQ(EBADF, errno);
}

TEST(ExactIOTest, ADeviceThatTakesNothingIsAnErrorInsteadOfAnEndlessLoop) {
    EXPECT_TRUE(holdsInChild([] {
        denySystemCalls({SYS_write}, 0);  // write(2) says 0 from now on
        return !Valen::writeExact(STDOUT_FILENO, "x") && errno == EIO;
    }));
}

TEST(ExactIOTest, NothingNeedsNoDescriptor) {
    EXPECT_EQ(0, Valen::readExact(-1, {}));
    EXPECT_TRUE(Valen::writeExact(-1, ""));
}

TEST(ErrnoTest, NumbersHaveWords) {
    EXPECT_STREQ("No such file or directory", Valen::errnoText(2));
    EXPECT_STREQ("Unknown error 9999", Valen::errnoText(9999));
    errno = 13;
    EXPECT_STREQ("Permission denied", Valen::errnoText());
}

}  // namespace
