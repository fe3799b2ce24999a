// DirUtil: paths as texts, and the directories along them.
#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Log/LogInterface.h"

namespace Valen {
namespace {

void createDirectory(const char* path) {
    if (mkdir(path, 0755) == 0) {
        VL_LOG(Firmware, DEBUG, "Created dir: %s", path);
    }
}

}  // namespace

const char* DirUtil::getFileNameWithoutPath(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash == nullptr ? path : slash + 1;
}

int DirUtil::CmpBaseNames(const char* first, const char* second) {
    return std::strcmp(getFileNameWithoutPath(first), getFileNameWithoutPath(second));
}

void DirUtil::RemoveTrailingSlashes(char* path) {
    char* end = path + std::strlen(path);
    while (end > path && end[-1] == '/') {
        *--end = '\0';
    }
}

void DirUtil::RemoveDoubleSlashes(char* path) {
    char* const end = path + std::strlen(path);
    *std::unique(path, end, [](char left, char right) { return left == '/' && right == '/'; }) = '\0';
}

std::string DirUtil::GetCurrentDirectoryPath() {
    std::error_code error;
    return std::filesystem::current_path(error).string();
}

bool DirUtil::CreateDirPath(const char* path) {
    std::string prefix = path;
    for (std::size_t slash = prefix.find('/', 1); slash != std::string::npos;
         slash = prefix.find('/', slash + 1)) {
        prefix[slash] = '\0';
        createDirectory(prefix.c_str());
        prefix[slash] = '/';
    }
    createDirectory(path);
    return IsDir(path);
}

}  // namespace Valen
