#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <string>

/// A file that lives in memory only, for parsers that take a path.
class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("input", MFD_CLOEXEC)) {}
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Replaces the contents. Ends the program where that fails.
    void write(const void* data, size_t size) {
        if (ftruncate(descriptor_, 0) != 0 ||
            pwrite(descriptor_, data, size, 0) != static_cast<ssize_t>(size)) {
            std::abort();
        }
    }

    const char* path() const { return path_.c_str(); }

private:
    int descriptor_;
    std::string path_ = "/proc/self/fd/" + std::to_string(descriptor_);
};
