#include "Tools/boardsim/Host/CallerMemory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>

namespace {

using boardsim::CallerMemory;

std::uint64_t addressOf(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

/// Two pages of this process, the second without any access.
class Pages {
public:
    Pages() { mprotect(base_ + size(), size(), PROT_NONE); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    ~Pages() { munmap(base_, 2 * size()); }

    static std::size_t size() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }
    std::byte* end() const { return base_ + size(); }
    void forbidWriting() const { mprotect(base_, size(), PROT_READ); }

private:
    std::byte* base_ = static_cast<std::byte*>(
        mmap(nullptr, 2 * size(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
};

TEST(CallerMemoryTest, CopiesBothWaysAcrossProcesses) {
    std::array<char, 6> text{"ready"};
    const pid_t child = fork();
    if (child == 0) {
        std::memcpy(text.data(), "child", text.size());
        raise(SIGSTOP);
        _exit(std::strcmp(text.data(), "hello") == 0 ? 7 : 1);
    }
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, WUNTRACED));
    std::array<char, 6> copy{};
    EXPECT_EQ(std::errc{}, CallerMemory(child).readRecord(addressOf(&text), copy));
    EXPECT_STREQ("child", copy.data());
    EXPECT_STREQ("ready", text.data());
    EXPECT_EQ(std::errc{}, CallerMemory(child).writeRecord(addressOf(&text), std::array<char, 6>{"hello"}));
    kill(child, SIGCONT);
    waitpid(child, &status, 0);
    EXPECT_EQ(7, WEXITSTATUS(status));
}

TEST(CallerMemoryTest, MemoryThatIsNotThereIsABadAddress) {
    int value = 0;
    EXPECT_EQ(std::errc::bad_address, CallerMemory(getpid()).readRecord(0, value));
    EXPECT_EQ(std::errc::bad_address, CallerMemory(getpid()).writeRecord(~std::uint64_t{0}, value));
}

TEST(CallerMemoryTest, ARecordThatIsThereInPartIsABadAddress) {
    const Pages pages;
    std::array<std::byte, 8> record{};
    const CallerMemory memory(getpid());
    EXPECT_EQ(std::errc{}, memory.readRecord(addressOf(pages.end() - 8), record));
    EXPECT_EQ(std::errc::bad_address, memory.readRecord(addressOf(pages.end() - 7), record));
    EXPECT_EQ(std::errc::bad_address, memory.writeRecord(addressOf(pages.end() - 7), record));
}

TEST(CallerMemoryTest, MemoryThatCannotBeWrittenIsABadAddressForWriting) {
    const Pages pages;
    pages.forbidWriting();
    std::array<std::byte, 8> record{};
    const CallerMemory memory(getpid());
    EXPECT_EQ(std::errc{}, memory.readRecord(addressOf(pages.end() - 8), record));
    EXPECT_EQ(std::errc::bad_address, memory.writeRecord(addressOf(pages.end() - 8), record));
}

TEST(CallerMemoryTest, ACallerThatDiedHasNoMemory) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    int value = 0;
    EXPECT_EQ(std::errc::no_such_process, CallerMemory(child).readRecord(addressOf(&value), value));
}

TEST(CallerMemoryTest, NothingIsCopiedFromAnywhere) {
    EXPECT_EQ(std::errc{}, CallerMemory(getpid()).read(0, {}));
}

}  // namespace
