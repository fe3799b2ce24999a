#include "Tools/boardsim/Host/SharedRegisters.h"

#include <sys/mman.h>

#include <atomic>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {

SharedRegisters::SharedRegisters(const Descriptor& memory, std::size_t bytes) : bytes_(bytes) {
    void* base = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, memory.get(), 0);
    if (base == MAP_FAILED) {
        throw systemError("cannot map the board's registers");
    }
    words_ = static_cast<std::uint32_t*>(base);
}

SharedRegisters::~SharedRegisters() {
    munmap(words_, bytes_);
}

void SharedRegisters::store(std::uint32_t offset, std::uint32_t value) {
    std::atomic_ref(words_[offset / sizeof(std::uint32_t)]).store(value, std::memory_order_release);
}

}  // namespace boardsim
