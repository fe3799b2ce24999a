#include "Tools/boardsim/Host/RegisterTrap/SystemMapping.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace boardsim {

void* systemMap(const MappingRequest& request) noexcept {
    const long address = ::syscall(SYS_mmap, request.address, request.length, request.protection,
                                   request.flags, request.descriptor, request.offset);
    return reinterpret_cast<void*>(address);
}

int systemUnmap(void* address, std::size_t length) noexcept {
    return static_cast<int>(::syscall(SYS_munmap, address, length));
}

std::size_t roundToPages(std::size_t length) noexcept {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return (length + page - 1) / page * page;
}

}  // namespace boardsim
