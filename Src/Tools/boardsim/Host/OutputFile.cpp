#include "Tools/boardsim/Host/OutputFile.h"

#include <fcntl.h>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
    if (path_ == "-") {
        file_ = Descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
        started_ = true;
    } else {
        constexpr int kFlags = O_WRONLY | O_CLOEXEC | O_NOCTTY;
        constexpr mode_t kMode = 0666;
        file_ = Descriptor(open(path_.c_str(), kFlags | O_CREAT | O_EXCL, kMode));
        created_ = static_cast<bool>(file_);
        if (!file_ && errno == EEXIST) {
            // O_CREAT once more for a link that leads nowhere yet.
            file_ = Descriptor(open(path_.c_str(), kFlags | O_CREAT, kMode));
        }
    }
    if (!file_) {
        throw systemError("cannot write " + path_);
    }
}

OutputFile::~OutputFile() {
    if (file_ && created_ && !started_) {
        unlink(path_.c_str());
    }
}

void OutputFile::startEmpty() {
    if (started_) {
        return;
    }
    started_ = true;
    // Pipes and devices cannot be cut and need not be.
    if (ftruncate(file_.get(), 0) != 0 && errno != EINVAL) {
        throw systemError("cannot write " + path_);
    }
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

}  // namespace boardsim
