#include "Tools/boardsim/Host/RegisterTrap/Preload/DescriptorPath.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>

namespace boardsim {

DescriptorPath::DescriptorPath(int descriptor) noexcept {
    constexpr std::string_view kDirectory = "/proc/self/fd/";
    const int errnoBefore = errno;

    std::array<char, 32> link{};
    char* number = std::ranges::copy(kDirectory, link.begin()).out;
    std::to_chars(number, link.end() - 1, descriptor);
    const ssize_t length = ::readlink(link.data(), characters_.data(), characters_.size());
    if (length > 0 && static_cast<std::size_t>(length) < characters_.size()) {
        length_ = static_cast<std::size_t>(length);
    }

    errno = errnoBefore;
}

}  // namespace boardsim
