#include "Tests/HAL/Board/BoardCalls.h"

#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <linux/mii.h>
#include <net/if.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace {

// The drivers' numbers, which the code under test must have found by itself.
constexpr unsigned long kSlave = 0x0703;
constexpr unsigned long kSmbus = 0x0720;
constexpr int kWord = 3;
constexpr unsigned long kOwnPhy = 0x8947;
constexpr unsigned long kReadPhy = 0x8948;
constexpr unsigned long kWritePhy = 0x8949;

BoardCalls* driver = nullptr;
std::map<int, int> selected;  // by descriptor

template <typename... Numbers>
std::string words(const char* format, Numbers... numbers) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), format, numbers...);
    return text.data();
}

/// Records a call. @return whether it succeeds.
bool call(const std::string& text) {
    driver->calls.push_back(text);
    for (const std::string& failing : driver->failing) {
        if (text.starts_with(failing)) {
            errno = ENXIO;
            return false;
        }
    }
    return true;
}

bool smbus(int bus, int address, const i2c_smbus_ioctl_data& transfer) {
    const bool isWord = transfer.size == kWord;
    const int width = isWord ? 16 : 8;
    const unsigned int reg = transfer.command;
    auto& registers = driver->chips[{bus, address}];
    std::uint8_t& low = registers.at(reg);
    std::uint8_t& high = registers.at((reg + 1) % registers.size());
    if (transfer.read_write != 0) {
        if (!call(words("%d-%02x read%d %02x", bus, address, width, reg))) {
            return false;
        }
        transfer.data->word = static_cast<std::uint16_t>(isWord ? low | high << 8 : low);
        return true;
    }
    const unsigned int value = isWord ? transfer.data->word : transfer.data->byte;
    if (!call(words("%d-%02x write%d %02x=%0*x", bus, address, width, reg, width / 4, value))) {
        return false;
    }
    low = static_cast<std::uint8_t>(value);
    if (isWord) {
        high = static_cast<std::uint8_t>(value >> 8);
    }
    return true;
}

bool i2c(int bus, int descriptor, unsigned long code, void* argument) {
    const int address = selected[descriptor];
    switch (code) {
        case kSlave:
            selected[descriptor] = static_cast<int>(reinterpret_cast<long>(argument));
            return call(words("i2c-%d select %02x", bus, selected[descriptor]));
        case kSmbus:
            return smbus(bus, address, *static_cast<const i2c_smbus_ioctl_data*>(argument));
        default:
            return call(words("i2c-%d request %lx", bus, code));
    }
}

bool mii(unsigned long code, ifreq& request) {
    const std::string interface = request.ifr_name;
    mii_ioctl_data data;
    std::memcpy(&data, &request.ifr_ifru, sizeof data);
    if (code == kOwnPhy) {
        return call(interface + " own");
    }
    if (code == kWritePhy) {
        return call(interface + words(" phy %d write %d=%04x", data.phy_id, data.reg_num, data.val_in));
    }
    data.val_out = driver->phyWord;
    std::memcpy(&request.ifr_ifru, &data, sizeof data);
    return call(interface + words(" phy %d read %d", data.phy_id, data.reg_num));
}

}  // namespace

BoardCalls::BoardCalls() {
    driver = this;
}

BoardCalls::~BoardCalls() {
    driver = nullptr;
    selected.clear();
}

std::vector<std::string> BoardCalls::callsOf(const std::string& words) const {
    std::vector<std::string> found;
    for (const std::string& text : calls) {
        if (text.starts_with(words)) {
            found.push_back(text);
        }
    }
    return found;
}

extern "C" int ioctl(int descriptor, unsigned long code, ...) noexcept {
    va_list list;
    va_start(list, code);
    void* argument = va_arg(list, void*);
    va_end(list);
    if (driver != nullptr && code >= kOwnPhy && code <= kWritePhy) {
        return mii(code, *static_cast<ifreq*>(argument)) ? 0 : -1;
    }
    std::error_code none;
    const std::string path =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none);
    if (driver != nullptr && path == "/dev/gpio") {
        return call(words("gpio %lx %lx", code, reinterpret_cast<unsigned long>(argument))) ? 0 : -1;
    }
    constexpr std::string_view kBus = "/dev/i2c-";
    if (driver != nullptr && path.starts_with(kBus)) {
        return i2c(std::stoi(path.substr(kBus.size())), descriptor, code, argument) ? 0 : -1;
    }
    return static_cast<int>(syscall(SYS_ioctl, descriptor, code, argument));
}
