#include "Tests/HAL/Bus/I2cCalls.h"

#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

// The driver's numbers, which the code under test must have found by itself.
constexpr unsigned long kSlave = 0x0703;
constexpr unsigned long kCombined = 0x0707;
constexpr unsigned long kSmbus = 0x0720;
constexpr int kByte = 2;
constexpr int kWord = 3;
constexpr int kReadFlag = 1;

I2cCalls* driver = nullptr;

bool isBus(int descriptor) {
    std::error_code none;
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none);
    return path.native().starts_with("/dev/i2c-");
}

std::string hex(unsigned long number, int digits) {
    std::array<char, 24> text;
    std::snprintf(text.data(), text.size(), "%0*lx", digits, number);
    return text.data();
}

int refuse() {
    errno = ENXIO;
    return -1;
}

/// Gives the test's next answer for a register, or else what the register holds.
std::optional<unsigned int> answer(std::uint8_t command, bool word) {
    if (auto& next = driver->next[command]; !next.empty()) {
        const int value = next.front();
        next.pop_front();
        return value < 0 ? std::nullopt : std::optional(static_cast<unsigned int>(value));
    }
    const unsigned int low = driver->registers.at(command);
    return word ? low | static_cast<unsigned int>(driver->registers.at(command + 1U)) << 8 : low;
}

int smbus(const i2c_smbus_ioctl_data& transfer, bool fails) {
    if ((transfer.size != kByte && transfer.size != kWord) || transfer.read_write > 1) {
        driver->calls.push_back("size " + std::to_string(transfer.size));
        return refuse();
    }
    const bool word = transfer.size == kWord;
    const std::string what = std::string(word ? "16 " : "8 ") + hex(transfer.command, 2);
    if (transfer.read_write == 0) {
        const std::string value = word ? hex(transfer.data->word, 4) : hex(transfer.data->byte, 2);
        driver->calls.push_back("write" + what + "=" + value);
        return fails ? refuse() : 0;
    }
    driver->calls.push_back("read" + what);
    const std::optional<unsigned int> value = answer(transfer.command, word);
    if (fails || !value) {
        return refuse();
    }
    if (word) {
        transfer.data->word = static_cast<std::uint16_t>(*value);
    } else {
        transfer.data->byte = static_cast<std::uint8_t>(*value);
    }
    return 0;
}

int combined(const i2c_rdwr_ioctl_data& transfer, bool fails) {
    for (const i2c_msg* message = transfer.msgs; message != transfer.msgs + transfer.nmsgs; ++message) {
        std::string text =
            "message " + hex(message->addr, 4) + " " + hex(message->flags, 4) + " " + hex(message->len, 4);
        if ((message->flags & kReadFlag) != 0) {
            std::fill_n(message->buf, message->len, driver->messageByte);
        } else {
            text += ":";
            for (int index = 0; index < message->len; ++index) {
                text += " " + hex(message->buf[index], 2);
            }
        }
        driver->calls.push_back(text);
    }
    return fails ? refuse() : driver->messagesDone.value_or(static_cast<int>(transfer.nmsgs));
}

}  // namespace

I2cCalls::I2cCalls() {
    driver = this;
}

I2cCalls::~I2cCalls() {
    driver = nullptr;
}

extern "C" int ioctl(int descriptor, unsigned long code, ...) noexcept {
    va_list list;
    va_start(list, code);
    void* argument = va_arg(list, void*);
    va_end(list);
    if (driver == nullptr || !isBus(descriptor)) {
        return static_cast<int>(syscall(SYS_ioctl, descriptor, code, argument));
    }
    const bool fails = driver->failing == driver->calls.size();
    switch (code) {
        case kSlave:
            driver->calls.push_back("select " + hex(reinterpret_cast<unsigned long>(argument), 2));
            return fails ? refuse() : 0;
        case kSmbus:
            return smbus(*static_cast<const i2c_smbus_ioctl_data*>(argument), fails);
        case kCombined:
            return combined(*static_cast<const i2c_rdwr_ioctl_data*>(argument), fails);
        default:
            driver->calls.push_back("request " + hex(code, 4));
            return refuse();
    }
}
