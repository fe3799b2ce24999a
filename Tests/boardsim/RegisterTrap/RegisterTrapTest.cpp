#include <gmock/gmock.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csetjmp>
#include <csignal>
#include <cstring>
#include <numeric>
#include <thread>

#include "Tests/Support/RegisterWindow/RegisterWindow.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterTrap.h"

namespace registertrap {

namespace {

using boardsim::MappingRequest;
using boardsim::RegisterTrap;
using support::Read, support::Read32, support::Write, support::Write32, support::Write8;
using support::RegisterWindow;
using testing::Each;
using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::KilledBySignal;
using testing::SizeIs;

constexpr std::size_t kPage = 4096;

volatile std::uint32_t& word(const RegisterWindow& window, std::size_t offset) {
    return *static_cast<volatile std::uint32_t*>(window.address(offset));
}

const auto kNoWordFromTheTrap = testing::Not(testing::HasSubstr("boardsim"));

void dieOfFaultsAsUsual() {
    // A sanitizer's own handler would turn the signal into an exit.
    ::signal(SIGSEGV, SIG_DFL);
    ::signal(SIGBUS, SIG_DFL);
}

/// A file in memory, with observers of the test's own.
class RegisterTrapTest : public testing::Test {
protected:
    ~RegisterTrapTest() override { ::close(file_); }

    void* map(int protection, std::size_t length = kPage, std::int64_t offset = 0) {
        return RegisterTrap::instance().map({nullptr, length, protection, MAP_SHARED, file_, offset},
                                            recorder_);
    }
    static int unmap(void* address, std::size_t length) {
        return RegisterTrap::instance().unmap(address, length);
    }
    static void touch(void* base, std::size_t offset) {
        static_cast<volatile std::uint8_t*>(base)[offset] = 1;
    }

