#include "Tools/boardsim/Host/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

namespace fs = std::filesystem;

constexpr int kLinksInARow = 40;  // as many as the kernel follows

Descriptor openForAppending(const std::string& path, int flags) {
    constexpr mode_t kMode = 0666;
    return Descriptor(open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY | flags, kMode));
}

/// Where a file that is not there yet will be made: a link may lead to another folder.
fs::path placeOf(fs::path path) {
    std::error_code none;
    for (int i = 0; i < kLinksInARow && fs::is_symlink(path, none); ++i) {
        path = path.parent_path() / fs::read_symlink(path, none);
    }
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    return fs::weakly_canonical(folder, none) / path.filename();
}

bool filesCanBeMadeIn(const fs::path& folder) {
    return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
    if (path_ == "-") {
        file_ = Descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
        started_ = true;
    } else {
        file_ = openForAppending(path_, 0);
    }
    if (file_) {
        return;
    }
    if (!started_ && errno == ENOENT) {
        place_ = placeOf(path_);
        if (filesCanBeMadeIn(place_.parent_path())) {
            return;
        }
    }
    throw systemError("cannot write " + path_);
}

void OutputFile::startEmpty() {
    if (started_) {
        return;
    }
    if (!file_) {
        file_ = openForAppending(path_, O_CREAT);
    }
    // Pipes and devices cannot be cut and need not be.
    if (!file_ || (ftruncate(file_.get(), 0) != 0 && errno != EINVAL)) {
        throw systemError("cannot write " + path_);
    }
    started_ = true;
}

void OutputFile::write(std::string_view text) {
    write(std::as_bytes(std::span(text)));
}

void OutputFile::write(std::span<const std::byte> bytes) {
    startEmpty();
    while (!bytes.empty()) {
        const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
        if (written >= 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            throw systemError("cannot write " + path_);
        }
    }
}

bool OutputFile::wouldOverwrite(const OutputFile& other) const {
    if (started_ && other.started_) {
        return false;
    }
    if (!file_ || !other.file_) {
        return !file_ && !other.file_ && place_ == other.place_;
    }
    struct stat own {};
    struct stat others {};
    return fstat(file_.get(), &own) == 0 && fstat(other.file_.get(), &others) == 0 && S_ISREG(own.st_mode) &&
           own.st_dev == others.st_dev && own.st_ino == others.st_ino;
}

}  // namespace boardsim
