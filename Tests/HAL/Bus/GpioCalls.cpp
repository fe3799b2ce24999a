#include "Tests/HAL/Bus/GpioCalls.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

GpioCalls* driver = nullptr;

bool isGpio(int descriptor) {
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none) == "/dev/gpio";
}

}  // namespace

GpioCalls::GpioCalls() {
    driver = this;
}

GpioCalls::~GpioCalls() {
    driver = nullptr;
}

extern "C" int ioctl(int descriptor, unsigned long code, ...) noexcept {
    va_list list;
    va_start(list, code);
    const auto argument = va_arg(list, unsigned long);
    va_end(list);
    if (driver == nullptr || !isGpio(descriptor)) {
        return static_cast<int>(syscall(SYS_ioctl, descriptor, code, argument));
    }
    driver->calls.push_back({code, argument});
    return driver->result;
}
