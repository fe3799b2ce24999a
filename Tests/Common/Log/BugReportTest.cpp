#include "Vl/Common/Log/BugReport.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <pthread.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <latch>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Threads/ThreadRecord.h"

namespace {

using support::PrivateWorld;
using testing::MatchesRegex;
using Valen::Descriptor;
using Valen::report_bug;

constexpr const char* kDirectory = "/opt/fw/log";
constexpr const char* kFile = "/opt/fw/log/bugs.txt";
constexpr const char* kOlderFile = "/opt/fw/log/bugs2.txt";
const std::string kBanner = "=======> devd relaunch <======\n";
// For MatchesRegex, which takes POSIX extended expressions.
const std::string kTime = "====> [0-9]{2}\\.[0-9]{2}\\. [0-9]{2}:[0-9]{2}:[0-9]{2} ";
/// The prefix of a thread that is no Thread.
const std::string kPrefix = kTime + "\\(main [0-9]+\\) ";
/// "program(function+0x12) [0x12345]"; only the address for code outside every object, such as the kernel's
/// way back from a signal handler may be.
const std::string kFrame = "([^\n]+\\([^\n]*\\) ?)?\\[0x[0-9a-f]+\\]";

int statusOf(pid_t child) {
    int status = -1;
    EXPECT_EQ(child, waitpid(child, &status, 0));
    EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
    return WEXITSTATUS(status);
}

template <typename Action>
pid_t start(Action action) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(action());
    }
    return child;
}

/// This program itself never reports, so the first report of a child of it is the first of a process.
/// @return the lowest byte of what `action` returns there.
template <typename Action>
int inFreshProcess(Action action) {
    return statusOf(start(action));
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) {
        ++count;
    }
    return count;
}

class BugReportTest : public testing::Test {
protected:
    BugReportTest() { PrivateWorld::makeDirectory(kDirectory); }

    static std::string file() { return PrivateWorld::read(kFile); }

    PrivateWorld world;
};

TEST_F(BugReportTest, TheFirstReportOfAProcessStandsBehindTheRelaunchBanner) {
    EXPECT_EQ(0, inFreshProcess([] { return report_bug(false, "%s number %d", "fault", 1); }));
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "fault number 1\n"));
}

TEST_F(BugReportTest, EveryProcessWritesTheBannerOnce) {
    for (int process = 0; process < 2; ++process) {
        inFreshProcess([] { return report_bug(false, "one") | report_bug(false, "two"); });
    }
    const std::string reports = kBanner + kPrefix + "one\n" + kPrefix + "two\n";
    EXPECT_THAT(file(), MatchesRegex(reports + reports));
}

TEST_F(BugReportTest, ThePrefixHoldsTheLocalTimeAndTheKernelsThreadId) {
    constexpr std::time_t kSecondsAhead = 5 * 3600 + 30 * 60;
    const auto prefixAt = [](std::time_t moment) {
        moment += kSecondsAhead;
        std::array<char, 64> text{};
        std::strftime(text.data(), text.size(), "====> %d.%m. %H:%M:%S (main ", std::gmtime(&moment));
        return std::string(text.data());
    };
    const std::time_t before = std::time(nullptr);
    const pid_t child = start([] {
        setenv("TZ", "XYZ-05:30", 1);
        tzset();
        return report_bug(false, "text");
    });
    EXPECT_EQ(0, statusOf(child));
    const std::time_t after = std::time(nullptr);
    std::vector<std::string> possible;
    for (std::time_t moment = before; moment <= after; ++moment) {
        possible.push_back(kBanner + prefixAt(moment) + std::to_string(child) + ") text\n");
    }
    EXPECT_THAT(possible, testing::Contains(file()));
}

TEST_F(BugReportTest, AThreadIsNamedByTheComponentOfItsRecord) {
    inFreshProcess([] {
        std::thread([] {
            const Valen::ThreadRecord record(static_cast<Enums::OriginKey::Type>(61));
            pthread_setspecific(Valen::ThreadRecord::ThreadObject, &record);
            report_bug(false, "by %d", gettid());
        }).join();
        std::thread([] { report_bug(false, "by %d", gettid()); }).join();
        return 0;
    });
    const auto lines = linesOf(file());
    ASSERT_EQ(3U, lines.size());
    // Both threads told their kernel id behind the last blank.
    const auto idIn = [](const std::string& line) { return line.substr(line.rfind(' ') + 1); };
    EXPECT_THAT(lines[1], MatchesRegex(kTime + "\\(OLED " + idIn(lines[1]) + "\\) by [0-9]+"));
    EXPECT_THAT(lines[2], MatchesRegex(kTime + "\\(main " + idIn(lines[2]) + "\\) by [0-9]+"));
}

