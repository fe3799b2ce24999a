#include "Tools/boardsim/Host/Mounts.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace boardsim {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void writeText(const char* path, const std::string& text) {
    std::ofstream file(path);
    file << text << std::flush;
    if (!file) {
        fail(std::string("cannot write ") + path);
    }
}

/// The caller is root in there: the device's programs run as root too. A single-user mapping needs no
/// privilege.
void mapCallerToRoot(uid_t uid, gid_t gid) {
    writeText("/proc/self/setgroups", "deny");
    writeText("/proc/self/uid_map", "0 " + std::to_string(uid) + " 1");
    writeText("/proc/self/gid_map", "0 " + std::to_string(gid) + " 1");
}

void refuse() {
    throw std::runtime_error(
        std::string("cannot make a private mount namespace: ") + std::strerror(errno) +
        ".\nAllow user namespaces: sysctl -w user.max_user_namespaces=10000 and, where they exist, "
        "kernel.unprivileged_userns_clone=1 and kernel.apparmor_restrict_unprivileged_userns=0; "
        "in a container, run it with --cap-add SYS_ADMIN --security-opt apparmor=unconfined "
        "--security-opt seccomp=unconfined.");
}

/// The covered directory stays reachable through its descriptor.
std::string underneath(int directory, const std::string& name) {
    return "/proc/self/fd/" + std::to_string(directory) + "/" + name;
}

/// What vanishes meanwhile (somebody's temporary file, say) stays away.
void bindBack(const std::string& from, const std::string& to) {
    try {
        const fs::file_status status = fs::symlink_status(from);
        if (fs::is_symlink(status)) {
            fs::copy_symlink(from, to);
        } else if (fs::exists(status)) {
            bindPath(from, to);
        }
    } catch (const std::system_error& failure) {
        if (failure.code() != std::errc::no_such_file_or_directory) {
            throw;
        }
    }
}

std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        names.push_back(entry.path().filename());
    }
    return names;
}

}  // namespace

void enterPrivateMounts(int alsoUnshare) {
    const uid_t uid = geteuid();
    const gid_t gid = getegid();
    const int wanted = CLONE_NEWNS | alsoUnshare;
    const bool privileged = uid == 0 && unshare(wanted) == 0;
    if (!privileged) {
        if (unshare(CLONE_NEWUSER | wanted) != 0) {
            refuse();
        }
        mapCallerToRoot(uid, gid);
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        refuse();
    }
}

void bindPath(const std::string& source, const std::string& target) {
    if (!fs::exists(fs::symlink_status(target))) {
        if (fs::is_directory(source)) {
            fs::create_directories(target);
        } else {
            writeText(target.c_str(), "");
        }
    }
    if (mount(source.c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0) {
        fail("cannot bind " + source + " to " + target);
    }
}

void coverDirectory(const std::string& directory, const KeepEntry& keep) {
    const int old = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (old < 0) {
        fail("cannot open " + directory);
    }
    struct Closer {
        int descriptor;
        ~Closer() { close(descriptor); }
    } closer{old};

    struct stat status {};
    fstat(old, &status);
    char options[32];
    std::snprintf(options, sizeof options, "mode=%o", status.st_mode & 07777U);
    if (mount("tmpfs", directory.c_str(), "tmpfs", MS_NOSUID, options) != 0) {
        fail("cannot cover " + directory);
    }
    for (const std::string& name : namesIn(underneath(old, ""))) {
        if (keep(name)) {
            bindBack(underneath(old, name), directory + "/" + name);
        }
    }
}

bool keepEverything(std::string_view) {
    return true;
}
bool keepNothing(std::string_view) {
    return false;
}

}  // namespace boardsim
