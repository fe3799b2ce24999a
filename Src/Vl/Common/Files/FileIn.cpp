#include "Vl/Common/Files/FileIn.h"

#include <fcntl.h>

namespace Valen::File {

In::In(const char* path) : descriptor_(Descriptor::open(path, O_RDONLY)) {}

In::~In() = default;

bool In::isValid() const {
    return descriptor_.get() >= 1;
}

}  // namespace Valen::File
