#include "Tests/HAL/Board/LinkCalls.h"

#include <net/if.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ostream>

namespace {

LinkCalls* drivers = nullptr;

/// Those of linux/sockios.h from SIOCGMIIPHY on, and the device-private ones.
bool concernsDriver(unsigned long code) {
    return (code >= 0x8947 && code <= 0x8949) || (code >= 0x89F0 && code <= 0x89FF);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const LinkCall& call) {
    return out << std::hex << "request 0x" << call.code << std::dec << " on '" << call.interface << "' with "
               << call.argument << (call.restIsZero ? "" : " and more");
}

LinkCalls::LinkCalls() {
    drivers = this;
}

LinkCalls::~LinkCalls() {
    drivers = nullptr;
}

// Which names these are is the linker's choice.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __real_ioctl(int descriptor, unsigned long code, void* argument);

extern "C" int __wrap_ioctl(int descriptor, unsigned long code, ...) {
    va_list list;
    va_start(list, code);
    void* argument = va_arg(list, void*);
    va_end(list);
    if (drivers == nullptr || !concernsDriver(code)) {
        return __real_ioctl(descriptor, code, argument);
    }
    auto* request = static_cast<ifreq*>(argument);
    std::array<int, sizeof request->ifr_ifru / sizeof(int)> words{};
    std::memcpy(words.data(), &request->ifr_ifru, sizeof words);
    const bool restIsZero = std::all_of(words.begin() + 1, words.end(), [](int word) { return word == 0; });
    drivers->calls.push_back({code, request->ifr_name, words.front(), restIsZero});
    drivers->descriptors.push_back(descriptor);
    std::memcpy(&request->ifr_ifru, &drivers->left, sizeof drivers->left);
    if (drivers->answer < 0) {
        errno = -drivers->answer;
        return -1;
    }
    return drivers->answer;
}
// NOLINTEND(bugprone-reserved-identifier)
