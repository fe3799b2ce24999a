#include "Vl/Common/Files/Descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <utility>

namespace {

using Valen::Descriptor;

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) >= 0;
}

TEST(DescriptorTest, ClosesItselfAndNotAcrossExec) {
    int number = -1;
    {
        const Descriptor null = Descriptor::open("/dev/null", O_RDWR);
        number = null.get();
        ASSERT_TRUE(null.isValid());
        EXPECT_EQ(FD_CLOEXEC, fcntl(number, F_GETFD));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(DescriptorTest, AFailedOpenIsInvalidAndKeepsErrno) {
    const Descriptor none = Descriptor::open("/missing", O_RDONLY);
    EXPECT_EQ(ENOENT, errno);
    EXPECT_FALSE(none.isValid());
    EXPECT_EQ(-1, none.get());
}

TEST(DescriptorTest, MovingHandsTheDescriptorOver) {
    Descriptor first = Descriptor::open("/dev/null", O_RDONLY);
    const int number = first.get();
    Descriptor second = std::move(first);
    EXPECT_FALSE(first.isValid());  // NOLINT: the moved-from state is what is tested
    EXPECT_EQ(number, second.get());
}

TEST(DescriptorTest, AssigningClosesTheEarlierOne) {
    Descriptor descriptor = Descriptor::open("/dev/null", O_RDONLY);
    const int earlier = descriptor.get();
    descriptor = Descriptor::open("/missing", O_RDONLY);
    EXPECT_FALSE(isOpen(earlier));
    EXPECT_FALSE(descriptor.isValid());
}

TEST(DescriptorTest, AssigningHandsTheDescriptorOverAtOnce) {
    Descriptor first = Descriptor::open("/dev/null", O_RDONLY);
    Descriptor second = Descriptor::open("/dev/zero", O_RDONLY);
    const int earlier = first.get();
    const int number = second.get();
    first = std::move(second);
    EXPECT_FALSE(isOpen(earlier));
    EXPECT_EQ(number, first.get());
    EXPECT_FALSE(second.isValid());  // NOLINT: the moved-from state is what is tested
}

TEST(DescriptorTest, AssigningItToItselfKeepsItOpen) {
    Descriptor descriptor = Descriptor::open("/dev/null", O_RDONLY);
    Descriptor& same = descriptor;
    descriptor = std::move(same);
    EXPECT_TRUE(isOpen(descriptor.get()));  // NOLINT: as above
}

TEST(DescriptorTest, ClosingNowTellsTheResult) {
    Descriptor descriptor = Descriptor::open("/dev/null", O_RDONLY);
    const int number = descriptor.get();
    EXPECT_EQ(0, descriptor.close());
    EXPECT_FALSE(isOpen(number));
    EXPECT_FALSE(descriptor.isValid());
    EXPECT_EQ(-1, descriptor.close());
    EXPECT_EQ(EBADF, errno);
}

}  // namespace
