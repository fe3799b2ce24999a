#pragma once

namespace Valen {

/// File tests and small file operations. Paths are zero-terminated; nothing throws; any thread may call any
/// of them.
class DirUtil {
public:
    /// Whether something of that name exists (access(2), F_OK).
    static bool FileExists(const char* path);
    /// Whether the path can be opened as a directory (opendir(3)).
    static bool IsDir(const char* path);
    /// Gives the file `from` the name `to`, replacing what has that name: rename(2).
    /// @return 0; -1 on failure, with errno set.
    static int FileRename(const char* from, const char* to);
};

}  // namespace Valen
