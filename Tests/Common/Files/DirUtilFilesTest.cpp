// DirUtil: small file operations.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <ostream>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Strings/SimpleString.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::DirUtil;
using Valen::SimpleString;

class DirUtilFilesTest : public LoggedWorld {};

std::string linkText(const std::string& link) {
    return std::filesystem::read_symlink(link);
}

TEST_F(DirUtilFilesTest, RenamingReplacesWhatHasTheNewName) {
    world.write("/tmp/from", "new");
    world.write("/tmp/to", "old");
    EXPECT_EQ(0, DirUtil::FileRename("/tmp/from", "/tmp/to"));
    EXPECT_EQ("new", world.read("/tmp/to"));
    EXPECT_FALSE(std::filesystem::exists("/tmp/from"));
}

TEST_F(DirUtilFilesTest, RenamingWhatIsMissingFailsAndErrnoSaysWhy) {
    EXPECT_EQ(-1, DirUtil::FileRename("/tmp/from", "/tmp/to"));
    EXPECT_EQ(ENOENT, errno);
}

TEST_F(DirUtilFilesTest, DeletingRemovesFilesLinksAndEmptyDirectories) {
    world.write("/tmp/file", "x");
    world.makeDirectory("/tmp/directory");
    std::filesystem::create_symlink("missing", "/tmp/dangling");
    for (const char* path : {"/tmp/file", "/tmp/directory", "/tmp/dangling"}) {
        EXPECT_TRUE(DirUtil::FileDelete(path)) << path;
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(path))) << path;
    }
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilFilesTest, AFailedDeletionIsLogged) {
    world.write("/tmp/full/file", "x");
    EXPECT_FALSE(DirUtil::FileDelete("/tmp/missing"));
    EXPECT_FALSE(DirUtil::FileDelete("/tmp/full"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("could not delete /tmp/missing"),
                                      debugLine("could not delete /tmp/full")));
    EXPECT_EQ("x", world.read("/tmp/full/file"));
}

TEST_F(DirUtilFilesTest, EnsuringCreatesAnEmptyFileForItsOwnerOnly) {
    EXPECT_TRUE(DirUtil::EnsureFileExists("/tmp/new"));
    EXPECT_EQ("", world.read("/tmp/new"));
    EXPECT_EQ("600", outputOf("stat -c %a /tmp/new"));
}

TEST_F(DirUtilFilesTest, EnsuringLeavesAnExistingFileAlone) {
    world.write("/tmp/old", "text");
    chmod("/tmp/old", 0444);
    EXPECT_TRUE(DirUtil::EnsureFileExists("/tmp/old"));
    EXPECT_EQ("text", world.read("/tmp/old"));
    EXPECT_EQ("444", outputOf("stat -c %a /tmp/old"));
}

TEST_F(DirUtilFilesTest, EnsuringFailsWhereNothingCanBeCreated) {
    EXPECT_FALSE(DirUtil::EnsureFileExists("/tmp/missing/file"));
    EXPECT_FALSE(DirUtil::EnsureFileExists(""));
}

TEST_F(DirUtilFilesTest, SyncingReturnsTheResultOfTheCloseAndLeavesNothingOpen) {
    world.write("/tmp/file", "x");
    const std::size_t before = openDescriptors();
    EXPECT_EQ(0, DirUtil::fSync("/tmp/file"));
    EXPECT_EQ(before, openDescriptors());
}

TEST_F(DirUtilFilesTest, SyncingWhatCannotBeOpenedReturnsTheNegativeResult) {
    EXPECT_EQ(-1, DirUtil::fSync("/tmp/missing"));
    EXPECT_EQ(ENOENT, errno);
}

TEST_F(DirUtilFilesTest, ADeviceThatCannotBeSyncedIsClosedAllTheSameOnPurpose) {
    EXPECT_EQ(0, DirUtil::fSync("/dev/null"));
}

