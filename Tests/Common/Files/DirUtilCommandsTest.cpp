// DirUtil: what the shell and the system's commands do for it.
#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdarg>
#include <filesystem>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Log/LogInterface.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::DirUtil;

class DirUtilCommandsTest : public LoggedWorld {};

/// Cannot be formatted: the C locale has no such character.
constexpr const wchar_t* kNoText = L"\x2603";

TEST_F(DirUtilCommandsTest, ACommandLineIsFormattedLoggedAndRunByTheShell) {
    EXPECT_EQ(3, DirUtil::SystemExec("echo %s > /tmp/%d; exit 3", "'a  b'", 42));
    EXPECT_EQ("a  b\n", world.read("/tmp/42"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("system: echo 'a  b' > /tmp/42; exit 3"),
                                      debugLine("result of sh is 3")));
}

TEST_F(DirUtilCommandsTest, ALongCommandLineRunsWholeButIsCutInTheLog) {
    const std::string word(600, 'x');
    EXPECT_EQ(0, DirUtil::SystemExec("test %s = '%s'", word.c_str(), word.c_str()));
    EXPECT_THAT(logged(), ElementsAre(debugLine(("system: test " + word).substr(0, 511))));
}

TEST_F(DirUtilCommandsTest, WhatNobodyWantsToSeeIsNotLogged) {
    admitOnlyService();
    EXPECT_EQ(1, DirUtil::SystemExec("exit %d", 1));
    EXPECT_THAT(logged(), IsEmpty());
    Valen::Log::vlLog.reset();
    EXPECT_EQ(1, DirUtil::SystemExec("exit %d", 1));
}

TEST_F(DirUtilCommandsTest, APlainCommandIsNeitherFormattedNorLogged) {
    EXPECT_EQ(0, DirUtil::SystemExecPlain("printf '%s' '100%d' > /tmp/out"));
    EXPECT_EQ("100%d", world.read("/tmp/out"));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilCommandsTest, ACommandWithoutTextIsACommand) {
    EXPECT_EQ(0, DirUtil::SystemExec("%s", ""));
    EXPECT_THAT(logged(), ElementsAre(debugLine("system: ")));
}

TEST_F(DirUtilCommandsTest, ACommandThatCannotBeFormattedIsNotRun) {
    EXPECT_EQ(-1, DirUtil::SystemExec("touch /tmp/ran %ls", kNoText));
    EXPECT_EQ(-1, DirUtil::execNonBlocking("touch /tmp/ran %ls", kNoText));
    EXPECT_FALSE(fs::exists("/tmp/ran"));
}

TEST_F(DirUtilCommandsTest, ACommandStartedWithoutWaitingIsTheCallersToCollect) {
    outputOf("mkfifo /tmp/go");
    setenv("COLOUR", "blue", 1);
    const int pid = DirUtil::execNonBlocking("read line < %s; test $COLOUR = blue && exit %d", "/tmp/go", 7);
    unsetenv("COLOUR");
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("SH COMMANDLINE: read line < /tmp/go; test $COLOUR = blue && exit 7"),
                            debugLine("started process 'sh' with pid " + std::to_string(pid))));
    world.write("/tmp/go", "\n");
    EXPECT_EQ(7, DirUtil::waitForProcess(pid));
}

/// The form with a va_list, called as its callers do.
pid_t startWithList(const char* format, ...) {
    va_list list;
    va_start(list, format);
    const pid_t pid = DirUtil::execNonBlocking_va_list(format, list);
    va_end(list);
    return pid;
}

TEST_F(DirUtilCommandsTest, AListOfArgumentsServesAsWell) {
    EXPECT_EQ(12, DirUtil::waitForProcess(startWithList("exit %d%s", 1, "2")));
}

TEST_F(DirUtilCommandsTest, FilesDifferWhenTheirBytesDoOrOneIsMissing) {
    world.write("/tmp/a b", "x");
    world.write("/tmp/same", "x");
    world.write("/tmp/other", "y");
    EXPECT_FALSE(DirUtil::FilesDifferent("/tmp/a b", "/tmp/same"));
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_TRUE(DirUtil::FilesDifferent("/tmp/a b", "/tmp/other"));
    EXPECT_TRUE(DirUtil::FilesDifferent("/tmp/a b", "/tmp/missing"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("result of diff is 1"), debugLine("result of diff is 2")));
}

TEST_F(DirUtilCommandsTest, ADirectoryIsRemovedWithAllThatIsBelowWhateverItsName) {
    world.write("/tmp/a b; touch c/deep/file", "x");
    world.write("/tmp/a", "kept");
    EXPECT_TRUE(DirUtil::RemoveDir("/tmp/a b; touch c"));
    EXPECT_FALSE(fs::exists("/tmp/a b; touch c"));
    EXPECT_EQ("kept", world.read("/tmp/a"));
    EXPECT_TRUE(DirUtil::RemoveDir("/tmp/missing"));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilCommandsTest, ADirectoryThatCannotBeRemovedIsAFailure) {
    mountEmpty("/tmp/busy");
    EXPECT_FALSE(DirUtil::RemoveDir("/tmp/busy"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("result of rm is 1")));
}

TEST_F(DirUtilCommandsTest, EveryFileWhosePathBeginsWithThePrefixIsDeleted) {
    for (const char* path : {"/tmp/x", "/tmp/x1", "/tmp/xyz.txt", "/tmp/y", "/tmp/ax"}) {
        world.write(path, "");
    }
    EXPECT_TRUE(DirUtil::deleteFilesBeginningWith("/tmp/x"));
    EXPECT_EQ("ax y", outputOf("cd /tmp && echo *"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("system: rm -f /tmp/x*")));
}

TEST_F(DirUtilCommandsTest, TheShellExpandsThePattern) {
    for (const char* path : {"/tmp/a1", "/tmp/a2", "/tmp/b1"}) {
        world.write(path, "");
    }
    EXPECT_TRUE(DirUtil::deleteFilesUsingWildcards("/tmp/?1"));
    EXPECT_EQ("a2", outputOf("cd /tmp && echo *"));
    EXPECT_TRUE(DirUtil::deleteFilesUsingWildcards("/tmp/nothing*"));
    world.makeDirectory("/tmp/directory");
    EXPECT_FALSE(DirUtil::deleteFilesUsingWildcards("/tmp/dir*"));
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("system: rm -f /tmp/?1"), debugLine("system: rm -f /tmp/nothing*"),
                            debugLine("system: rm -f /tmp/dir*"), debugLine("result of sh is 1")));
}

TEST_F(DirUtilCommandsTest, MovingCrossesFileSystemsAndBlanks) {
    world.write("/tmp/a  b", "text");
    mountEmpty("/tmp/other");
    EXPECT_EQ(0, DirUtil::Move("/tmp/a  b", "/tmp/other/c  d"));
    EXPECT_EQ("text", world.read("/tmp/other/c  d"));
    EXPECT_FALSE(fs::exists("/tmp/a  b"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("system: mv \"/tmp/a  b\" \"/tmp/other/c  d\"")));
}

TEST_F(DirUtilCommandsTest, MovingWhatIsMissingGivesTheStatusOfTheCommand) {
    EXPECT_EQ(1, DirUtil::Move("/tmp/missing", "/tmp/to"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("system: mv \"/tmp/missing\" \"/tmp/to\""),
                                      debugLine("result of sh is 1")));
}

}  // namespace
