#pragma once

#include <cstddef>
#include <cstdint>

namespace boardsim {

/// The arguments of mmap.
struct MappingRequest {
    void* address = nullptr;
    std::size_t length = 0;
    int protection = 0;
    int flags = 0;
    int descriptor = -1;
    std::int64_t offset = 0;
};

/// mmap and munmap straight from the kernel, past whatever this process has put in their place.
/// Results and errno are those of the system calls.
void* systemMap(const MappingRequest& request) noexcept;
int systemUnmap(void* address, std::size_t length) noexcept;

/// `length` rounded up to whole pages, which is what the kernel maps.
std::size_t roundToPages(std::size_t length) noexcept;

}  // namespace boardsim
