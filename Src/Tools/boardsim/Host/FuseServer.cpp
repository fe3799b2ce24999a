#include "Tools/boardsim/Host/FuseServer.h"

#define FUSE_USE_VERSION 35
#include <fuse_lowlevel.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "Tools/boardsim/Host/World.h"

namespace boardsim {

namespace {

/// The files and what is open of them.
struct Files {
    std::vector<ActingFile> all;
    std::unordered_map<std::uint64_t, FileCalls> open{};
    std::uint64_t lastOpened = 0;
};

}  // namespace

struct FuseServer::State {
    Files files;
    std::function<void()> beforeRequest;
    fuse_session* session = nullptr;
    fuse_buf buffer{};

    ~State() {
        if (session != nullptr) {
            fuse_session_destroy(session);
        }
        std::free(buffer.mem);
    }
};

namespace {

constexpr fuse_ino_t kFirstFile = FUSE_ROOT_ID + 1;

Files& filesOf(fuse_req_t request) {
    return *static_cast<Files*>(fuse_req_userdata(request));
}

const FileCalls& callsOf(fuse_req_t request, const fuse_file_info* info) {
    return filesOf(request).open.at(info->fh);
}

struct stat attributes(fuse_ino_t node) {
    struct stat status {};
    status.st_ino = node;
    status.st_mode = node == FUSE_ROOT_ID ? S_IFDIR | 0755 : S_IFREG | 0666;
    status.st_nlink = 1;
    return status;
}

void turnOffSplicing(void*, fuse_conn_info* connection) {
    // Requests are small, and a pipe costs more than it saves.
    connection->want &=
        ~static_cast<unsigned>(FUSE_CAP_SPLICE_READ | FUSE_CAP_SPLICE_WRITE | FUSE_CAP_SPLICE_MOVE);
}

void lookUp(fuse_req_t request, fuse_ino_t parent, const char* name) {
    const std::size_t count = filesOf(request).all.size();
    for (std::size_t i = 0; parent == FUSE_ROOT_ID && i < count; ++i) {
        if (actingName(i) == name) {
            fuse_entry_param entry{};
            entry.ino = kFirstFile + i;
            entry.attr = attributes(entry.ino);
            fuse_reply_entry(request, &entry);
            return;
        }
    }
    fuse_reply_err(request, ENOENT);
}

void getAttributes(fuse_req_t request, fuse_ino_t node, fuse_file_info*) {
    const struct stat status = attributes(node);
    fuse_reply_attr(request, &status, 0);
}

void setAttributes(fuse_req_t request, fuse_ino_t node, struct stat*, int, fuse_file_info* info) {
    // A device has no length to cut: shells open it with O_TRUNC.
    getAttributes(request, node, info);
}

void openFile(fuse_req_t request, fuse_ino_t node, fuse_file_info* info) {
    Files& files = filesOf(request);
    if (node < kFirstFile || node - kFirstFile >= files.all.size()) {
        fuse_reply_err(request, EISDIR);
        return;
    }
    info->direct_io = 1;
    info->fh = ++files.lastOpened;
    files.open.emplace(info->fh, files.all[node - kFirstFile].open());
    if (fuse_reply_open(request, info) != 0) {
        // Whoever opened it is gone, and nobody will close it.
        files.open.erase(files.lastOpened);
    }
}

void closeFile(fuse_req_t request, fuse_ino_t, fuse_file_info* info) {
    filesOf(request).open.erase(info->fh);
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

fuse_lowlevel_ops operations() {
    fuse_lowlevel_ops table{};
    table.init = turnOffSplicing;
    table.lookup = lookUp;
    table.getattr = getAttributes;
    table.setattr = setAttributes;
    table.open = openFile;
    table.release = closeFile;
    table.read = readFile;
    table.write = writeFile;
    table.ioctl = controlFile;
    return table;
}

}  // namespace

FuseServer::FuseServer(Descriptor device, std::vector<ActingFile> files, std::function<void()> beforeRequest)
    : state_(new State{{std::move(files)}, std::move(beforeRequest)}) {
    char name[] = "boardsim";
    char* words[] = {name, nullptr};
    fuse_args arguments = FUSE_ARGS_INIT(1, words);
    const fuse_lowlevel_ops table = operations();
    state_->session = fuse_session_new(&arguments, &table, sizeof table, &state_->files);
    fuse_opt_free_args(&arguments);
    if (state_->session == nullptr) {
        throw std::runtime_error("cannot make a FUSE session");
    }
    // A mount point of this form means: mounted already, serve this descriptor.
    const std::string mounted = "/dev/fd/" + std::to_string(device.get());
    if (fuse_session_mount(state_->session, mounted.c_str()) != 0) {
        throw std::runtime_error("cannot serve the FUSE file system");
    }
    device.release();
}

FuseServer::~FuseServer() = default;

int FuseServer::descriptor() const {
    return fuse_session_fd(state_->session);
}

bool FuseServer::serveOne() {
    const int received = fuse_session_receive_buf(state_->session, &state_->buffer);
    if (received > 0) {
        state_->beforeRequest();
        fuse_session_process_buf(state_->session, &state_->buffer);
    }
    const bool tryAgain = received == -EAGAIN || received == -EINTR;
    return (received > 0 || tryAgain) && fuse_session_exited(state_->session) == 0;
}

}  // namespace boardsim
