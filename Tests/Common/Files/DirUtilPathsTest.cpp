// DirUtil: paths as texts, and the directories along them.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/DirUtil.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::DirUtil;

class DirUtilPathsTest : public LoggedWorld {};

std::string edited(void (*edit)(char*), std::string path) {
    edit(path.data());
    return path.c_str();
}

TEST_F(DirUtilPathsTest, TheNameIsWhatFollowsTheLastSlash) {
    EXPECT_STREQ("file", DirUtil::getFileNameWithoutPath("/a/b/file"));
    EXPECT_STREQ("file", DirUtil::getFileNameWithoutPath("file"));
    EXPECT_STREQ("", DirUtil::getFileNameWithoutPath("/a/b/"));
    EXPECT_STREQ("", DirUtil::getFileNameWithoutPath("/"));
    EXPECT_STREQ("", DirUtil::getFileNameWithoutPath(""));
}

TEST_F(DirUtilPathsTest, NamesAreComparedWithoutTheirPaths) {
    EXPECT_EQ(0, DirUtil::CmpBaseNames("/a/b/file", "file"));
    EXPECT_EQ(0, DirUtil::CmpBaseNames("x/file", "/y/z/file"));
    EXPECT_GT(0, DirUtil::CmpBaseNames("/z/a", "/a/z"));
    EXPECT_LT(0, DirUtil::CmpBaseNames("/a/z", "/z/a"));
    EXPECT_GT(0, DirUtil::CmpBaseNames("/a/", "b"));
    EXPECT_LT(0, DirUtil::CmpBaseNames("\xc4", "z"));
}

TEST_F(DirUtilPathsTest, TrailingSlashesAreStripped) {
    EXPECT_EQ("/a/b", edited(DirUtil::RemoveTrailingSlashes, "/a/b/"));
    EXPECT_EQ("/a//b", edited(DirUtil::RemoveTrailingSlashes, "/a//b///"));
    EXPECT_EQ("/a", edited(DirUtil::RemoveTrailingSlashes, "/a"));
    EXPECT_EQ("", edited(DirUtil::RemoveTrailingSlashes, ""));
}

TEST_F(DirUtilPathsTest, TheRootWithoutItsTrailingSlashIsEmptyOnPurpose) {
    EXPECT_EQ("", edited(DirUtil::RemoveTrailingSlashes, "/"));
    EXPECT_EQ("", edited(DirUtil::RemoveTrailingSlashes, "///"));
}

TEST_F(DirUtilPathsTest, NoDoubleSlashIsLeft) {
    EXPECT_EQ("/a/b/c/", edited(DirUtil::RemoveDoubleSlashes, "//a///b/c////"));
    EXPECT_EQ("/", edited(DirUtil::RemoveDoubleSlashes, "/////"));
    EXPECT_EQ("a/b", edited(DirUtil::RemoveDoubleSlashes, "a/b"));
    EXPECT_EQ("aabb", edited(DirUtil::RemoveDoubleSlashes, "aabb"));
    EXPECT_EQ("", edited(DirUtil::RemoveDoubleSlashes, ""));
}

TEST_F(DirUtilPathsTest, TheWorkingDirectoryIsNamed) {
    world.makeDirectory("/tmp/a b");
    std::filesystem::current_path("/tmp/a b");
    EXPECT_EQ("/tmp/a b", DirUtil::GetCurrentDirectoryPath());
    std::filesystem::remove("/tmp/a b");
    EXPECT_EQ("", DirUtil::GetCurrentDirectoryPath());
    std::filesystem::current_path("/");
    EXPECT_EQ("/", DirUtil::GetCurrentDirectoryPath());
}

TEST_F(DirUtilPathsTest, EveryMissingDirectoryAlongThePathIsCreatedAndLogged) {
    world.makeDirectory("/tmp/a");
    EXPECT_TRUE(DirUtil::CreateDirPath("/tmp/a/b/c"));
    EXPECT_TRUE(std::filesystem::is_directory("/tmp/a/b/c"));
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("Created dir: /tmp/a/b"), debugLine("Created dir: /tmp/a/b/c")));
    EXPECT_TRUE(DirUtil::CreateDirPath("/tmp/a/b/c"));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilPathsTest, CreatedDirectoriesAreEverybodysToRead) {
    EXPECT_TRUE(DirUtil::CreateDirPath("/tmp/a"));
    EXPECT_EQ("755", outputOf("stat -c %a /tmp/a"));
}

TEST_F(DirUtilPathsTest, SlashesAtTheEndAndInRowsCreateNothingMore) {
    EXPECT_TRUE(DirUtil::CreateDirPath("/tmp//a/b//"));
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("Created dir: /tmp//a"), debugLine("Created dir: /tmp//a/b")));
}

TEST_F(DirUtilPathsTest, ARelativePathBeginsInTheWorkingDirectory) {
    std::filesystem::current_path("/tmp");
    EXPECT_TRUE(DirUtil::CreateDirPath("a/b"));
    EXPECT_TRUE(std::filesystem::is_directory("/tmp/a/b"));
}

TEST_F(DirUtilPathsTest, AFileInTheWayMakesThePathFail) {
    world.write("/tmp/file", "x");
    EXPECT_FALSE(DirUtil::CreateDirPath("/tmp/file/b"));
    EXPECT_FALSE(DirUtil::CreateDirPath("/tmp/file"));
    EXPECT_FALSE(DirUtil::CreateDirPath(""));
    EXPECT_THAT(logged(), IsEmpty());
}

}  // namespace
