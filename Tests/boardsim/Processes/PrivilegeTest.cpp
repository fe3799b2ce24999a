// boardsim as an ordinary user, and on machines that refuse what it needs.
#include <gmock/gmock.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <fstream>

#include "Tests/boardsim/Support/Process.h"
#include "Tools/boardsim/Host/Mounts.h"

namespace {

using processes::onBoard;
using processes::runToEnd;
using testing::HasSubstr;

const std::string kScreen = "/sys/bus/avalon/devices/subsys_hps_oled_spi/spi_master/spi1/spi1.0/screen";

constexpr unsigned long kSysAdmin = 21;  // CAP_SYS_ADMIN

bool coverFuse() {
    boardsim::enterPrivateMounts();
    boardsim::coverDirectory("/dev", [](std::string_view name) { return name != "fuse"; });
    return true;
}

/// As udev makes it on an ordinary system.
bool openFuseToEverybody() {
    constexpr unsigned kMisc = 10;
    constexpr unsigned kFuse = 229;
    return coverFuse() && mknod("/dev/fuse", S_IFCHR, makedev(kMisc, kFuse)) == 0 &&
           chmod("/dev/fuse", 0666) == 0;
}

/// From now on the kernel refuses every mount with exactly these flags, as a security module may.
bool forbidMounts(unsigned long flags) {
    constexpr unsigned kFourthWord = offsetof(seccomp_data, args[3]);  // of mount(2): its flags
    std::array<sock_filter, 6> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_mount, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFourthWord),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(flags), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{filter.size(), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

bool isRoot() {
    return geteuid() == 0;
}

/// The command as an ordinary user's: as it is when this test is one.
std::vector<std::string> asUser(std::vector<std::string> words) {
    if (isRoot()) {
        const std::vector<std::string> become{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
        words.insert(words.begin(), become.begin(), become.end());
    }
    return words;
}

const std::function<bool()> kUsersMachine = isRoot() ? std::function<bool()>(openFuseToEverybody) : nullptr;

TEST(PrivilegeTest, AnOrdinaryUserRunsABoard) {
    std::string output;
    EXPECT_EQ(7, runToEnd(asUser(onBoard({"--log", "-", "--keys", "left"},
                                         {CLIENT, "log:hello", "await:1", "lit", "exit:7"})),
                          output, kUsersMachine))
        << output;
    EXPECT_THAT(output, HasSubstr("local0.info boardsim_test_client: hello\n"));
    EXPECT_THAT(output, HasSubstr("0x00000001\nread 1, 1\n"));
}

TEST(PrivilegeTest, AnOrdinaryUserIsRootOnTheBoard) {
    std::string output;
    EXPECT_EQ(0, runToEnd(asUser(onBoard({}, {"/bin/sh", "-c", "id -u; id -g; echo $$; test -w /dev/fpga"})),
                          output, kUsersMachine));
    EXPECT_EQ("0\n0\n2\n", output);
}

TEST(PrivilegeTest, AnOrdinaryUserTraces) {
    std::string output;
    EXPECT_EQ(
        0, runToEnd(asUser(onBoard({"--trace", "-"}, {CLIENT, "led:2", "state:1"})), output, kUsersMachine));
    EXPECT_THAT(output, HasSubstr(" fpga write 0x1000 32 0x00000002\n"));
    EXPECT_THAT(output, HasSubstr(" screen state 0x31 0x0a at 0\n"));
}

TEST(PrivilegeTest, AnOrdinaryUsersProgramUsesTheI2cBuses) {
    std::string output;
    EXPECT_EQ(0, runToEnd(asUser(onBoard({}, {I2C_CLIENT, "in-child"})), output, kUsersMachine));
    EXPECT_EQ("child: 1 0x77\n", output);
}

TEST(PrivilegeTest, AMissingFuseDeviceIsOneMessageThatNamesWhatToAllow) {
    std::string output;
    EXPECT_EQ(125, runToEnd(onBoard({}, {"/bin/echo", "started"}), output, coverFuse));
    EXPECT_THAT(output, testing::StartsWith("boardsim: cannot open /dev/fuse: No such file or directory.\n"));
    EXPECT_THAT(output, HasSubstr("modprobe fuse"));
    EXPECT_THAT(output, HasSubstr("--device /dev/fuse"));
    EXPECT_EQ(std::string::npos, output.find("started"));
}

TEST(PrivilegeTest, AForbiddenFuseDeviceIsOneMessageThatNamesWhatToAllow) {
    // Where device nodes mean nothing, opening one is forbidden even to root.
    const auto forbidFuse = [] {
        boardsim::enterPrivateMounts();
        boardsim::bindPath("/dev/fuse", "/dev/fuse");
        return mount("none", "/dev/fuse", nullptr, MS_REMOUNT | MS_BIND | MS_NODEV | MS_NOSUID, nullptr) == 0;
    };
    std::string output;
    EXPECT_EQ(125, runToEnd(onBoard({}, {"/bin/true"}), output, forbidFuse));
    EXPECT_THAT(output, testing::StartsWith("boardsim: cannot open /dev/fuse: Permission denied.\n"));
    EXPECT_THAT(output, HasSubstr("chmod 0666 /dev/fuse"));
}

TEST(PrivilegeTest, ABoardWithoutAScreenNeedsNoFuse) {
    std::string output;
    EXPECT_EQ(0, runToEnd(onBoard({"--without", "screen"}, {"/bin/echo", "started"}), output, coverFuse));
    EXPECT_EQ("started\n", output);
}

TEST(PrivilegeTest, RefusedNamespacesAreOneMessageThatNamesWhatToAllow) {
    // The limits of a user namespace hold for what is made inside it.
    const auto forbidNamespaces = [] {
        const std::string outside = std::to_string(geteuid());
        if (unshare(CLONE_NEWUSER) != 0) {
            return false;
        }
        std::ofstream("/proc/self/uid_map") << "0 " + outside + " 1";
        std::ofstream users("/proc/sys/user/max_user_namespaces");
        std::ofstream mounts("/proc/sys/user/max_mnt_namespaces");
        users << 0 << std::flush;
        mounts << 0 << std::flush;
        return users.good() && mounts.good();
    };
    std::string output;
    EXPECT_EQ(125, runToEnd(onBoard({}, {"/bin/echo", "started"}), output, forbidNamespaces));
    EXPECT_THAT(output, testing::StartsWith("boardsim: cannot make a private mount namespace: "));
    EXPECT_THAT(output, HasSubstr("user.max_user_namespaces"));
    EXPECT_EQ(std::string::npos, output.find("started"));
}

TEST(PrivilegeTest, ANamespaceThatCannotBeSetUpIsOneMessageThatNamesWhatToAllow) {
    // Without the capability boardsim needs a user namespace, whose maps then cannot be written.
    const auto forbidMaps = [] {
        boardsim::enterPrivateMounts();
        constexpr unsigned long kReadOnly =
            MS_REMOUNT | MS_BIND | MS_RDONLY | MS_NOSUID | MS_NODEV | MS_NOEXEC;
        return mount("none", "/proc", nullptr, kReadOnly, nullptr) == 0 &&
               prctl(PR_CAPBSET_DROP, kSysAdmin, 0, 0, 0) == 0;
    };
    std::string output;
    EXPECT_EQ(125, runToEnd(onBoard({}, {"/bin/echo", "started"}), output, forbidMaps));
    EXPECT_THAT(output,
                testing::StartsWith("boardsim: cannot make a private mount namespace: Read-only file"));
    EXPECT_THAT(output, HasSubstr("kernel.apparmor_restrict_unprivileged_userns=0"));
    EXPECT_EQ(std::string::npos, output.find("started"));
}

TEST(PrivilegeTest, RefusedMountsAreOneMessageThatNamesWhatToAllow) {
    struct Refusal {
        unsigned long flags;
        const char* said;
        const char* allow;
    };
    const std::array refusals{
        Refusal{MS_NOSUID, "cannot cover /dev: Permission denied", "apparmor_restrict_unprivileged_userns=0"},
        Refusal{MS_BIND | MS_REC, "cannot bind /dev/.boardsim-acting/class/net",
                "apparmor_restrict_unprivileged_userns=0"},
        Refusal{MS_NOSUID | MS_NODEV, "cannot mount a FUSE file system: Permission denied",
                "Linux 4.18 or newer"},
    };
    for (const Refusal& refusal : refusals) {
        std::string output;
        EXPECT_EQ(125, runToEnd(onBoard({}, {"/bin/echo", "started"}), output,
                                [&] { return forbidMounts(refusal.flags); }));
        EXPECT_THAT(output, testing::StartsWith(std::string("boardsim: ") + refusal.said));
        EXPECT_THAT(output, HasSubstr(refusal.allow));
        EXPECT_EQ(std::string::npos, output.find("started")) << output;
    }
}

}  // namespace
