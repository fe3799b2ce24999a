// The program's mmap and munmap. They go before the C library's: a shared mapping of the register device
// becomes a register window, all else goes straight to the kernel.
#include <sys/mman.h>

#include "Tools/boardsim/Host/RegisterTrap/Preload/DescriptorPath.h"
#include "Tools/boardsim/Host/RegisterTrap/Preload/DeviceObserver.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterTrap.h"

namespace boardsim {

namespace {

constexpr std::string_view kRegisterDevice = "/dev/fpga";

bool isRegisterMapping(const MappingRequest& request) noexcept {
    const int sharing = request.flags & MAP_TYPE;
    const bool isShared = sharing == MAP_SHARED || sharing == MAP_SHARED_VALIDATE;
    return isShared && !(request.flags & MAP_ANONYMOUS) &&
           DescriptorPath(request.descriptor).text() == kRegisterDevice;
}

void* map(const MappingRequest& request) noexcept {
    if (isRegisterMapping(request)) {
        if (RegisterObserver* observer = deviceObserver()) {
            return RegisterTrap::instance().map(request, *observer);
        }
    }
    return RegisterTrap::isInUse() ? RegisterTrap::instance().mapUntrapped(request) : systemMap(request);
}

int unmap(void* address, std::size_t length) noexcept {
    return RegisterTrap::isInUse() ? RegisterTrap::instance().unmap(address, length)
                                   : systemUnmap(address, length);
}

}  // namespace

}  // namespace boardsim

extern "C" {

void* mmap(void* address, std::size_t length, int protection, int flags, int descriptor,
           off_t offset) noexcept {
    return boardsim::map({address, length, protection, flags, descriptor, offset});
}

void* mmap64(void* address, std::size_t length, int protection, int flags, int descriptor,
             off64_t offset) noexcept {
    return boardsim::map({address, length, protection, flags, descriptor, offset});
}

int munmap(void* address, std::size_t length) noexcept {
    return boardsim::unmap(address, length);
}

}  // extern "C"