TEST_F(DirUtilFilesTest, ALinkGivesItsText) {
    const std::string longest(1000, 'x');
    for (const std::string& text : {std::string("a"), std::string("../b c"), longest}) {
        std::filesystem::create_symlink(text, "/tmp/link");
        SimpleString target;
        EXPECT_TRUE(DirUtil::ReadLink("/tmp/link", target));
        EXPECT_EQ(text, target.c_str());
        std::filesystem::remove("/tmp/link");
    }
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilFilesTest, WhatIsNoLinkHasNoTarget) {
    world.write("/tmp/file", "x");
    for (const char* path : {"/tmp/file", "/tmp", "/tmp/missing", ""}) {
        SimpleString target("untouched");
        EXPECT_FALSE(DirUtil::ReadLink(path, target)) << path;
        EXPECT_STREQ("untouched", target.c_str());
    }
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilFilesTest, ATargetOfAnotherLengthThanAnnouncedIsLoggedAndRefused) {
    SimpleString target("untouched");
    EXPECT_FALSE(DirUtil::ReadLink("/proc/self/exe", target));   // procfs announces 0
    EXPECT_FALSE(DirUtil::ReadLink("/proc/self/fd/0", target));  // and 64
    EXPECT_STREQ("untouched", target.c_str());
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("readlink did not return 0"), debugLine("readlink did not return 64")));
}

struct LinkRow {
    const char* target;
    const char* link;
    const char* text;
};

std::ostream& operator<<(std::ostream& out, const LinkRow& row) {
    return out << row.link << " -> " << row.target;
}

class RelativeSymlinkTest : public DirUtilFilesTest, public testing::WithParamInterface<LinkRow> {};

TEST_P(RelativeSymlinkTest, TheLinkCountsFromItsOwnDirectory) {
    world.write("/tmp/a/b/file", "found");
    world.write("/tmp/c/file", "found");
    std::filesystem::create_symlink("/tmp/a/b", "/tmp/c/shortcut");
    std::filesystem::current_path("/tmp/a");
    const auto [target, link, text] = GetParam();
    EXPECT_TRUE(DirUtil::RelativeSymlink(target, link));
    EXPECT_EQ(text, linkText(link));
    EXPECT_TRUE(std::filesystem::equivalent(target, link));
    EXPECT_THAT(logged(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, RelativeSymlinkTest,
                         testing::Values(LinkRow{"/tmp/a/b/file", "/tmp/a/b/link", "file"},
                                         LinkRow{"/tmp/a/b/file", "/tmp/link", "a/b/file"},
                                         LinkRow{"/tmp/c/file", "/tmp/a/b/link", "../../c/file"},
                                         LinkRow{"/tmp/a/b", "/tmp/a/b/link", "."},
                                         LinkRow{"/tmp/a/b/", "/tmp/link", "a/b"},
                                         LinkRow{"/tmp/a", "/tmp/a/b/link", ".."},
                                         LinkRow{"/tmp//a/./b/../b/file", "/tmp/link", "a/b/file"},
                                         LinkRow{"b/file", "link", "b/file"},
                                         LinkRow{"b/file", "../c/link", "../a/b/file"},
                                         LinkRow{"/tmp/c/file", "link", "../c/file"},
                                         // The directory behind a link is where ".." begins.
                                         LinkRow{"/tmp/c/file", "/tmp/c/shortcut/link", "../../c/file"},
                                         LinkRow{"/tmp/c/shortcut/file", "/tmp/link", "a/b/file"}));

TEST_F(DirUtilFilesTest, ARelativeLinkMayLeadToWhatIsNotThereYet) {
    EXPECT_TRUE(DirUtil::RelativeSymlink("/tmp/later/file", "/tmp/link"));
    EXPECT_EQ("later/file", linkText("/tmp/link"));
}

TEST_F(DirUtilFilesTest, AnExistingNameIsNotReplacedByALink) {
    world.write("/tmp/link", "x");
    EXPECT_FALSE(DirUtil::RelativeSymlink("/tmp/file", "/tmp/link"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("could not link /tmp/link to /tmp/file: File exists")));
    EXPECT_EQ("x", world.read("/tmp/link"));
}

TEST_F(DirUtilFilesTest, ALinkNeedsADirectoryAndAText) {
    EXPECT_FALSE(DirUtil::RelativeSymlink("/tmp/file", "/tmp/missing/link"));
    EXPECT_FALSE(DirUtil::RelativeSymlink("", "/tmp/link"));
    EXPECT_FALSE(DirUtil::RelativeSymlink("/tmp/file", ""));
    EXPECT_EQ(3U, logged().size());
}

}  // namespace
