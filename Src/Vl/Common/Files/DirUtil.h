#pragma once

namespace Valen {

/// File tests. Paths are zero-terminated; nothing throws; any thread may call any of them.
class DirUtil {
public:
    /// Whether something of that name exists (access(2), F_OK).
    static bool FileExists(const char* path);
    /// Whether the path can be opened as a directory (opendir(3)).
    static bool IsDir(const char* path);
};

}  // namespace Valen