    support::AccessRecorder recorder_;
    int file_ = [] {
        const int file = ::memfd_create("test", MFD_CLOEXEC);
        EXPECT_EQ(::ftruncate(file, 16 * kPage), 0);
        return file;
    }();
};

using RegisterTrapDeathTest = RegisterTrapTest;

TEST_F(RegisterTrapTest, LosesNoWriteOfTwoThreads) {
    constexpr std::uint32_t kWrites = 10'000;
    RegisterWindow window;
    const auto count = [&window](std::size_t offset) {
        for (std::uint32_t i = 1; i <= kWrites; ++i) {
            word(window, offset) = i;
        }
    };
    std::thread first(count, 0x10);
    std::thread second(count, 0x14);
    first.join();
    second.join();

    std::array<std::uint64_t, 2> last{};
    for (const auto& access : window.accesses()) {
        std::uint64_t& previous = last[access.offset == 0x14 ? 1 : 0];
        ASSERT_EQ(access.value, previous + 1);
        previous = access.value;
    }
    EXPECT_THAT(last, Each(kWrites));
    EXPECT_THAT(window.accesses(), SizeIs(2 * kWrites));
}

#if defined(__x86_64__)
TEST_F(RegisterTrapTest, LosesNoReadModifyWriteOfTwoThreadsOnOneRegister) {
    constexpr int kAdditions = 10'000;
    RegisterWindow window;
    auto* counter = reinterpret_cast<std::atomic<std::uint32_t>*>(window.address(0x20));
    const auto add = [counter] {
        for (int i = 0; i < kAdditions; ++i) {
            counter->fetch_add(1);
        }
    };
    std::thread first(add);
    std::thread second(add);
    first.join();
    second.join();

    EXPECT_EQ(window.get32(0x20), 2U * kAdditions);
}
#endif

TEST_F(RegisterTrapTest, KeepsSeveralWindowsApart) {
    RegisterWindow first;
    RegisterWindow second;

    word(first, 0x4) = 1;
    word(second, 0x8) = 2;
    word(first, 0xC) = 3;

    EXPECT_THAT(first.accesses(), ElementsAre(Write32(0x4, 1), Write32(0xC, 3)));
    EXPECT_THAT(second.accesses(), ElementsAre(Write32(0x8, 2)));
}

TEST_F(RegisterTrapTest, CopiesBetweenTwoWindows) {
    RegisterWindow from;
    RegisterWindow to;
    from.set32(0x10, 0x12345678);

    std::memcpy(to.address(0x20), from.address(0x10), 64);

    EXPECT_EQ(to.get32(0x20), 0x12345678U);
    EXPECT_FALSE(from.accesses().empty());
    EXPECT_FALSE(to.accesses().empty());
}

TEST_F(RegisterTrapTest, CarriesBlockCopiesOfAnyLengthInBothDirections) {
    constexpr std::size_t kLongest = 3000;
    RegisterWindow window;
    std::vector<std::uint8_t> source(kLongest);
    std::iota(source.begin(), source.end(), std::uint8_t{1});
    for (const std::size_t length :
         {1UL, 2UL, 3UL, 4UL, 7UL, 8UL, 15UL, 16UL, 31UL, 33UL, 64UL, 100UL, 255UL, 1000UL, kLongest}) {
        for (const std::size_t shift : {0UL, 1UL}) {
            std::vector<std::uint8_t> result(length);
            window.clearAccesses();

            std::memcpy(window.address(shift), source.data(), length);
            std::memcpy(result.data(), window.address(shift), length);

            ASSERT_TRUE(std::equal(result.begin(), result.end(), source.begin())) << length << " bytes";
            ASSERT_FALSE(window.accesses().empty());
        }
    }
}

TEST_F(RegisterTrapTest, FillsBlocks) {
    RegisterWindow window;

    std::memset(window.address(0x101), 0xA5, 999);

    EXPECT_EQ(window.get8(0x100), 0);
    for (std::size_t offset = 0x101; offset < 0x101 + 999; ++offset) {
        ASSERT_EQ(window.get8(offset), 0xA5) << offset;
    }
    EXPECT_EQ(window.get8(0x101 + 999), 0);
}

TEST_F(RegisterTrapTest, ReportsOffsetsInTheFileAndNotInTheWindow) {
    void* base = map(PROT_READ | PROT_WRITE, kPage, 2 * kPage);
    ASSERT_NE(base, MAP_FAILED);

    touch(base, 5);

    EXPECT_THAT(recorder_.accesses(), ElementsAre(Write8(2 * kPage + 5, 1)));
    EXPECT_EQ(unmap(base, kPage), 0);
}

TEST_F(RegisterTrapTest, RefusesToUnmapALengthOfMinusOneAsTheKernelDoes) {
    void* base = map(PROT_READ | PROT_WRITE);

    EXPECT_EQ(unmap(base, static_cast<std::size_t>(-1)), -1);
    EXPECT_EQ(errno, EINVAL);

    touch(base, 0);
    EXPECT_THAT(recorder_.accesses(), SizeIs(1));
    EXPECT_EQ(unmap(base, kPage), 0);
}

TEST_F(RegisterTrapTest, MapsAgainAfterUnmapping) {
    for (int i = 0; i < 1000; ++i) {
        void* base = map(PROT_READ | PROT_WRITE);
        ASSERT_NE(base, MAP_FAILED);
        touch(base, 0);
        ASSERT_EQ(unmap(base, kPage), 0);
    }
    EXPECT_THAT(recorder_.accesses(), SizeIs(1000));
}

TEST_F(RegisterTrapTest, KeepsBothEndsWhenTheMiddleIsUnmapped) {
    void* base = map(PROT_READ | PROT_WRITE, 3 * kPage);

    ASSERT_EQ(unmap(static_cast<std::byte*>(base) + kPage, kPage), 0);
    touch(base, 1);
    touch(base, 2 * kPage + 2);

    EXPECT_THAT(recorder_.accesses(), ElementsAre(Write8(1), Write8(2 * kPage + 2)));
    EXPECT_EQ(unmap(base, 3 * kPage), 0);
}

TEST_F(RegisterTrapTest, LetsAnOrdinaryMappingReplaceAWindow) {
    void* base = map(PROT_READ | PROT_WRITE);

    ASSERT_EQ(RegisterTrap::instance().mapUntrapped(
                  {base, kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0}),
              base);
    touch(base, 0);

    EXPECT_THAT(recorder_.accesses(), SizeIs(0));
    EXPECT_EQ(unmap(base, kPage), 0);
}

TEST_F(RegisterTrapTest, FailsAsMmapDoes) {
    EXPECT_EQ(map(PROT_READ, 0), MAP_FAILED);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(map(PROT_READ, kPage, 1), MAP_FAILED);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(RegisterTrap::instance().map({nullptr, kPage, PROT_READ, MAP_SHARED, -1, 0}, recorder_),
              MAP_FAILED);
    EXPECT_EQ(errno, EBADF);
}

TEST_F(RegisterTrapTest, FailsWhenThereAreTooManyWindows) {
    std::vector<void*> windows;
    for (void* base = map(PROT_READ); base != MAP_FAILED; base = map(PROT_READ)) {
        windows.push_back(base);
    }
    EXPECT_EQ(errno, ENOMEM);
    EXPECT_THAT(windows, SizeIs(64));
    for (void* base : windows) {
        EXPECT_EQ(unmap(base, kPage), 0);
    }
}

TEST_F(RegisterTrapTest, LeavesErrnoAlone) {
    RegisterWindow window;
    errno = E2BIG;

    word(window, 0) = 1;

    EXPECT_EQ(errno, E2BIG);
}

TEST_F(RegisterTrapTest, WorksInAForkedProcessWhileOtherThreadsUseTheWindow) {
    RegisterWindow window;
    std::atomic<bool> stop = false;
    std::thread busy([&] {
        while (!stop) {
            word(window, 0) = 1;
            window.clearAccesses();
        }
    });
    for (int i = 0; i < 50; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            word(window, 4) = 0;
            ::_exit(word(window, 4) == 0 ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    stop = true;
    busy.join();
}

#if !defined(__SANITIZE_THREAD__)
// ThreadSanitizer delivers signals late and where they are blocked, also in the middle of the trap.
TEST_F(RegisterTrapTest, RunsInASignalHandlerThatInterruptsOtherAccesses) {
    static RegisterWindow* inHandler = nullptr;
    RegisterWindow window;
    inHandler = &window;
    struct sigaction before = {};
    struct sigaction action = {};
    action.sa_handler = [](int) { word(*inHandler, 0x8) = 2; };
    ASSERT_EQ(::sigaction(SIGUSR1, &action, &before), 0);

    for (int i = 0; i < 100; ++i) {
        word(window, 0x4) = 1;
        ::raise(SIGUSR1);
    }

    EXPECT_THAT(window.accesses(), SizeIs(200));
    ::sigaction(SIGUSR1, &before, nullptr);
}
#endif

std::jmp_buf afterFault;
int faultsSeen = 0;

TEST_F(RegisterTrapTest, HandsFaultsElsewhereToTheHandlerThatWasThereBefore) {
    struct sigaction before = {};
    struct sigaction action = {};
    action.sa_sigaction = [](int, siginfo_t*, void*) {
        ++faultsSeen;
        siglongjmp(afterFault, 1);
    };
    action.sa_flags = SA_SIGINFO;
    ASSERT_EQ(::sigaction(SIGSEGV, &action, &before), 0);
    {
        RegisterWindow window;  // puts the trap in front of that handler
        if (sigsetjmp(afterFault, 1) == 0) {
            *static_cast<volatile int*>(
                ::mmap(nullptr, kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) = 1;
        }
        word(window, 0) = 1;
        EXPECT_THAT(window.accesses(), SizeIs(1));
    }
    EXPECT_EQ(faultsSeen, 1);
    ::sigaction(SIGSEGV, &before, nullptr);
}

TEST_F(RegisterTrapDeathTest, ACrashElsewhereStaysACrash) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            RegisterWindow window;
            void* elsewhere = ::mmap(nullptr, kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            touch(elsewhere, 0);
        },
        KilledBySignal(SIGSEGV), kNoWordFromTheTrap);
}

TEST_F(RegisterTrapDeathTest, ASentSignalStillKills) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            RegisterWindow window;
            ::raise(SIGSEGV);
        },
        KilledBySignal(SIGSEGV), kNoWordFromTheTrap);
}

