#include "Tests/Common/Files/LoggedWorld.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <memory>
#include <system_error>

#include "Vl/Common/Log/LogImpl.h"

using support::LogLine;
using Valen::Log::vlLog;

LoggedWorld::LoggedWorld() : workingDirectory_(Valen::Descriptor::open(".", O_RDONLY | O_DIRECTORY)) {
    mountEmpty("/tmp", "mode=1777,size=64m");
    vlLog = std::make_unique<Valen::Log::LogImpl>(static_cast<Valen::Log::SeverityLevel_T>(8));
    vlLog->LogInit();
    logged();
}

LoggedWorld::~LoggedWorld() {
    vlLog.reset();
    EXPECT_EQ(0, fchdir(workingDirectory_.get()));
    umount2("/tmp", MNT_DETACH);
}

void LoggedWorld::mountEmpty(const std::string& directory, const char* options, unsigned long flags) {
    support::PrivateWorld::makeDirectory(directory);
    if (mount("tmpfs", directory.c_str(), "tmpfs", flags, options) != 0) {
        // Without it a test would work on what lies below.
        throw std::system_error(errno, std::generic_category(), "cannot mount on " + directory);
    }
}

std::size_t openDescriptors() {
    const std::filesystem::directory_iterator list("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(list), end(list)));
}

void LoggedWorld::admitOnlyService() {
    vlLog->setGlobalComponentSeverity(static_cast<Valen::Log::SeverityLevel_T>(7));
}

LogLine errorLine(const std::string& text) {
    return {17, 3, "Firmware: " + text};
}
LogLine noticeLine(const std::string& text) {
    return {17, 4, "Firmware: " + text};
}
LogLine serviceLine(const std::string& text) {
    return {16, 6, "Firmware: " + text};
}
LogLine debugLine(const std::string& text) {
    return {18, 6, "Firmware: " + text};
}

bool holdsInChild(const std::function<bool()>& check) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(check() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

void dropCapabilities() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, 2> none{};
    if (syscall(SYS_capset, &header, none.data()) != 0) {
        _exit(2);
    }
}

void denySystemCalls(std::initializer_list<long> numbers, int error) {
    std::vector<sock_filter> program = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const long number : numbers) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(number), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter, 0, 0) != 0) {
        _exit(2);
    }
}

std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    std::array<char, 4096> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe.get())) {
        output.append(block.data(), count);
    }
    if (output.ends_with('\n')) {
        output.pop_back();
    }
    return output;
}
