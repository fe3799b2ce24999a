// What a program finds on the board and how boardsim ends, with real small programs.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/VirtualBoard.h"
#include "Tests/boardsim/Support/OwnBuild.h"
#include "Tests/boardsim/Support/Process.h"
#include "Tools/boardsim/Host/Mounts.h"

namespace {

using support::board;
using support::BoardRun;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kClient = CLIENT;

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", script});
}

TEST(RunTest, EndsWithTheProgramsStatusAndPassesItsOutputOn) {
    const BoardRun run = shell("echo out; echo err >&2; exit 42");
    EXPECT_EQ(42, run.status);
    EXPECT_EQ("out\n", run.out);
    EXPECT_THAT(run.err, StartsWith("err\n"));
}

TEST(RunTest, AProgramKilledByASignalGives128AndItsNumber) {
    EXPECT_EQ(128 + 9, shell("kill -9 $$").status);
    EXPECT_EQ(128 + 15, shell("kill -15 $$").status);
    EXPECT_EQ(128 + 6, shell("kill -ABRT $$").status);
}

TEST(RunTest, WhatCannotBeStartedGivesTheShellsStatus) {
    EXPECT_EQ(127, board().run({"no-such-program"}).status);
    EXPECT_EQ(127, board().run({"/no/such/program"}).status);
    EXPECT_THAT(board().run({"no-such-program"}).err, StartsWith("boardsim: cannot run no-such-program: "));
    EXPECT_EQ(126, board().run({"/etc/passwd"}).status);
    EXPECT_EQ(126, board().run({"/usr"}).status);
}

TEST(RunTest, AFolderOfThePathThatCannotBeSearchedHidesNothing) {
    const support::TemporaryDirectory files;
    std::ofstream(files.file("file")) << "no folder";
    const std::string path = getenv("PATH");
    setenv("PATH", (files.file("file") + ":" + path).c_str(), 1);
    EXPECT_EQ(127, board().run({"no-such-program"}).status);
    EXPECT_EQ(0, board().run({"true"}).status);
    setenv("PATH", path.c_str(), 1);
}

TEST(RunTest, TheProgramIsAloneWithInit) {
    EXPECT_EQ("2\n", shell("echo $$").out);
    EXPECT_EQ("1\n", shell("echo $PPID").out);
}

TEST(RunTest, OrphansAreBuried) {
    const BoardRun run = shell(
        "sh -c 'sleep 0.01 & echo $!' > orphan; read id < orphan; rm orphan; "
        "while [ -d /proc/$id ]; do :; done; echo gone",
        board().in(std::filesystem::temp_directory_path()));
    EXPECT_EQ("gone\n", run.out);
    EXPECT_EQ(0, run.status);
}

TEST(RunTest, BackgroundProcessesEndWithTheProgram) {
    const BoardRun run = shell("sleep 1000 & echo started");
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("started\n", run.out);
}

TEST(RunTest, WorkingDirectoryAndEnvironmentAreTheCallers) {
    setenv("BOARDSIM_TEST_VARIABLE", "kept", 1);
    const support::TemporaryDirectory here;
    const BoardRun run = shell("echo $BOARDSIM_TEST_VARIABLE; pwd -P; pwd", board().in(here.file("")));
    unsetenv("BOARDSIM_TEST_VARIABLE");
    const std::string place = std::filesystem::canonical(here.file("")).string();
    EXPECT_EQ("kept\n" + place + "\n" + place + "\n", run.out);
    EXPECT_EQ("", shell("echo $BOARDSIM_TRAP_SOCKET").out.substr(1)) << "nobody wants reports";
}

TEST(RunTest, AWorkingDirectoryBelowACoverIsTheCoversOwn) {
    const BoardRun run = shell("echo x > boardsim-test; cat /tmp/boardsim-test", board().in("/tmp"));
    EXPECT_EQ("x\n", run.out) << run.err;
    EXPECT_FALSE(std::filesystem::exists("/tmp/boardsim-test"));
}