TEST_F(RegisterTrapDeathTest, AnAccessAfterUnmappingIsACrash) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            void* base = map(PROT_READ | PROT_WRITE);
            unmap(base, kPage);
            touch(base, 0);
        },
        KilledBySignal(SIGSEGV), kNoWordFromTheTrap);
}

TEST_F(RegisterTrapDeathTest, AnAccessAfterTheObserverHasGoneIsACrash) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            void* base = map(PROT_READ | PROT_WRITE);
            RegisterTrap::instance().abandon(recorder_);
            touch(base, 0);
        },
        KilledBySignal(SIGSEGV), kNoWordFromTheTrap);
}

TEST_F(RegisterTrapDeathTest, AWriteToAWindowForReadingIsACrash) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            touch(map(PROT_READ), 0);
        },
        KilledBySignal(SIGSEGV), kNoWordFromTheTrap);
}

TEST_F(RegisterTrapDeathTest, AnAccessAcrossTheEndOfAWindowIsACrash) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            void* base = map(PROT_READ | PROT_WRITE, 2 * kPage);
            unmap(static_cast<std::byte*>(base) + kPage, kPage);
            const std::uint64_t value = 0;
            std::memcpy(static_cast<std::byte*>(base) + kPage - 4, &value, sizeof value);
        },
        KilledBySignal(SIGSEGV), kNoWordFromTheTrap);
}

