// A program that the trap library is preloaded into. Its one argument says what it does; its exit status is 0
// when all it has seen was as it should be.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
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

struct Action {
    std::string_view name;
    void (*run)();
};
constexpr Action kActions[] = {
    {"registers", accessRegisters}, {"descriptors", keepDescriptorNumbers}, {"close", closeEverything},
    {"fork", forkAndAccess},        {"threads", accessFromTwoThreads},      {"seek", seek},
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
