#include "Tools/boardsim/Host/SharedRegisters.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {

SharedRegisters::SharedRegisters(Descriptor memory, std::size_t bytes)
    : memory_(std::move(memory)), words_(nullptr), bytes_(bytes) {
    void* base = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, memory_.get(), 0);
    if (base == MAP_FAILED) {
        throw systemError("cannot map the board's registers");
    }
    words_ = static_cast<std::uint32_t*>(base);
}

SharedRegisters::~SharedRegisters() {
    munmap(words_, bytes_);
}

void SharedRegisters::store(std::uint32_t offset, std::uint32_t value) {
    // Beyond the file's end the store would be a SIGBUS.
    restoreSize();
    std::atomic_ref(words_[offset / sizeof(std::uint32_t)]).store(value, std::memory_order_release);
}

std::span<std::uint32_t> SharedRegisters::words() {
    restoreSize();
    return {words_, bytes_ / sizeof(std::uint32_t)};
}

void SharedRegisters::restoreSize() const {
    struct stat status {};
    if (fstat(memory_.get(), &status) != 0 || status.st_size >= static_cast<off_t>(bytes_)) {
        return;
    }
    if (ftruncate(memory_.get(), static_cast<off_t>(bytes_)) != 0) {
        throw systemError("cannot size the board's registers");
    }
}

}  // namespace boardsim