TEST(RunTest, SignalsAreAsTheCallerHadThemAndNoDescriptorIsLeaked) {
    const std::vector<std::string> show{"/bin/grep", "-E", "^Sig(Blk|Ign)|^ShdPnd", "/proc/self/status"};
    std::string outside;
    ASSERT_EQ(0, processes::runToEnd(show, outside));
    std::string inside;
    ASSERT_EQ(0, processes::runToEnd(processes::onBoard({}, show), inside));
    EXPECT_EQ(outside, inside);

    // ls holds the directory itself as one more.
    const std::size_t own = static_cast<std::size_t>(std::distance(
        std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator{}));
    const std::string names = board().run({"/bin/ls", "/proc/self/fd"}).out;
    EXPECT_LE(static_cast<std::size_t>(std::count(names.begin(), names.end(), '\n')), own) << names;
    const std::string opened = board().run({"/bin/ls", "-l", "/proc/self/fd"}).out;
    for (const char* leak : {"fuse", "socket", "signalfd", "fpga"}) {
        EXPECT_EQ(std::string::npos, opened.find(leak)) << opened;
    }
}

TEST(RunTest, DevHoldsTheUsualNodesAndTheBoardsAndNothingElse) {
    const BoardRun run = shell("ls /dev");
    std::istringstream names(run.out);
    for (std::string name; names >> name;) {
        EXPECT_THAT(name, testing::AnyOf("null", "zero", "full", "random", "urandom", "tty", "ptmx", "pts",
                                         "shm", "mqueue", "fuse", "stdin", "stdout", "stderr", "fd", "log",
                                         "fpga", "gpio", "cpld", "bootrom", testing::StartsWith("i2c-")));
    }
    EXPECT_THAT(run.out, HasSubstr("fpga\n"));
    EXPECT_EQ("", shell("ls -A /dev | grep '^\\.'").out);
    EXPECT_EQ("4096\n", shell("head -c 4096 /dev/zero | wc -c").out);
    EXPECT_EQ("ok\n", shell("echo x > /dev/null && echo ok; echo x > /dev/full").out);
}

TEST(RunTest, TheRegisterSpaceHas64KibibytesAndIsZeroWhereNoCoreIs) {
    EXPECT_EQ("65536\n", shell("wc -c < /dev/fpga").out);
    EXPECT_EQ("0\n", shell("tail -c +12289 /dev/fpga | tr -d '\\000' | wc -c").out);
}

TEST(RunTest, CoveredDirectoriesKeepTheirEntriesAndForgetWhatIsWritten) {
    std::ofstream("/tmp/boardsim-kept-" + std::to_string(getpid())) << "kept";
    const std::string name = "boardsim-kept-" + std::to_string(getpid());
    const BoardRun run = shell("cat /tmp/" + name + "; echo x > /tmp/" + name +
                               "-new; ls -d /tmp/i2c; ls /sys/bus/platform | head -1");
    EXPECT_THAT(run.out, StartsWith("kept/tmp/i2c\n"));
    EXPECT_NE("", run.out.substr(std::string("kept/tmp/i2c\n").size())) << "the machine's buses stay";
    EXPECT_FALSE(std::filesystem::exists("/tmp/" + name + "-new"));
    std::filesystem::remove("/tmp/" + name);
}

TEST(RunTest, EntriesThatNobodyCanReachAreLeftOut) {
    const auto leaveADeadMount = [] {
        boardsim::enterPrivateMounts();
        boardsim::coverDirectory("/tmp", processes::holdsOwnBuild);
        mkdir("/tmp/alive", 0755);
        mkdir("/tmp/dead", 0755);
        const int server = open("/dev/fuse", O_RDWR | O_CLOEXEC);
        const std::string options =
            "fd=" + std::to_string(server) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
        const bool mounted = mount("dead", "/tmp/dead", "fuse", MS_NOSUID | MS_NODEV, options.c_str()) == 0;
        close(server);
        return mounted && access("/tmp/dead", F_OK) != 0 && errno == ENOTCONN;
    };
    std::string output;
    const std::vector<std::string> look = {"/bin/sh", "-c",
                                           "cd /tmp; for i in alive dead i2c; do [ -e $i ] && echo $i; done"};
    EXPECT_EQ(0, processes::runToEnd(processes::onBoard({}, look), output, leaveADeadMount));
    EXPECT_EQ("alive\ni2c\n", output);
}

