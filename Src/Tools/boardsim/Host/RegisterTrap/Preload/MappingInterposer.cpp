// The program's mmap and munmap. They go before the C library's: a shared mapping of the register device
// becomes a register window, all else goes straight to the kernel.
#include <sys/mman.h>

#include <algorithm>
#include <cerrno>

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

void* mapPlain(const MappingRequest& request) noexcept {
    return RegisterTrap::isInUse() ? RegisterTrap::instance().mapUntrapped(request) : systemMap(request);
}

/// The stretch's pages, as far as they are part of the mapping; the mapping begins with a page.
RegisterRange wholePages(const RegisterRange& stretch, const MappingRequest& mapping) noexcept {
    const auto begin = static_cast<std::uint64_t>(mapping.offset);
    const std::uint64_t pages = begin + roundToPages(mapping.length);
    const std::uint64_t pageBegin = stretch.begin / roundToPages(1) * roundToPages(1);
    const std::uint64_t last = std::min(stretch.end, pages);
    return {std::max(pageBegin, begin), begin + roundToPages(last - begin)};
}

/// Makes windows of those pages of a plain mapping that the observer wants to see.
bool trapPages(std::byte* base, const MappingRequest& mapping, RegisterObserver& observer) noexcept {
    const auto begin = static_cast<std::uint64_t>(mapping.offset);
    const std::uint64_t end = begin + mapping.length;
    RegisterRange next = observer.nextObserved(begin);
    while (!next.isEmpty() && next.begin < end) {
        const RegisterRange pages = wholePages(next, mapping);
        MappingRequest window = mapping;
        window.address = base + (pages.begin - begin);
        window.length = pages.end - pages.begin;
        window.flags = MAP_SHARED | MAP_FIXED;
        window.offset = static_cast<off64_t>(pages.begin);
        if (RegisterTrap::instance().map(window, observer) == MAP_FAILED) {
            return false;
        }
        next = observer.nextObserved(pages.end);
    }
    return true;
}

void* mapRegisters(const MappingRequest& request, RegisterObserver& observer) noexcept {
    void* base = mapPlain(request);
    if (base == MAP_FAILED || trapPages(static_cast<std::byte*>(base), request, observer)) {
        return base;
    }
    const int reason = errno;
    RegisterTrap::instance().unmap(base, request.length);
    errno = reason;
    return MAP_FAILED;
}

void* map(const MappingRequest& request) noexcept {
    if (isRegisterMapping(request)) {
        if (RegisterObserver* observer = deviceObserver()) {
            return mapRegisters(request, *observer);
        }
    }
    return mapPlain(request);
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
