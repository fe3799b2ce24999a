#include "Tests/HAL/Bus/MiiCalls.h"

#include <net/if.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ostream>

namespace {

MiiCalls* driver = nullptr;

constexpr unsigned long kGetPhy = 0x8947;
constexpr unsigned long kGetRegister = 0x8948;

/// The words that linux/mii.h describes, where the kernel finds them.
struct Words {
    std::uint16_t phy;
    std::uint16_t reg;
    std::uint16_t valueIn;
    std::uint16_t valueOut;
};

}  // namespace

std::ostream& operator<<(std::ostream& out, const MiiCall& call) {
    return out << std::hex << "request 0x" << call.code << " on " << call.interface << ": PHY 0x" << call.phy
               << ", register 0x" << call.reg << ", value 0x" << call.value << std::dec;
}

MiiCalls::MiiCalls(int descriptor) : socket(descriptor) {
    driver = this;
}

MiiCalls::~MiiCalls() {
    driver = nullptr;
}

// Which names these are is the linker's choice.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __real_ioctl(int descriptor, unsigned long code, void* argument);

extern "C" int __wrap_ioctl(int descriptor, unsigned long code, ...) {
    va_list list;
    va_start(list, code);
    void* argument = va_arg(list, void*);
    va_end(list);
    if (driver == nullptr || descriptor != driver->socket) {
        return __real_ioctl(descriptor, code, argument);
    }
    auto* request = static_cast<ifreq*>(argument);
    Words words;
    std::memcpy(&words, &request->ifr_ifru, sizeof words);
    driver->calls.push_back({code, request->ifr_name, words.phy, words.reg, words.valueIn});
    if (code == driver->failing) {
        errno = EOPNOTSUPP;
        return -1;
    }
    words.phy = code == kGetPhy ? driver->ownPhy : words.phy;
    words.valueOut = code == kGetRegister ? driver->answer : words.valueOut;
    std::memcpy(&request->ifr_ifru, &words, sizeof words);
    return 0;
}
// NOLINTEND(bugprone-reserved-identifier)
