#include "Tools/boardsim/Host/Mounts.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {
namespace {

namespace fs = std::filesystem;

/// Errors of an entry that only others can use: another user's mount, a mount whose server is dead, a
/// temporary file that vanished meanwhile.
constexpr std::array kOutOfReach{EACCES, EPERM, ENOTCONN, ESTALE, EIO, ENOENT};

bool isOutOfReach(const std::error_code& error) {
    return std::find(kOutOfReach.begin(), kOutOfReach.end(), error.value()) != kOutOfReach.end();
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// Where user namespaces are restricted they often can be made, but then do not allow what they are made for.
[[noreturn]] void refuse(const std::string& what, const std::error_code& error) {
    throw std::runtime_error(
        what + ": " + error.message() +
        ".\nAllow user namespaces: sysctl -w user.max_user_namespaces=10000 and, where they exist, "
        "kernel.unprivileged_userns_clone=1 and kernel.apparmor_restrict_unprivileged_userns=0; "
        "in a container, run it with --cap-add SYS_ADMIN --security-opt apparmor=unconfined "
        "--security-opt seccomp=unconfined.");
}

[[noreturn]] void fail(const std::string& what, const std::error_code& error) {
    if (error == std::errc::operation_not_permitted || error == std::errc::permission_denied) {
        refuse(what, error);
    }
    throw std::system_error(error, what);
}

std::error_code writeText(const char* path, const std::string& text) {
    const Descriptor file(open(path, O_WRONLY | O_CLOEXEC));
    if (!file || write(file.get(), text.data(), text.size()) < 0) {
        return lastError();
    }
    return {};
}

/// The caller is root in there: the device's programs run as root too. A single-user mapping needs no
/// privilege.
std::error_code mapCallerToRoot(uid_t uid, gid_t gid) {
    std::error_code error = writeText("/proc/self/setgroups", "deny");
    if (!error) {
        error = writeText("/proc/self/uid_map", "0 " + std::to_string(uid) + " 1");
    }
    if (!error) {
        error = writeText("/proc/self/gid_map", "0 " + std::to_string(gid) + " 1");
    }
    return error;
}

/// The covered directory stays reachable through its descriptor.
std::string underneath(int directory, const std::string& name) {
    return "/proc/self/fd/" + std::to_string(directory) + "/" + name;
}

/// Makes an empty file or directory as `source` is one.
std::error_code makeCounterpart(const std::string& source, const std::string& target) {
    std::error_code error;
    if (fs::is_directory(source, error)) {
        fs::create_directories(target, error);
    } else if (!error && !Descriptor(open(target.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666))) {
        error = lastError();
    }
    return error;
}

std::error_code bindOver(const std::string& source, const std::string& target) {
    if (mount(source.c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0) {
        return lastError();
    }
    return {};
}

std::error_code restore(const std::string& from, const std::string& to) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(from, error);
    if (error) {
        return error;
    }
    if (fs::is_symlink(status)) {
        fs::copy_symlink(from, to, error);
        return error;
    }
    error = makeCounterpart(from, to);
    return error ? error : bindOver(from, to);
}

/// What is out of reach stays away.
void bindBack(const std::string& from, const std::string& to) {
    const std::error_code error = restore(from, to);
    if (!error) {
        return;
    }
    if (!isOutOfReach(error)) {
        fail("cannot bind " + to, error);
    }
    std::error_code neverMade;
    fs::remove(to, neverMade);
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
    const char* const kWhat = "cannot make a private mount namespace";
    const uid_t uid = geteuid();
    const gid_t gid = getegid();
    const int wanted = CLONE_NEWNS | alsoUnshare;
    const bool privileged = uid == 0 && unshare(wanted) == 0;
    if (!privileged) {
        if (unshare(CLONE_NEWUSER | wanted) != 0) {
            refuse(kWhat, lastError());
        }
        if (const std::error_code error = mapCallerToRoot(uid, gid)) {
            refuse(kWhat, error);
        }
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        refuse(kWhat, lastError());
    }
}

void bindPath(const std::string& source, const std::string& target) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(target))) {
        error = makeCounterpart(source, target);
    }
    if (!error) {
        error = bindOver(source, target);
    }
    if (error) {
        fail("cannot bind " + source + " to " + target, error);
    }
}

void coverDirectory(const std::string& directory, const KeepEntry& keep) {
    const Descriptor old(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    if (!old || fstat(old.get(), &status) != 0) {
        throw std::system_error(lastError(), "cannot open " + directory);
    }
    std::array<char, 32> options{};
    std::snprintf(options.data(), options.size(), "mode=%o", status.st_mode & 07777U);
    if (mount("tmpfs", directory.c_str(), "tmpfs", MS_NOSUID, options.data()) != 0) {
        fail("cannot cover " + directory, lastError());
    }
    const std::string prefix = directory + "/";
    for (const std::string& name : namesIn(underneath(old.get(), ""))) {
        if (keep(name)) {
            bindBack(underneath(old.get(), name), prefix + name);
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
