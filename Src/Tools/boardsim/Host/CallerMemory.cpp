#include "Tools/boardsim/Host/CallerMemory.h"

#include <sys/uio.h>

#include <cerrno>

namespace boardsim {
namespace {

/// A null pointer is a bad address like any other; only the types of this call want pointers.
void* pointerTo(std::uint64_t address) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(address));
}

std::errc outcome(ssize_t copied, std::size_t wanted) {
    if (copied < 0) {
        return static_cast<std::errc>(errno);
    }
    return static_cast<std::size_t>(copied) == wanted ? std::errc{} : std::errc::bad_address;
}

}  // namespace

std::errc CallerMemory::read(std::uint64_t address, std::span<std::byte> into) const {
    const iovec here{into.data(), into.size()};
    const iovec there{pointerTo(address), into.size()};
    return outcome(process_vm_readv(caller_, &here, 1, &there, 1, 0), into.size());
}

std::errc CallerMemory::write(std::uint64_t address, std::span<const std::byte> bytes) const {
    const iovec here{const_cast<std::byte*>(bytes.data()), bytes.size()};
    const iovec there{pointerTo(address), bytes.size()};
    return outcome(process_vm_writev(caller_, &here, 1, &there, 1, 0), bytes.size());
}

}  // namespace boardsim