TEST_F(BugReportTest, APercentSignInAFinishedTextIsACharacter) {
    EXPECT_EQ(0, inFreshProcess([] { return report_bug("100 %s %n", false); }));
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "100 %s %n\n"));
}

int reportList(bool withBacktrace, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = Valen::vreport_bug(withBacktrace, format, arguments);
    va_end(arguments);
    return result;
}

TEST_F(BugReportTest, ArgumentsMayComeAsAList) {
    EXPECT_EQ(0, inFreshProcess([] { return reportList(false, "%s-%d", "a", 1); }));
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "a-1\n"));
}

TEST_F(BugReportTest, AMessageIsCutAt2047Characters) {
    inFreshProcess([] { return report_bug(std::string(2047, 'x').c_str(), false); });
    inFreshProcess([] { return report_bug(std::string(5000, 'y').c_str(), false); });
    const auto lines = linesOf(file());
    ASSERT_EQ(4U, lines.size());
    EXPECT_TRUE(lines[1].ends_with(") " + std::string(2047, 'x')));
    EXPECT_TRUE(lines[3].ends_with(") " + std::string(2047, 'y')));
}

TEST_F(BugReportTest, ABacktraceFollowsTheMessageWhereItIsAskedFor) {
    inFreshProcess(
        [] { return report_bug(true, "first") | report_bug("second", true) | report_bug("last", false); });
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "first\n(" + kFrame + "\n)+" + kPrefix +
                                     "second\n(" + kFrame + "\n)+" + kPrefix + "last\n"));
}

/// Calls `action` below `depth` frames.
template <typename Action>
[[gnu::noinline]] int callBelow(int depth, Action action) {
    const int result = depth == 0 ? action() : callBelow(depth - 1, action);
    asm volatile("" ::: "memory");  // keeps the call from becoming a jump
    return result;
}

TEST_F(BugReportTest, ABacktraceHoldsFiftyFramesAtMost) {
    inFreshProcess([] { return callBelow(80, [] { return report_bug(true, "deep"); }); });
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "deep\n(" + kFrame + "\n){50}"));
}

TEST_F(BugReportTest, ABacktraceMayBeWrittenToAnyDescriptor) {
    const Descriptor out(::open("/tmp/i2c-backtrace", O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    callBelow(3, [&] {
        Valen::BacktraceToFile(out.get());
        return 0;
    });
    EXPECT_THAT(PrivateWorld::read("/tmp/i2c-backtrace"), MatchesRegex("(" + kFrame + "\n){5,50}"));
    Valen::BacktraceToFile(-1);
}

TEST_F(BugReportTest, ASignalHandlerMayReportOnceTheProcessIsPrepared) {
    EXPECT_EQ(0, inFreshProcess([] {
                  Valen::prepareBugReports();
                  std::signal(SIGHUP, [](int) { report_bug(true, "Deadlock?"); });
                  return std::raise(SIGHUP);
              }));
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "Deadlock\\?\n(" + kFrame + "\n)+"));
}

TEST_F(BugReportTest, AFileOf204800BytesGrowsOn) {
    const std::string old(204800, 'o');
    PrivateWorld::write(kFile, old);
    inFreshProcess([] { return report_bug(false, "new"); });
    ASSERT_TRUE(file().starts_with(old));
    EXPECT_THAT(file().substr(old.size()), MatchesRegex(kBanner + kPrefix + "new\n"));
    EXPECT_FALSE(std::filesystem::exists(kOlderFile));
}

TEST_F(BugReportTest, AFileOf204801BytesIsMovedInPlaceOfTheOlderOne) {
    const std::string old(204801, 'o');
    PrivateWorld::write(kFile, old);
    PrivateWorld::write(kOlderFile, "older");
    EXPECT_EQ(0, inFreshProcess([] { return report_bug(false, "new"); }));
    EXPECT_TRUE(PrivateWorld::read(kOlderFile) == old);
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "new\n"));
}

