#include "Tools/boardsim/Host/FuseRequests.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace boardsim {
namespace {

const FileCalls& callsOf(fuse_req_t request, const fuse_file_info* info) {
    return contentsOf(request).files.at(info->fh);
}

/// Even root's programs cannot open an attribute for what it is not made for.
bool mayOpen(const ServedFile& file, int flags) {
    constexpr mode_t kReaders = S_IRUSR | S_IRGRP | S_IROTH;
    constexpr mode_t kWriters = S_IWUSR | S_IWGRP | S_IWOTH;
    const int access = flags & O_ACCMODE;
    return (access == O_WRONLY || (file.mode & kReaders) != 0) &&
           (access == O_RDONLY || (file.mode & kWriters) != 0);
}

void openFile(fuse_req_t request, fuse_ino_t node, fuse_file_info* info) {
    FuseContents& contents = contentsOf(request);
    const auto* file = contents.nodes.findAs<ServedFile>(node);
    if (file == nullptr || !mayOpen(*file, info->flags)) {
        fuse_reply_err(request, file == nullptr ? EISDIR : EACCES);
        return;
    }
    info->direct_io = 1;
    info->fh = ++contents.lastOpened;
    contents.files.emplace(info->fh, file->open());
    if (fuse_reply_open(request, info) != 0) {
        // Whoever opened it is gone, and nobody will close it.
        contents.files.erase(contents.lastOpened);
    }
}

void closeFile(fuse_req_t request, fuse_ino_t, fuse_file_info* info) {
    contentsOf(request).files.erase(info->fh);
    fuse_reply_err(request, 0);
}

void readFile(fuse_req_t request, fuse_ino_t, size_t size, off_t offset, fuse_file_info* info) {
    const FileCalls& calls = callsOf(request, info);
    std::vector<std::byte> bytes(size);
    const Transfer done = calls.read ? calls.read(static_cast<std::uint64_t>(offset), bytes)
                                     : Transfer{0, std::errc::invalid_argument};
    if (done.error != std::errc{}) {
        fuse_reply_err(request, static_cast<int>(done.error));
    } else {
        fuse_reply_buf(request, reinterpret_cast<const char*>(bytes.data()), done.count);
    }
}

void writeFile(fuse_req_t request, fuse_ino_t, const char* data, size_t size, off_t offset,
               fuse_file_info* info) {
    const FileCalls& calls = callsOf(request, info);
    const auto bytes = std::as_bytes(std::span(data, size));
    const Transfer done = calls.write ? calls.write(static_cast<std::uint64_t>(offset), bytes)
                                      : Transfer{0, std::errc::invalid_argument};
    if (done.error != std::errc{}) {
        fuse_reply_err(request, static_cast<int>(done.error));
    } else {
        fuse_reply_write(request, done.count);
    }
}

/// The kernel passes request and argument as they are. What it copies by itself, for requests whose number
/// tells direction and size, is not used: whoever answers reads the caller's memory.
void controlFile(fuse_req_t request, fuse_ino_t, unsigned number, void* argument, fuse_file_info* info,
                 unsigned flags, const void*, size_t, size_t) {
    const FileCalls& calls = callsOf(request, info);
    // A 32-bit program's records have another layout.
    const bool isForeign = (flags & FUSE_IOCTL_COMPAT) != 0;
    IoctlAnswer answer{0, std::errc::inappropriate_io_control_operation};
    if (calls.ioctl && !isForeign) {
        answer =
            calls.ioctl({fuse_req_ctx(request)->pid, number, reinterpret_cast<std::uintptr_t>(argument)});
    }
    if (answer.error != std::errc{}) {
        fuse_reply_err(request, static_cast<int>(answer.error));
    } else {
        fuse_reply_ioctl(request, answer.value, nullptr, 0);
    }
}

}  // namespace

void addFileRequests(fuse_lowlevel_ops& table) {
    table.open = openFile;
    table.release = closeFile;
    table.read = readFile;
    table.write = writeFile;
    table.ioctl = controlFile;
}

}  // namespace boardsim
