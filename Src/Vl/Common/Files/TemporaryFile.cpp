#include "Vl/Common/Files/TemporaryFile.h"

#include <fcntl.h>
#include <stdlib.h>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Strings/FileNames.h"

namespace Valen {

std::string CreateTemporaryFile(const std::string& directory) {
    const std::string pattern = directory + GetTemporaryFilePrefix() + "XXXXXX";
    std::string path = pattern;
    // mkstemp, close-on-exec: no program that another thread starts meanwhile gets to see the descriptor.
    if (!Descriptor(mkostemp(path.data(), O_CLOEXEC)).isValid()) {
        const int error = errno;
        throw TemporaryFileException("could not create " + pattern + ": " + errnoText(error), error);
    }
    return path;
}

}  // namespace Valen
