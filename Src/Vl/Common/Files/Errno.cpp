#include "Vl/Common/Files/Errno.h"

#include <cstring>

namespace Valen {

const char* errnoText(int error) {
    // glibc keeps the texts of unknown numbers per thread, unlike what the standard demands.
    return std::strerror(error);  // NOLINT(concurrency-mt-unsafe)
}

}  // namespace Valen
