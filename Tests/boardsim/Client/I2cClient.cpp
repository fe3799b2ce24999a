// A program for the virtual board that uses "/dev/i2c-0" as its words say: with memory that is not there,
// from several processes and threads.
#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <thread>

namespace {

constexpr unsigned long kVideoEncoder = 0x2A;

int bus() {
    static const int file = open("/dev/i2c-0", O_RDWR | O_CLOEXEC);
    return file;
}

void say(const char* what, int result) {
    std::printf("%s: %s\n", what, result < 0 ? std::strerror(errno) : "done");
}

int readRegister(std::uint8_t number, i2c_smbus_data* data) {
    i2c_smbus_ioctl_data request{I2C_SMBUS_READ, number, I2C_SMBUS_BYTE_DATA, data};
    return ioctl(bus(), I2C_SMBUS, &request);
}

int writeRegister(std::uint8_t number, std::uint8_t value) {
    i2c_smbus_data data{};
    data.byte = value;
    i2c_smbus_ioctl_data request{I2C_SMBUS_WRITE, number, I2C_SMBUS_BYTE_DATA, &data};
    return ioctl(bus(), I2C_SMBUS, &request);
}

void badMemory() {
    auto* const readOnly = static_cast<i2c_smbus_data*>(
        mmap(nullptr, sizeof(i2c_smbus_data), PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    say("functions to nowhere", ioctl(bus(), I2C_FUNCS, 8));
    say("request from nowhere", ioctl(bus(), I2C_SMBUS, 8));
    say("messages from nowhere", ioctl(bus(), I2C_RDWR, 8));
    say("value to nowhere", readRegister(1, reinterpret_cast<i2c_smbus_data*>(8)));
    say("value to where nobody may write", readRegister(1, readOnly));
    say("a terminal's request", ioctl(bus(), 0x5401, readOnly));
}

/// A child that was given the opening has its address, and its own memory.
void inChild() {
    writeRegister(7, 0x77);
    if (fork() == 0) {
        i2c_smbus_data data{};
        const bool isRead = readRegister(7, &data) == 0;
        std::printf("child: %d 0x%02x\n", isRead, data.byte);
        std::fflush(stdout);
        _exit(0);
    }
    wait(nullptr);
}

void inThreads() {
    constexpr std::size_t kThreads = 4;
    constexpr unsigned kRounds = 200;
    std::atomic<unsigned> wrong = 0;
    std::array<std::thread, kThreads> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads[i] = std::thread([i, &wrong] {
            const auto number = static_cast<std::uint8_t>(0x10 + i);
            for (unsigned round = 0; round < kRounds; ++round) {
                const auto value = static_cast<std::uint8_t>(round);
                i2c_smbus_data data{};
                if (writeRegister(number, value) != 0 || readRegister(number, &data) != 0 ||
                    data.byte != value) {
                    ++wrong;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::printf("wrong: %u\n", wrong.load());
}

}  // namespace

int main(int argc, char** argv) {
    if (ioctl(bus(), I2C_SLAVE, kVideoEncoder) != 0) {
        std::perror("/dev/i2c-0");
        return 1;
    }
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "bad-memory") {
            badMemory();
        } else if (word == "in-child") {
            inChild();
        } else if (word == "in-threads") {
            inThreads();
        }
    }
}
