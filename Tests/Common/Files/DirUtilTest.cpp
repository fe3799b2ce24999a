#include "Vl/Common/Files/DirUtil.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "Tests/Support/PrivateWorld.h"

namespace {

using Valen::DirUtil;

class DirUtilTest : public testing::Test {
protected:
    support::PrivateWorld world;
};

TEST_F(DirUtilTest, ADirectoryIsADirectoryAndExists) {
    world.makeDirectory("/tmp/here");
    EXPECT_TRUE(DirUtil::IsDir("/tmp/here"));
    EXPECT_TRUE(DirUtil::IsDir("/tmp/here/"));
    EXPECT_TRUE(DirUtil::FileExists("/tmp/here"));
}

TEST_F(DirUtilTest, AFileExistsButIsNoDirectory) {
    world.write("/tmp/file", "x");
    EXPECT_FALSE(DirUtil::IsDir("/tmp/file"));
    EXPECT_TRUE(DirUtil::FileExists("/tmp/file"));
}

TEST_F(DirUtilTest, WhatIsMissingIsNeither) {
    EXPECT_FALSE(DirUtil::IsDir("/tmp/missing"));
    EXPECT_FALSE(DirUtil::FileExists("/tmp/missing"));
    EXPECT_FALSE(DirUtil::FileExists(""));
}

TEST_F(DirUtilTest, ALinkIsFollowed) {
    world.makeDirectory("/tmp/here");
    std::filesystem::create_symlink("here", "/tmp/link");
    std::filesystem::create_symlink("missing", "/tmp/dangling");
    EXPECT_TRUE(DirUtil::IsDir("/tmp/link"));
    EXPECT_FALSE(DirUtil::FileExists("/tmp/dangling"));
}

TEST_F(DirUtilTest, RenamingReplacesWhatHasTheNewName) {
    world.write("/tmp/from", "new");
    world.write("/tmp/to", "old");
    EXPECT_EQ(0, DirUtil::FileRename("/tmp/from", "/tmp/to"));
    EXPECT_EQ("new", world.read("/tmp/to"));
    EXPECT_FALSE(DirUtil::FileExists("/tmp/from"));
}

TEST_F(DirUtilTest, RenamingWhatIsMissingFailsAndErrnoSaysWhy) {
    EXPECT_EQ(-1, DirUtil::FileRename("/tmp/from", "/tmp/to"));
    EXPECT_EQ(ENOENT, errno);
}

}  // namespace
