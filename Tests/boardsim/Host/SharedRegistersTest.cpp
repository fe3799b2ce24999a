#include "Tools/boardsim/Host/SharedRegisters.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <system_error>

namespace {

using boardsim::Descriptor;
using boardsim::SharedRegisters;

TEST(SharedRegistersTest, AStoreIsSeenThroughTheFile) {
    const Descriptor memory(memfd_create("registers", MFD_CLOEXEC));
    ASSERT_EQ(0, ftruncate(memory.get(), 0x10000));
    SharedRegisters registers(Descriptor(dup(memory.get())), 0x10000);
    registers.store(0x1004, 0x12345678);
    registers.store(0xFFFC, 0x9ABCDEF0);
    std::uint32_t value = 0;
    ASSERT_EQ(4, pread(memory.get(), &value, 4, 0x1004));
    EXPECT_EQ(0x12345678U, value);
    ASSERT_EQ(4, pread(memory.get(), &value, 4, 0xFFFC));
    EXPECT_EQ(0x9ABCDEF0U, value);
    ASSERT_EQ(4, pread(memory.get(), &value, 4, 0x1000));
    EXPECT_EQ(0U, value);
}

TEST(SharedRegistersTest, ACutFileHasItsSizeAgainWithTheNextStore) {
    const Descriptor memory(memfd_create("registers", MFD_CLOEXEC));
    ASSERT_EQ(0, ftruncate(memory.get(), 0x10000));
    SharedRegisters registers(Descriptor(dup(memory.get())), 0x10000);
    ASSERT_EQ(0, ftruncate(memory.get(), 0));
    registers.store(0x1004, 7);
    std::uint32_t value = 0;
    ASSERT_EQ(4, pread(memory.get(), &value, 4, 0x1004));
    EXPECT_EQ(7U, value);
    EXPECT_EQ(0x10000, lseek(memory.get(), 0, SEEK_END));
}

TEST(SharedRegistersTest, ABadDescriptorIsAnError) {
    EXPECT_THROW(SharedRegisters(Descriptor(), 0x1000), std::system_error);
}

}  // namespace
