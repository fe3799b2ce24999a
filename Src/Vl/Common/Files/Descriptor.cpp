#include "Vl/Common/Files/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace Valen {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    Descriptor taken(std::move(other));
    std::swap(number_, taken.number_);
    return *this;
}

Descriptor::~Descriptor() {
    if (number_ >= 0) {
        ::close(number_);
    }
}

int Descriptor::close() {
    return ::close(std::exchange(number_, -1));
}

Descriptor Descriptor::open(const char* path, int flags) {
    return Descriptor(::open(path, flags | O_CLOEXEC));  // NOLINT: open(2) is variadic
}

}  // namespace Valen
