#include "Vl/Common/Files/DirUtil.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <utime.h>

#include <filesystem>

#include "Tests/Common/Files/LoggedWorld.h"

namespace {

using Valen::DirUtil;

class DirUtilTest : public LoggedWorld {};

TEST_F(DirUtilTest, ADirectoryIsADirectoryAndExists) {
    world.makeDirectory("/tmp/here");
    EXPECT_TRUE(DirUtil::IsDir("/tmp/here"));
    EXPECT_TRUE(DirUtil::IsDir("/tmp/here/"));
    EXPECT_TRUE(DirUtil::directoryExists("/tmp/here"));
    EXPECT_TRUE(DirUtil::FileExists("/tmp/here"));
}

TEST_F(DirUtilTest, AFileExistsButIsNoDirectory) {
    world.write("/tmp/file", "x");
    EXPECT_FALSE(DirUtil::IsDir("/tmp/file"));
    EXPECT_FALSE(DirUtil::directoryExists("/tmp/file"));
    EXPECT_TRUE(DirUtil::FileExists("/tmp/file"));
}

TEST_F(DirUtilTest, WhatIsMissingIsNothing) {
    for (const char* path : {"/tmp/missing", "/tmp/missing/", ""}) {
        EXPECT_FALSE(DirUtil::IsDir(path)) << path;
        EXPECT_FALSE(DirUtil::directoryExists(path)) << path;
        EXPECT_FALSE(DirUtil::FileExists(path)) << path;
        EXPECT_FALSE(DirUtil::FileWritable(path)) << path;
        EXPECT_FALSE(DirUtil::isLink(path)) << path;
        EXPECT_FALSE(DirUtil::SameFile(path, path)) << path;
        EXPECT_EQ(0, DirUtil::FileLastModified(path)) << path;
        EXPECT_EQ(-1, DirUtil::FileSize(path)) << path;
    }
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_F(DirUtilTest, ALinkIsFollowed) {
    world.makeDirectory("/tmp/here");
    std::filesystem::create_symlink("here", "/tmp/link");
    std::filesystem::create_symlink("missing", "/tmp/dangling");
    EXPECT_TRUE(DirUtil::IsDir("/tmp/link"));
    EXPECT_TRUE(DirUtil::directoryExists("/tmp/link"));
    EXPECT_TRUE(DirUtil::SameFile("/tmp/here", "/tmp/link"));
    EXPECT_FALSE(DirUtil::FileExists("/tmp/dangling"));
}

TEST_F(DirUtilTest, OnlyTheNameItselfMakesALink) {
    world.write("/tmp/here/file", "x");
    std::filesystem::create_symlink("here", "/tmp/link");
    std::filesystem::create_symlink("missing", "/tmp/dangling");
    EXPECT_TRUE(DirUtil::isLink("/tmp/link"));
    EXPECT_TRUE(DirUtil::isLink("/tmp/dangling"));
    EXPECT_FALSE(DirUtil::isLink("/tmp/here"));
    EXPECT_FALSE(DirUtil::isLink("/tmp/link/file"));
}

TEST_F(DirUtilTest, ADirectoryThatMayNotBeListedExistsButCannotBeOpened) {
    world.makeDirectory("/tmp/closed");
    chmod("/tmp/closed", 0300);
    EXPECT_TRUE(holdsInChild([] {
        dropCapabilities();
        return DirUtil::directoryExists("/tmp/closed") && !DirUtil::IsDir("/tmp/closed");
    }));
}

TEST_F(DirUtilTest, WritableIsWhatTheProcessMayWrite) {
    world.write("/tmp/open", "");
    world.write("/tmp/closed", "");
    chmod("/tmp/closed", 0400);
    EXPECT_TRUE(holdsInChild([] {
        dropCapabilities();
        return DirUtil::FileWritable("/tmp/open") && !DirUtil::FileWritable("/tmp/closed");
    }));
}

TEST_F(DirUtilTest, NothingIsWritableOnAReadOnlyFileSystem) {
    mountEmpty("/tmp/fixed", nullptr, MS_RDONLY);
    EXPECT_TRUE(DirUtil::FileExists("/tmp/fixed"));
    EXPECT_FALSE(DirUtil::FileWritable("/tmp/fixed"));
}

TEST_F(DirUtilTest, TheTimeOfTheLastModificationIsInSeconds) {
    world.write("/tmp/file", "x");
    const utimbuf times{111, 1'234'567'890};
    utime("/tmp/file", &times);
    EXPECT_EQ(1'234'567'890, DirUtil::FileLastModified("/tmp/file"));
    EXPECT_EQ(outputOf("stat -c %Y /tmp/file"), std::to_string(DirUtil::FileLastModified("/tmp/file")));
}

TEST_F(DirUtilTest, SizesAreExactAndMayNeedMoreThan32Bits) {
    world.write("/tmp/file", "12345");
    world.write("/tmp/empty", "");
    world.write("/tmp/large", "");
    std::filesystem::resize_file("/tmp/large", 5'000'000'000);
    EXPECT_EQ(5, DirUtil::FileSize("/tmp/file"));
    EXPECT_EQ(0, DirUtil::FileSize("/tmp/empty"));
    EXPECT_EQ(5'000'000'000, DirUtil::FileSize("/tmp/large"));
}

TEST_F(DirUtilTest, NamesOfOneFileAreTheSameFile) {
    world.write("/tmp/file", "x");
    world.write("/tmp/other", "x");
    std::filesystem::create_hard_link("/tmp/file", "/tmp/second-name");
    EXPECT_TRUE(DirUtil::SameFile("/tmp/file", "/tmp/./file"));
    EXPECT_TRUE(DirUtil::SameFile("/tmp/file", "/tmp/second-name"));
    EXPECT_FALSE(DirUtil::SameFile("/tmp/file", "/tmp/other"));
    EXPECT_FALSE(DirUtil::SameFile("/tmp/file", "/tmp/missing"));
}

TEST_F(DirUtilTest, EqualInodeNumbersOnTwoFileSystemsPassForTheSameFileOnPurpose) {
    ASSERT_EQ(outputOf("stat -c %i /proc"), outputOf("stat -c %i /sys"));
    EXPECT_TRUE(DirUtil::SameFile("/proc", "/sys"));
}

}  // namespace
