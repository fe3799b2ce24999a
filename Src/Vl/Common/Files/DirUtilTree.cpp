// DirUtil: directory trees.
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <utility>
#include <vector>

#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Log/LogInterface.h"

namespace Valen {
namespace {

namespace fs = std::filesystem;
using Entries = fs::recursive_directory_iterator;

/// One run of recursiveCopyWithProgress.
class TreeCopy {
public:
    TreeCopy(fs::path from, fs::path to, const std::function<void(int)>& progress)
        : from_(std::move(from)), to_(std::move(to)), progress_(progress) {}

    std::error_code run() {
        if (!fs::is_directory(from_, error_)) {
            return error_ ? error_ : std::make_error_code(std::errc::not_a_directory);
        }
        resolveTarget();
        if (!error_ && leadsIntoItself()) {
            return std::make_error_code(std::errc::invalid_argument);
        }
        if (!error_) {
            copyAll();
        }
        return error_;
    }

private:
    /// The target may be a link to a directory, or lie behind one; below it links are no directories.
    void resolveTarget() {
        const fs::path to = fs::absolute(to_, error_);
        if (!error_) {
            to_ = fs::weakly_canonical(to, error_);
        }
    }

    /// Compares the directories themselves, not their names: no link and no second mount hides the circle.
    bool leadsIntoItself() const {
        for (fs::path above = to_;; above = above.parent_path()) {
            std::error_code notThereYet;
            if (fs::equivalent(from_, above, notThereYet)) {
                return true;
            }
            if (above == above.parent_path()) {
                return false;
            }
        }
    }

    void copyAll() {
        total_ = DirUtil::directorySize(from_.c_str());
        report(0);
        copyDirectory(from_, to_);
        Entries entry;
        if (!error_) {
            entry = Entries(from_, error_);
        }
        while (!error_ && entry != Entries()) {
            copyEntry(*entry, to_ / entry->path().lexically_relative(from_));
            if (!error_) {
                entry.increment(error_);
            }
        }
        giveModes();
        if (!error_) {
            report(100);
        }
    }

    void copyEntry(const fs::directory_entry& entry, const fs::path& to) {
        const fs::file_status status = entry.symlink_status(error_);
        if (error_) {
            return;
        }
        if (fs::is_symlink(status)) {
            std::error_code ignored;  // what cannot be replaced is in the way of the copy, too
            fs::remove(to, ignored);
            fs::copy_symlink(entry.path(), to, error_);
        } else if (fs::is_directory(status)) {
            copyDirectory(entry.path(), to);
        } else {
            copyFile(entry, to);
        }
    }

    void copyDirectory(const fs::path& from, const fs::path& to) {
        const fs::file_status status = fs::status(from, error_);
        std::error_code notThereYet;
        // Nobody else looks into it before it has its mode.
        if (!error_ && !fs::is_directory(fs::symlink_status(to, notThereYet)) &&
            mkdir(to.c_str(), 0700) != 0) {
            error_.assign(errno, std::generic_category());
        }
        if (!error_) {
            modes_.emplace_back(to, status.permissions());
        }
    }

    void copyFile(const fs::directory_entry& entry, const fs::path& to) {
        fs::copy_file(entry.path(), to, fs::copy_options::overwrite_existing, error_);
        if (error_) {
            return;
        }
        std::error_code gone;  // a file may vanish behind the copy
        const std::uintmax_t size = entry.file_size(gone);
        done_ += gone ? 0 : static_cast<std::int64_t>(size);
        if (total_ > 0) {
            report(static_cast<int>(std::min<std::int64_t>(done_, total_) * 100 / total_));
        }
    }

    /// At the end and from the bottom up, because a directory may forbid what has to be done in it.
    void giveModes() {
        std::for_each(modes_.rbegin(), modes_.rend(), [this](const auto& entry) {
            std::error_code error;
            fs::permissions(entry.first, entry.second, error);
            error_ = error_ ? error_ : error;
        });
    }

    void report(int percent) {
        if (progress_ && percent > reported_) {
            progress_(percent);
            reported_ = percent;
        }
    }

    fs::path from_;
    fs::path to_;
    const std::function<void(int)>& progress_;
    std::error_code error_;
    std::vector<std::pair<fs::path, fs::perms>> modes_;
    std::int64_t total_ = 0;
    std::int64_t done_ = 0;
    int reported_ = -1;
};

}  // namespace

bool DirUtil::recursiveCopyWithProgress(const char* from, const char* to,
                                        const std::function<void(int)>& progress) {
    const std::error_code error = TreeCopy(from, to, progress).run();
    if (error) {
        VL_LOG(Firmware, DEBUG, "could not copy %s to %s: %s", from, to, errnoText(error.value()));
    }
    return !error;
}

std::int64_t DirUtil::directorySize(const char* path) {
    constexpr std::uintmax_t kLargestSum = std::numeric_limits<std::int64_t>::max();
    std::error_code error;
    std::uintmax_t sum = 0;
    for (Entries entry(path, error); !error && entry != Entries(); entry.increment(error)) {
        std::error_code gone;
        if (entry->symlink_status(gone).type() == fs::file_type::regular) {
            const std::uintmax_t size = entry->file_size(gone);
            // Two files full of holes may announce more than there are numbers for.
            sum = std::min(sum + (gone ? 0 : size), kLargestSum);
        }
    }
    return error ? -1 : static_cast<std::int64_t>(sum);
}

}  // namespace Valen
