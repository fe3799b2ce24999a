// A program that the trap library is preloaded into. Its one argument says what it does; its exit status is 0
// when all it has seen was as it should be.
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>

namespace {

constexpr std::size_t kLength = 0x1000;

void require(bool condition, int status) {
    if (!condition) {
        std::_Exit(status);
    }
}

struct Device {
    int file = ::open("/dev/fpga", O_RDWR | O_CLOEXEC);
    std::byte* base =
        static_cast<std::byte*>(::mmap(nullptr, kLength, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));

    template <typename Value>
    volatile Value& at(std::size_t offset) const {
        return *reinterpret_cast<volatile Value*>(base + offset);
    }
};

void accessRegisters() {
    const Device device;
    device.at<std::uint32_t>(0x10) = 0x11223344;
    require(device.at<std::uint8_t>(0x11) == 0x33, 10);
    device.at<std::uint16_t>(0x20) = 0xBEEF;
    require(device.at<std::uint64_t>(0x10) == 0x11223344, 11);
    require(::munmap(device.base, static_cast<std::size_t>(-1)) == -1 && errno == EINVAL, 12);
    require(::munmap(device.base, kLength) == 0, 13);
}

void keepDescriptorNumbers() {
    ::closefrom(3);  // what the starter of the tests left open
    const Device device;
    require(device.file == 3, 10);
    device.at<std::uint32_t>(0) = 1;
    require(::open("/dev/null", O_RDONLY) == 4, 11);
}

void closeEverything() {
    const Device device;
    device.at<std::uint32_t>(0) = 1;
    ::closefrom(3);
    device.at<std::uint32_t>(0) = 2;
}

void forkAndAccess() {
    const Device device;
    device.at<std::uint32_t>(0) = 1;
    const pid_t child = ::fork();
    if (child == 0) {
        device.at<std::uint32_t>(0) = 2;
        std::_Exit(0);
    }
    int status = -1;
    require(::waitpid(child, &status, 0) == child && status == 0, 10);
    device.at<std::uint32_t>(0) = 3;
}

void accessFromTwoThreads() {
    const Device device;
    const auto count = [&device](std::size_t offset) {
        for (std::uint32_t i = 1; i <= 500; ++i) {
            device.at<std::uint32_t>(offset) = i;
        }
    };
    std::thread first(count, 0x0);
    std::thread second(count, 0x4);
    first.join();
    second.join();
}

void seek() {
    const int screen = ::open("/tmp/panel/screen", O_RDWR | O_CLOEXEC);
    const int other = ::open("/tmp/panel/other", O_RDWR | O_CLOEXEC);
    require(screen >= 0 && other >= 0, 10);
    require(::lseek(screen, 7, SEEK_SET) == 7, 11);
    require(::lseek(other, 5, SEEK_SET) == 5, 12);
    require(::lseek64(screen, 4, SEEK_CUR) == 11, 13);
    require(::lseek(screen, -1, SEEK_SET) == -1 && errno == EINVAL, 14);
    require(::lseek(-1, 0, SEEK_SET) == -1 && errno == EBADF, 15);
}

void pollUntilIdle() {
    const Device device;
    device.at<std::uint32_t>(0x800) = 0x60080000;
    std::uint32_t value = 0;
    do {
        value = device.at<std::uint32_t>(0x800);
    } while (value & 0x80000000);
    require(value == 0x2000, 10);
    require(device.at<std::uint32_t>(0x10) == 0x5555, 11);  // set by the board when it took the write
}

void accessInOtherWidths() {
    const Device device;
    require(device.at<std::uint8_t>(0x801) == 0x81, 10);
    require(device.at<std::uint16_t>(0x802) == 0x8382, 11);
    device.at<std::uint64_t>(0x808) = 0x1122334455667788;
    using Vector = std::uint64_t __attribute__((vector_size(16)));
    const auto* vector = reinterpret_cast<const volatile Vector*>(device.base + 0x810);
    const Vector whole = *vector;
    require(whole[0] == 0 && whole[1] == 0, 12);
}

void readWithoutWriting() {
    const int file = ::open("/dev/fpga", O_RDONLY | O_CLOEXEC);
    const auto* base =
        static_cast<const std::byte*>(::mmap(nullptr, kLength, PROT_READ, MAP_SHARED, file, 0));
    require(*reinterpret_cast<const volatile std::uint32_t*>(base + 0x800) == 0x2000, 10);
}

/// Who asks is what is answered.
void expectOwnNumber(const Device& device, std::uint32_t number) {
    for (int i = 0; i < 500; ++i) {
        require(device.at<std::uint32_t>(0x800) == number, 10);
    }
}

void askFromTwoThreads() {
    const Device device;
    const auto ask = [&device] { expectOwnNumber(device, static_cast<std::uint32_t>(::gettid())); };
    std::thread first(ask);
    std::thread second(ask);
    first.join();
    second.join();
}

void askFromACancelledThread() {
    const Device device;
    std::uint32_t seen = 0;
    std::thread cancelled([&] {
        ::pthread_cancel(::pthread_self());
        seen = device.at<std::uint32_t>(0x800);
        ::pthread_testcancel();
        std::_Exit(10);
    });
    cancelled.join();
    require(seen == 0x2000, 11);
    require(device.at<std::uint32_t>(0x800) == 0x2000, 12);
}

void askFromParentAndChild() {
    const Device device;
    expectOwnNumber(device, static_cast<std::uint32_t>(::gettid()));
    const pid_t child = ::fork();
    expectOwnNumber(device, static_cast<std::uint32_t>(::gettid()));
    if (child == 0) {
        std::_Exit(0);
    }
    int status = -1;
    require(::waitpid(child, &status, 0) == child && status == 0, 11);
    expectOwnNumber(device, static_cast<std::uint32_t>(::gettid()));
}

void closeTheConnection() {
    const Device device;
    require(device.at<std::uint32_t>(0x800) == 0x2000, 10);
    ::closefrom(3);
    const int own = ::open("/tmp/panel/other", O_RDWR | O_CLOEXEC);
    require(::dup2(own, 200) == 200, 11);  // where the connection was
    require(device.at<std::uint32_t>(0x800) == 0x2000, 12);
    require(::lseek(200, 0, SEEK_END) == 0, 13);
}

void readTwice() {
    const Device device;
    device.at<std::uint32_t>(0x800) = 0x77;
    require(device.at<std::uint32_t>(0x800) == 0x77, 10);
    require(device.at<std::uint32_t>(0x800) == 0x77, 11);
}

void readInTheSecondPage() {
    const int file = ::open("/dev/fpga", O_RDWR | O_CLOEXEC);
    auto* base =
        static_cast<std::byte*>(::mmap(nullptr, kLength, PROT_READ | PROT_WRITE, MAP_SHARED, file, kLength));
    require(*reinterpret_cast<volatile std::uint32_t*>(base + 0x800) == 0x2000, 10);
    require(::munmap(base, kLength) == 0, 11);
}

/// The access rights of the page at `address` as the kernel sees them: "rw-s".
std::string rightsOf(const std::byte* address) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        const std::size_t hyphen = line.find('-');
        const std::uintptr_t begin = std::strtoull(line.c_str(), nullptr, 16);
        const std::uintptr_t end = std::strtoull(line.c_str() + hyphen + 1, nullptr, 16);
        if (wanted >= begin && wanted < end) {
            return line.substr(line.find(' ') + 1, 4);
        }
    }
    return "";
}

void lookAtPages() {
    const int file = ::open("/dev/fpga", O_RDWR | O_CLOEXEC);
    const auto* base = static_cast<const std::byte*>(
        ::mmap(nullptr, 2 * kLength, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
    require(rightsOf(base) == "rw-s", 10);
    require(rightsOf(base + kLength) == "---s", 11);
}

struct Action {
    std::string_view name;
    void (*run)();
};
constexpr Action kActions[] = {
    {"registers", accessRegisters},
    {"descriptors", keepDescriptorNumbers},
    {"close", closeEverything},
    {"poll", pollUntilIdle},
    {"widths", accessInOtherWidths},
    {"read-only", readWithoutWriting},
    {"ask-threads", askFromTwoThreads},
    {"ask-cancelled", askFromACancelledThread},
    {"ask-fork", askFromParentAndChild},
    {"reuse", closeTheConnection},
    {"twice", readTwice},
    {"second-page", readInTheSecondPage},
    {"pages", lookAtPages},
    {"fork", forkAndAccess},
    {"threads", accessFromTwoThreads},
    {"seek", seek},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Action& action : kActions) {
        if (argc == 2 && action.name == argv[1]) {
            action.run();
            return 0;
        }
    }
    return 1;
}
