#include "Vl/Common/Files/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace Valen {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
}

Descriptor::~Descriptor() {
    if (number >= 0) {
        ::close(number);
    }
}

Descriptor Descriptor::open(const char* path, int flags) {
    return Descriptor(::open(path, flags | O_CLOEXEC));  // NOLINT: open(2) is variadic
}

}  // namespace Valen