TEST_F(BugReportTest, ANewFileHasNoBannerWhenTheProcessHasWrittenItBefore) {
    inFreshProcess([] {
        report_bug(false, "old");
        return truncate(kFile, 204801) | report_bug(false, "new");
    });
    EXPECT_TRUE(PrivateWorld::read(kOlderFile).starts_with(kBanner));
    EXPECT_THAT(file(), MatchesRegex(kPrefix + "new\n"));
}

TEST_F(BugReportTest, AFileThatCannotBeMovedGrowsOn) {
    PrivateWorld::write(kFile, std::string(204801, 'o'));
    PrivateWorld::makeDirectory(kOlderFile);
    EXPECT_EQ(0, inFreshProcess([] { return report_bug(false, "new"); }));
    EXPECT_THAT(file().substr(204801), MatchesRegex(kBanner + kPrefix + "new\n"));
}

TEST_F(BugReportTest, WithoutRoomForANewFileTheReportFailsAfterTheMove) {
    ASSERT_EQ(0, mount("tmpfs", kDirectory, "tmpfs", 0, "nr_inodes=2"))
        << "room for the directory and a file";
    PrivateWorld::write(kFile, std::string(204801, 'o'));
    EXPECT_EQ(255, inFreshProcess([] { return report_bug(false, "new"); }));
    EXPECT_FALSE(std::filesystem::exists(kFile));
    EXPECT_EQ(204801U, std::filesystem::file_size(kOlderFile));
}

TEST_F(BugReportTest, AFileThatCannotBeOpenedGivesANegativeResultAndTheReason) {
    std::filesystem::remove(kDirectory);
    EXPECT_EQ(ENOENT, inFreshProcess([] { return report_bug(false, "lost") == -1 ? errno : 0; }));
    EXPECT_FALSE(std::filesystem::exists(kDirectory));
    PrivateWorld::makeDirectory(kFile);
    EXPECT_EQ(EISDIR, inFreshProcess([] { return report_bug("lost", true) == -1 ? errno : 0; }));
    EXPECT_TRUE(std::filesystem::is_empty(kFile));
}

TEST_F(BugReportTest, TheBannerWaitsForTheFirstReportThatIsWritten) {
    std::filesystem::remove(kDirectory);
    inFreshProcess([] {
        report_bug(false, "lost");
        std::filesystem::create_directory(kDirectory);
        return report_bug(false, "kept");
    });
    EXPECT_THAT(file(), MatchesRegex(kBanner + kPrefix + "kept\n"));
}

TEST_F(BugReportTest, AFullDiskIsNotNoticedBecauseTheResultIsThatOfClose) {
    std::filesystem::create_symlink("/dev/full", kFile);
    EXPECT_EQ(0, inFreshProcess([] { return report_bug(true, "lost"); }));
}

TEST_F(BugReportTest, TheFileIsReadableForEveryoneAndWritableForItsOwner) {
    inFreshProcess([] {
        umask(0);
        return report_bug(false, "text");
    });
    struct stat status {};
    ASSERT_EQ(0, stat(kFile, &status));
    EXPECT_EQ(0644U, status.st_mode & 07777U);
}

TEST_F(BugReportTest, NoDescriptorStaysOpen) {
    EXPECT_EQ(0, inFreshProcess([] {
                  const int free = dup(STDIN_FILENO);
                  ::close(free);
                  for (int round = 0; round < 3; ++round) {
                      report_bug(false, "text");
                      truncate(kFile, 204801);
                  }
                  return dup(STDIN_FILENO) - free;
              }));
}

/// The flags with which `process` has opened the bug file, as /proc shows them.
unsigned long openFlags(pid_t process) {
    const std::string proc = "/proc/" + std::to_string(process);
    for (const auto& entry : std::filesystem::directory_iterator(proc + "/fd")) {
        if (std::filesystem::read_symlink(entry) != kFile) {
            continue;
        }
        const std::string info = PrivateWorld::read(proc + "/fdinfo/" + entry.path().filename().string());
        const std::string label = "flags:";
        return std::stoul(info.substr(info.find(label) + label.size()), nullptr, 8);
    }
    ADD_FAILURE() << "the bug file is not open";
    return 0;
}

