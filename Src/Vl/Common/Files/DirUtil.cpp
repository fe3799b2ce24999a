#include "Vl/Common/Files/DirUtil.h"

#include <dirent.h>
#include <unistd.h>

namespace Valen {

bool DirUtil::FileExists(const char* path) {
    return access(path, F_OK) == 0;
}

bool DirUtil::IsDir(const char* path) {
    DIR* directory = opendir(path);
    return directory != nullptr && closedir(directory) == 0;
}

}  // namespace Valen
