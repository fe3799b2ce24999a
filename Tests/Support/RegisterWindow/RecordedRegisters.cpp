#include "Tests/Support/RegisterWindow/RecordedRegisters.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "Tools/boardsim/Host/RegisterTrap/SystemMapping.h"

namespace support {

RecordedRegisters::RecordedRegisters(int descriptor, std::size_t length) : descriptor_(descriptor) {
    if (descriptor < 0 || ::ftruncate(descriptor, static_cast<off_t>(length)) != 0) {
        throw std::system_error(errno, std::generic_category(), "register file");
    }
    // Past mmap, which the test program may have replaced.
    void* address = boardsim::systemMap({nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0});
    if (address == MAP_FAILED) {
        throw std::system_error(errno, std::generic_category(), "register file");
    }
    registers_ = {static_cast<std::byte*>(address), length};
}

RecordedRegisters::~RecordedRegisters() {
    boardsim::systemUnmap(registers_.data(), registers_.size());
    ::close(descriptor_);
}

std::span<std::byte> RecordedRegisters::memory(std::size_t offset, std::size_t width) const {
    if (offset > registers_.size() || width > registers_.size() - offset) {
        throw std::out_of_range("offset behind the register file");
    }
    return registers_.subspan(offset, width);
}

}  // namespace support
