#include "Vl/Common/Files/ExactIO.h"

#include <unistd.h>

#include <cerrno>

namespace Valen {

ssize_t readExact(int descriptor, std::span<std::byte> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::read(descriptor, bytes.data() + done, bytes.size() - done);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (count == 0) {
            break;
        } else if (errno != EINTR) {
            return -1;
        }
    }
    return static_cast<ssize_t>(done);
}

ssize_t writeCounting(int descriptor, std::span<const std::byte> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (count == 0) {
            break;  // some drivers take nothing and say so for ever
        } else if (errno != EINTR) {
            return -1;
        }
    }
    return static_cast<ssize_t>(done);
}

bool writeExact(int descriptor, std::string_view text) {
    const ssize_t count = writeCounting(descriptor, std::as_bytes(std::span(text)));
    if (count < 0) {
        return false;
    }
    if (static_cast<std::size_t>(count) < text.size()) {
        errno = EIO;
        return false;
    }
    return true;
}

}  // namespace Valen