TEST(RunTest, TheBoardIsOpenToEverybodyWhateverTheCallersMask) {
    const auto keepPrivate = [] {
        umask(077);
        return true;
    };
    std::string output;
    const std::string look =
        "stat -c %a /tmp/i2c /opt/pattern /opt/pattern/oled /sys/bus/avalon/devices/fpga; umask";
    EXPECT_EQ(0, processes::runToEnd(processes::onBoard({}, {"/bin/sh", "-c", look}), output, keepPrivate));
    EXPECT_EQ("755\n755\n755\n755\n0077\n", output);
}

TEST(RunTest, TheLayoutNamesThePanelsCoresInBigEndianRecords) {
    const BoardRun run = shell("cat /sys/bus/avalon/devices/fpga/layout");
    EXPECT_THAT(run.out, HasSubstr(std::string("central_sync\0\0\2", 15)));
    EXPECT_THAT(run.out, HasSubstr(std::string("subsys_hps_oled_spi\0\0\2", 22)));
    EXPECT_THAT(run.out, HasSubstr(std::string("subsys_hps_oled_io_spi\0\0\2\0\1\0\3\0\0\x10\x05", 33)));
}

TEST(RunTest, TheFontIsTheOneAskedFor) {
    const support::TemporaryDirectory files;
    std::ofstream(files.file("garbage")) << "no font at all";
    EXPECT_EQ("no font at all",
              shell("cat /opt/pattern/oled/Font.ttf", board().font(files.file("garbage"))).out);
    std::filesystem::create_directory(files.file("directory"));
    EXPECT_EQ(
        "yes\n",
        shell("test -d /opt/pattern/oled/Font.ttf && echo yes", board().font(files.file("directory"))).out);
}

TEST(RunTest, TheFontsDirectoryMayBeEmptyOrAbsent) {
    EXPECT_EQ("empty\n", shell("cd /opt/pattern/oled && ls && echo empty", board().option("--no-font")).out);
    EXPECT_EQ("empty\n", shell("cd /opt/pattern/oled && ls && echo empty", board().without("font")).out);
    EXPECT_EQ("absent\n",
              shell("test -e /opt/pattern || echo absent", board().without("font-directory")).out);
}

TEST(RunTest, PartsCanBeMissing) {
    const std::string devices = "/sys/bus/avalon/devices/";
    const std::string spi = devices + "subsys_hps_oled_spi";
    const std::string device = spi + "/spi_master/spi1/spi1.0";
    const std::map<std::string, std::string> places{{"fpga", "/dev/fpga"},
                                                    {"gpio", "/dev/gpio"},
                                                    {"log", "/dev/log"},
                                                    {"layout", devices + "fpga/layout"},
                                                    {"screen", device + "/screen"},
                                                    {"spi", spi}};
    for (const auto& [part, place] : places) {
        EXPECT_EQ("there\n", shell("test -e " + place + " && echo there").out) << place;
        EXPECT_EQ("missing\n", shell("test -e " + place + " || echo missing", board().without(part)).out)
            << part;
    }
    EXPECT_EQ("there\n", shell("test -d " + device + " && echo there", board().without("screen")).out);
    EXPECT_EQ(std::string::npos, shell("cat " + devices + "fpga/layout", board().without("panel-registers"))
                                     .out.find("subsys_hps_oled_io_spi"));
}

TEST(RunTest, SyslogLinesAreCollectedInOrderWithFacilityAndLevel) {
    const BoardRun run = board().run({kClient, "log:one", "log:two\nlines", "log:caf\xE9"});
    EXPECT_THAT(run.log, ElementsAre("local0.info boardsim_test_client: one",
                                     "local0.info boardsim_test_client: two#012lines",
                                     "local0.info boardsim_test_client: caf\xE9"));
}

