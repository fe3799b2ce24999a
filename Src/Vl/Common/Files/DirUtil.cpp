#include "Vl/Common/Files/DirUtil.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen {

bool DirUtil::FileExists(const char* path) {
    return access(path, F_OK) == 0;
}

bool DirUtil::IsDir(const char* path) {
    // What opendir(3) does, without the buffer for a listing that nobody asks for.
    return Descriptor::open(path, O_RDONLY | O_NONBLOCK | O_DIRECTORY).isValid();
}

int DirUtil::FileRename(const char* from, const char* to) {
    return std::rename(from, to);
}

}  // namespace Valen