#if defined(__x86_64__)
// qemu-user, which runs these tests for other processors, never comes back from a bus error in a handler.
TEST_F(RegisterTrapDeathTest, AnAccessBehindTheEndOfTheFileIsABusError) {
    EXPECT_EXIT(
        {
            dieOfFaultsAsUsual();
            touch(map(PROT_READ | PROT_WRITE, kPage, 64 * kPage), 0);
        },
        KilledBySignal(SIGBUS), kNoWordFromTheTrap);
}

TEST_F(RegisterTrapDeathTest, AnInstructionThatIsNotEmulatedEndsTheProcessWithItsText) {
    RegisterWindow window;
    EXPECT_EXIT(asm volatile("fldl (%0)"
                             :
                             : "r"(window.address(0x48))),
                ExitedWithCode(99),
                "boardsim: cannot emulate the access to register 0x48 by 'fld qword ptr \\[r[a-z0-9]+\\]' "
                "\\([0-9a-f ]+\\) at 0x[0-9a-f]+\n$");
}

TEST_F(RegisterTrapDeathTest, AWideningMultiplicationIsNotTakenForTheOneWithTwoOperands) {
    RegisterWindow window;
    EXPECT_EXIT(asm volatile("imull (%0)"
                             :
                             : "r"(window.address(0))
                             : "rax", "rdx"),
                ExitedWithCode(99), "cannot emulate .* 'imul dword ptr");
}

TEST_F(RegisterTrapDeathTest, ABitStringIsNotTakenForABitOfARegister) {
    RegisterWindow window;
    EXPECT_EXIT(asm volatile("btl %1, (%0)"
                             :
                             : "r"(window.address(0)), "r"(1000)),
                ExitedWithCode(99), "cannot emulate .* 'bt dword ptr");
}
#endif

}  // namespace

}  // namespace registertrap