TEST(RunTest, ManySyslogLinesAreAllThere) {
    const BoardRun run = shell("i=0; while [ $i -lt 200 ]; do i=$((i+1)); set -- \"$@\" log:$i; done; exec " +
                               kClient + " \"$@\"");
    ASSERT_EQ(200U, run.log.size());
    EXPECT_EQ("local0.info boardsim_test_client: 1", run.log.front());
    EXPECT_EQ("local0.info boardsim_test_client: 200", run.log.back());
}

TEST(RunTest, AProgramThatTakesTooLongIsEnded) {
    const BoardRun run = board().timeout("0.1").run({"/bin/sleep", "1000"});
    EXPECT_EQ(124, run.status);
}

TEST(RunTest, AProgramThatIgnoresTheEndIsKilled) {
    const BoardRun run = shell("trap '' TERM; while :; do sleep 1; done", board().timeout("0.1"));
    EXPECT_EQ(124, run.status);
}

TEST(RunTest, AProgramThatEndsInTimeKeepsItsStatus) {
    EXPECT_EQ(3, shell("exit 3", board().timeout("50")).status);
}

TEST(RunTest, TheBoardsOwnStatusesAreTheProgramsToUse) {
    const BoardRun run = board().run({kClient, "draw:1", "exit:125"});
    EXPECT_EQ(125, run.status);
    EXPECT_EQ(15360U, run.frame.size());
}

TEST(RunTest, AFullDiskEndsTheBoardAndIsSaid) {
    const BoardRun traced = board().option("--trace", "/dev/full").run({kClient, "draw:1", "hang:on"});
    EXPECT_EQ(125, traced.status);
    EXPECT_EQ("boardsim: cannot write /dev/full: No space left on device\n", traced.err);
    const BoardRun pictured = board().option("--screenshot", "/dev/full").run({kClient, "draw:1"});
    EXPECT_EQ(125, pictured.status);
    EXPECT_EQ("boardsim: cannot write /dev/full: No space left on device\n", pictured.err);
}

TEST(RunTest, UsageErrorsHaveStatusTwoAndStartNothing) {
    const support::TemporaryDirectory files;
    const std::string touch = "echo started > " + files.file("started");
    EXPECT_EQ(2, shell(touch, board().keys("jump")).status);
    EXPECT_EQ(2, shell(touch, board().option("--screenshot", files.file("no/such/folder.png"))).status);
    EXPECT_EQ(2, shell(touch, board().font("/no/such/font")).status);
    EXPECT_EQ(2, shell(touch, board().without("wheels")).status);
    EXPECT_FALSE(std::filesystem::exists(files.file("started")));
}

TEST(RunTest, APictureThatWouldOverwriteAnotherOutputIsRefused) {
    const support::TemporaryDirectory files;
    const std::string file = files.file("out");
    for (const char* other : {"--screenshot", "--log", "--trace"}) {
        std::string output;
        EXPECT_EQ(2, processes::runToEnd(
                         processes::onBoard({"--frame", file, other, file}, {"/bin/echo", "x"}), output));
        EXPECT_THAT(output, StartsWith("boardsim: two outputs in one file: " + file + "\n"));
    }
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(RunTest, LogAndTraceMayShareAFile) {
    const support::TemporaryDirectory files;
    const std::string file = files.file("both");
    std::string output;
    EXPECT_EQ(0, processes::runToEnd(
                     processes::onBoard({"--log", file, "--trace", file},
                                        {kClient, "log:a long first line", "led:1", "log:x", "draw:1"}),
                     output));
    std::ifstream both(file);
    const std::string text{std::istreambuf_iterator<char>(both), std::istreambuf_iterator<char>()};
    for (const char* line :
         {"boardsim_test_client: a long first line\n", " fpga write 0x1000 32 0x00000001\n",
          "boardsim_test_client: x\n", " screen frame 15360 bytes at 0\n"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
}

TEST(RunTest, ABoardRunsOnABoard) {
    const BoardRun run = board().run({BOARDSIM, "run", "--", kClient, "draw:1", "exit:5"});
    EXPECT_EQ(5, run.status) << run.err;
    EXPECT_EQ("", run.frame) << "the inner board has its own screen";
}

}  // namespace