TEST_F(BugReportTest, TheFileIsOpenForAppendingAndClosedOnExec) {
    ASSERT_EQ(0, mkfifo(kFile, 0600));
    const Descriptor reader = Descriptor::open(kFile, O_RDWR);
    // One page, the smallest pipe that there is. A long message and fifty frames need more, so that the
    // report waits half-way until somebody reads.
    ASSERT_EQ(sysconf(_SC_PAGESIZE), fcntl(reader.get(), F_SETPIPE_SZ, 1));
    const pid_t child = start([own = reader.get()] {
        ::close(own);
        return callBelow(80, [] { return report_bug(true, "%s", std::string(2047, 'x').c_str()); });
    });
    char first = 0;
    ASSERT_EQ(1, ::read(reader.get(), &first, 1));
    EXPECT_EQ('=', first);
    const unsigned long flags = openFlags(child);
    EXPECT_EQ(static_cast<unsigned long>(O_WRONLY), flags & O_ACCMODE);
    EXPECT_NE(0U, flags & O_APPEND);
    EXPECT_NE(0U, flags & O_CLOEXEC);
    kill(child, SIGKILL);
    int status = 0;
    EXPECT_EQ(child, waitpid(child, &status, 0));
    EXPECT_TRUE(WIFSIGNALED(status)) << "the report was over before the flags were read";
}

constexpr int kWriters = 4;
constexpr int kReports = 40;

void expectEveryReport(const std::string& text, std::size_t banners) {
    EXPECT_EQ(banners, countOf(text, kBanner));
    EXPECT_EQ(static_cast<std::size_t>(kWriters * kReports), countOf(text, "(main "));
    for (int writer = 0; writer < kWriters; ++writer) {
        for (int report = 0; report < kReports; ++report) {
            const std::string line =
                "writer " + std::to_string(writer) + " report " + std::to_string(report) + ";";
            EXPECT_EQ(1U, countOf(text, line)) << line;
        }
    }
}

int writeReports(int writer) {
    int result = 0;
    for (int report = 0; report < kReports; ++report) {
        result |= report_bug(false, "writer %d report %d;", writer, report);
    }
    return result;
}

TEST_F(BugReportTest, ThreadsThatReportAtOnceLoseNothingAndShareOneBanner) {
    EXPECT_EQ(0, inFreshProcess([] {
                  std::latch ready(kWriters);
                  std::vector<std::thread> writers;
                  for (int writer = 0; writer < kWriters; ++writer) {
                      writers.emplace_back([&ready, writer] {
                          ready.arrive_and_wait();
                          writeReports(writer);
                      });
                  }
                  for (std::thread& writer : writers) {
                      writer.join();
                  }
                  return 0;
              }));
    expectEveryReport(file(), 1);
}

TEST_F(BugReportTest, ProcessesThatReportAtOnceLoseNothing) {
    std::vector<pid_t> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.push_back(start([writer] { return writeReports(writer); }));
    }
    for (const pid_t writer : writers) {
        EXPECT_EQ(0, statusOf(writer));
    }
    expectEveryReport(file(), kWriters);
}

TEST(BugReportLogTimeTest, ThePrefixIsWrittenAndItsLengthReturned) {
    std::array<char, 100> text{};
    const int length = Valen::report_bug_log_time(text.data(), text.size());
    const std::string prefix = text.data();
    EXPECT_EQ(prefix.size(), static_cast<std::size_t>(length));
    EXPECT_THAT(prefix, MatchesRegex(kTime + "\\(main " + std::to_string(gettid()) + "\\) "));
}

TEST(BugReportLogTimeTest, APrefixThatDoesNotFitIsCutAndItsWholeLengthReturned) {
    std::array<char, 12> text;
    text.fill('#');
    EXPECT_GT(Valen::report_bug_log_time(text.data(), 7), 30);
    EXPECT_EQ(std::string("====> \0#####", 12), std::string(text.data(), text.size()));
    EXPECT_GT(Valen::report_bug_log_time(nullptr, 0), 30);
}

}  // namespace
