#include "Tools/boardsim/Host/World.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "Tools/boardsim/Host/Mounts.h"
#include "Tools/boardsim/Host/Network.h"
#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kForEverybody = 0666;

/// Everybody may look around on the board, however private the caller keeps new files; the program has the
/// caller's mask again.
class OpenMask {
public:
    OpenMask() = default;
    OpenMask(const OpenMask&) = delete;
    OpenMask& operator=(const OpenMask&) = delete;
    ~OpenMask() { umask(callers_); }

private:
    mode_t callers_ = umask(022);
};

void makeParents(const std::string& path) {
    fs::create_directories(fs::path(path).parent_path());
}

/// A descriptor of the machine's file, taken before anything can cover it.
Descriptor holdSource(const std::string& path) {
    Descriptor source(open(path.c_str(), O_PATH | O_CLOEXEC));
    if (!source) {
        throw systemError("cannot open " + path);
    }
    return source;
}

/// @return none when there is none and it is not needed.
Descriptor openFuse(bool isNeeded) {
    Descriptor device(open("/dev/fuse", O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!device && isNeeded) {
        throw std::runtime_error(
            std::string("cannot open /dev/fuse: ") + std::strerror(errno) +
            ".\nLoad the kernel's module with: modprobe fuse; let everybody use it with: "
            "chmod 0666 /dev/fuse; in a container, run it with --device /dev/fuse.");
    }
    return device;
}

void cover(const CoveredDirectory& directory) {
    coverDirectory(directory.path, [&](std::string_view name) {
        const auto listed = [&](const auto& names) {
            return std::find(names.begin(), names.end(), name) != names.end();
        };
        return (directory.shown.empty() || listed(directory.shown)) && !listed(directory.hidden);
    });
}

Descriptor makeFile(const std::string& path) {
    makeParents(path);
    Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kForEverybody));
    if (!file || fchmod(file.get(), kForEverybody) != 0) {
        throw systemError("cannot make " + path);
    }
    return file;
}

void makePlainFile(const PlainFile& plain) {
    const Descriptor file = makeFile(plain.path);
    // The cover is memory: it takes a few hundred bytes at once or is full.
    if (write(file.get(), plain.contents.data(), plain.contents.size()) !=
        static_cast<ssize_t>(plain.contents.size())) {
        throw systemError("cannot fill " + plain.path);
    }
}

void makeRegisters(const MemoryFile& memory, ControlChannel& host) {
    const Descriptor file = makeFile(memory.path);
    if (ftruncate(file.get(), static_cast<off_t>(memory.bytes)) != 0) {
        throw systemError("cannot size " + memory.path);
    }
    for (const RegisterWord& word : memory.words) {
        if (pwrite(file.get(), &word.value, sizeof word.value, word.offset) != sizeof word.value) {
            throw systemError("cannot fill " + memory.path);
        }
    }
    host.send(ControlKind::RegisterMemory, 0, {}, file.get());
}

/// @param type SOCK_DGRAM, or SOCK_SEQPACKET for a socket that is connected to
void makeSocket(const std::string& path, int type, ControlKind kind, ControlChannel& host) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const Descriptor socket(::socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    makeParents(path);
    if (!socket || bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        chmod(path.c_str(), kForEverybody) != 0 ||
        (type == SOCK_SEQPACKET && listen(socket.get(), SOMAXCONN) != 0)) {
        throw systemError("cannot make the socket " + path);
    }
    host.send(kind, 0, {}, socket.get());
}

/// Acting files and trees live in one served file system, mounted where nobody looks; each is bound to its
/// place, so that every path lookup on the way there is the kernel's own affair.
void makeServed(const WorldPlan& plan, Descriptor device, ControlChannel& host) {
    const std::string& hidden = plan.hiddenDirectory;
    fs::create_directories(hidden);
    const std::string options =
        "fd=" + std::to_string(device.get()) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    if (mount("boardsim", hidden.c_str(), "fuse", MS_NOSUID | MS_NODEV, options.c_str()) != 0) {
        throw std::runtime_error(
            std::string("cannot mount a FUSE file system: ") + std::strerror(errno) +
            ".\nUse Linux 4.18 or newer, which allows it in user namespaces, or run boardsim as root; in a "
            "container, run it with --cap-add SYS_ADMIN --device /dev/fuse.");
    }
    host.send(ControlKind::FuseDevice, 0, {}, device.get());
    // Were it open in here too, the files would go on waiting for answers when boardsim is gone.
    device.reset();

    std::size_t number = 0;
    for (const std::string& file : plan.acting) {
        makeFile(file);
        bindPath(hidden + "/" + actingName(number++), file);
    }
    for (const std::string& tree : plan.trees) {
        fs::create_directories(tree);
        bindPath(hidden + "/" + actingName(number++), tree);
    }
    if (umount2(hidden.c_str(), MNT_DETACH) != 0) {
        throw systemError("cannot hide " + hidden);
    }
    fs::remove(hidden);
}

}  // namespace

std::string actingName(std::size_t index) {
    return std::to_string(index);
}

void makeWorld(const WorldPlan& plan, ControlChannel& host) {
    const OpenMask mask;
    enterPrivateMounts(CLONE_NEWPID | CLONE_NEWNET);
    makeNetwork(plan.interfaces, host);

    Descriptor fuse;
    if (!plan.acting.empty() || !plan.trees.empty()) {
        fuse = openFuse(plan.needsFuse);
    }
    std::vector<Descriptor> sources;
    for (const BorrowedFile& file : plan.borrowed) {
        sources.push_back(holdSource(file.source));
    }

    for (const CoveredDirectory& directory : plan.covers) {
        cover(directory);
    }
    if (!plan.interfaces.empty()) {
        showNetwork(plan.hiddenDirectory);
    }
    for (const std::string& directory : plan.directories) {
        fs::create_directories(directory);
    }
    for (const PlainFile& file : plan.files) {
        makePlainFile(file);
    }
    for (const SymbolicLink& link : plan.links) {
        makeParents(link.path);
        fs::create_symlink(link.target, link.path);
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        makeParents(plan.borrowed[i].target);
        bindPath("/proc/self/fd/" + std::to_string(sources[i].get()), plan.borrowed[i].target);
    }
    if (!plan.registers.path.empty()) {
        makeRegisters(plan.registers, host);
    }
    if (!plan.logSocket.empty()) {
        makeSocket(plan.logSocket, SOCK_DGRAM, ControlKind::LogSocket, host);
    }
    if (!plan.trapSocket.empty()) {
        makeSocket(plan.trapSocket, SOCK_DGRAM, ControlKind::TrapSocket, host);
    }
    if (!plan.registerSocket.empty()) {
        makeSocket(plan.registerSocket, SOCK_SEQPACKET, ControlKind::RegisterSocket, host);
    }
    if (fuse) {
        makeServed(plan, std::move(fuse), host);
    }
}

}  // namespace boardsim
