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

bool writeExact(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0) {
            errno = EIO;  // some drivers take nothing and say so for ever
            return false;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace Valen
