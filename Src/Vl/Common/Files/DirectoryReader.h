#pragma once

#include <dirent.h>

#include <memory>
#include <optional>

namespace Valen {

/// Lists one directory in the order in which the file system gives its entries; nothing is sorted. Never
/// throws. One thread uses a reader at a time.
class DirectoryReader {
public:
    /// Opens `path`; see failed().
    explicit DirectoryReader(const char* path);

    /// @return the next entry's name, valid until the next call; null at the end and on failure. "." and ".."
    ///         are entries, too.
    const char* next();

    /// Whether the entry that next() returned last is a directory, symbolic links followed; one that leads
    /// nowhere is none. @return nothing when the file system cannot tell, for example in a circle of links.
    std::optional<bool> isDirectory() const;

    /// Whether the directory could not be opened or not be read to its end.
    bool failed() const { return failed_; }

private:
    struct Close {
        void operator()(DIR* directory) const { closedir(directory); }
    };

    std::unique_ptr<DIR, Close> directory_;
    const dirent* entry_ = nullptr;
    bool failed_;
};

}  // namespace Valen
