// DirUtil: directory trees.
#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/DirUtil.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::DirUtil;

class DirUtilTreeTest : public LoggedWorld {
protected:
    DirUtilTreeTest() {
        world.write("/tmp/from/file", std::string(3000, 'x'));
        world.write("/tmp/from/.hidden", "h");
        world.write("/tmp/from/a b/c/deep", std::string(7000, 'y'));
        world.write("/tmp/from/nothing", "");
        world.makeDirectory("/tmp/from/empty");
        fs::create_symlink("a b/c", "/tmp/from/link");
        fs::create_symlink("/tmp/missing", "/tmp/from/dangling");
        fs::create_symlink("..", "/tmp/from/a b/circle");
    }

    bool copy(const char* from = "/tmp/from", const char* to = "/tmp/to") {
        percentages.clear();
        return DirUtil::recursiveCopyWithProgress(from, to,
                                                  [this](int percent) { percentages.push_back(percent); });
    }

    /// Names, kinds, modes, link texts.
    static std::string listing(const std::string& directory) {
        return outputOf("cd " + directory + " && find . -printf '%p %y %m %l\\n' | sort");
    }

    std::vector<int> percentages;
};

TEST_F(DirUtilTreeTest, ACopyIsWhatCpMakes) {
    EXPECT_TRUE(copy());
    outputOf("cp -r /tmp/from /tmp/witness");
    EXPECT_EQ("", outputOf("diff -r --no-dereference /tmp/witness /tmp/to 2>&1"));
    EXPECT_EQ(listing("/tmp/witness"), listing("/tmp/to"));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilTreeTest, ModesAreKeptWhateverTheMaskSays) {
    chmod("/tmp/from", 0751);
    chmod("/tmp/from/file", 0640);
    chmod("/tmp/from/a b", 0555);
    chmod("/tmp/from/a b/c", 0);
    chmod("/tmp/from/empty", 02777);
    const mode_t mask = umask(0077);
    EXPECT_TRUE(copy());
    umask(mask);
    EXPECT_EQ(listing("/tmp/from"), listing("/tmp/to"));
}

TEST_F(DirUtilTreeTest, AnOrdinaryUserCopiesDirectoriesThatMayNotBeWritten) {
    chmod("/tmp/from/a b/c", 0555);
    chmod("/tmp/from/a b", 0555);
    EXPECT_TRUE(holdsInChild([this] {
        dropCapabilities();
        return copy();
    }));
    EXPECT_EQ(listing("/tmp/from"), listing("/tmp/to"));
}

TEST_F(DirUtilTreeTest, TheProgressRisesFrom0To100) {
    EXPECT_TRUE(copy());
    EXPECT_EQ(0, percentages.front());
    EXPECT_EQ(100, percentages.back());
    EXPECT_EQ(percentages.end(),
              std::adjacent_find(percentages.begin(), percentages.end(), std::greater_equal<>()));
    EXPECT_LE(3U, percentages.size());
}

TEST_F(DirUtilTreeTest, ThePercentageIsThatOfTheBytes) {
    fs::remove_all("/tmp/from");
    world.write("/tmp/from/one", std::string(2500, 'x'));
    world.write("/tmp/from/two", std::string(2500, 'x'));
    world.write("/tmp/from/three", std::string(5000, 'x'));
    EXPECT_TRUE(copy());
    EXPECT_THAT(percentages, testing::AnyOf(ElementsAre(0, 25, 50, 100), ElementsAre(0, 25, 75, 100),
                                            ElementsAre(0, 50, 75, 100)));
}

TEST_F(DirUtilTreeTest, ATreeWithoutBytesIsDoneAtOnce) {
    EXPECT_TRUE(copy("/tmp/from/empty"));
    EXPECT_THAT(percentages, ElementsAre(0, 100));
}

TEST_F(DirUtilTreeTest, NobodyNeedsToListen) {
    EXPECT_TRUE(DirUtil::recursiveCopyWithProgress("/tmp/from", "/tmp/to", {}));
    EXPECT_EQ(listing("/tmp/from"), listing("/tmp/to"));
}

TEST_F(DirUtilTreeTest, WhatTheListenerThrowsPassesThrough) {
    EXPECT_THROW(DirUtil::recursiveCopyWithProgress("/tmp/from", "/tmp/to",
                                                    [](int) { throw std::runtime_error("stop"); }),
                 std::runtime_error);
}

TEST_F(DirUtilTreeTest, AnExistingTargetIsAddedToAndItsFilesAreReplaced) {
    world.write("/tmp/to/file", "old");
    world.write("/tmp/to/more", "kept");
    fs::create_symlink("old", "/tmp/to/link");
    EXPECT_TRUE(copy());
    EXPECT_EQ("kept", world.read("/tmp/to/more"));
    EXPECT_EQ("Only in /tmp/to: more", outputOf("diff -r --no-dereference /tmp/from /tmp/to"));
}

TEST_F(DirUtilTreeTest, SlashesAtTheEndAndRelativePathsDoNotMatter) {
    fs::current_path("/tmp");
    EXPECT_TRUE(copy("from/", "to/"));
    EXPECT_TRUE(copy("./from/.", "/tmp/second"));
    EXPECT_EQ(listing("/tmp/from"), listing("/tmp/to"));
    EXPECT_EQ(listing("/tmp/from"), listing("/tmp/second"));
}

TEST_F(DirUtilTreeTest, ADirectoryIsNotCopiedIntoItself) {
    const std::string before = listing("/tmp/from");
    fs::create_symlink("/tmp/from/empty", "/tmp/shortcut");
    world.makeDirectory("/tmp/mounted");
    ASSERT_EQ(0, mount("/tmp/from", "/tmp/mounted", nullptr, MS_BIND, nullptr));
    for (const char* to : {"/tmp/from", "/tmp/from/to", "/tmp/from/a b/c/to/more", "/tmp/shortcut/to",
                           "/tmp/mounted/to", "/tmp/other/../from/to"}) {
        EXPECT_FALSE(copy("/tmp/from", to)) << to;
        EXPECT_THAT(logged(), ElementsAre(debugLine("could not copy /tmp/from to " + std::string(to) +
                                                    ": Invalid argument")));
        EXPECT_THAT(percentages, IsEmpty());
    }
    EXPECT_EQ(before, listing("/tmp/from"));
    EXPECT_FALSE(copy("/", "/tmp/everything"));
    EXPECT_FALSE(fs::exists("/tmp/everything"));
}

TEST_F(DirUtilTreeTest, ALinkInTheTargetIsNoDirectoryToCopyInto) {
    world.makeDirectory("/tmp/to");
    fs::create_symlink("/tmp/from/a b", "/tmp/to/a b");
    EXPECT_FALSE(copy());
    EXPECT_TRUE(fs::is_symlink("/tmp/to/a b"));
}

TEST_F(DirUtilTreeTest, TheTargetItselfMayBeALinkToADirectory) {
    world.makeDirectory("/tmp/elsewhere");
    fs::create_symlink("elsewhere", "/tmp/to");
    EXPECT_TRUE(copy());
    EXPECT_EQ(listing("/tmp/from"), listing("/tmp/elsewhere"));
}

TEST_F(DirUtilTreeTest, OnlyADirectoryIsATree) {
    EXPECT_FALSE(copy("/tmp/missing"));
    EXPECT_FALSE(copy("/tmp/from/file"));
    EXPECT_FALSE(copy(""));
    EXPECT_FALSE(fs::exists("/tmp/to"));
    EXPECT_FALSE(copy("/tmp/from", "/tmp/missing/to"));
    EXPECT_FALSE(copy("/tmp/from", "/tmp/from/file"));
    EXPECT_FALSE(copy("/tmp/from", ""));
    EXPECT_EQ(6U, logged().size());
}

TEST_F(DirUtilTreeTest, APipeEndsTheCopyInsteadOfHangingIt) {
    mkfifo("/tmp/from/empty/pipe", 0600);
    EXPECT_FALSE(copy());
    EXPECT_EQ(1U, logged().size());
    EXPECT_THAT(percentages, testing::Not(testing::Contains(100)));
}

TEST_F(DirUtilTreeTest, AFullFileSystemEndsTheCopy) {
    mountEmpty("/tmp/small", "size=8k");
    EXPECT_FALSE(copy("/tmp/from", "/tmp/small/to"));
    EXPECT_THAT(logged(),
                ElementsAre(debugLine("could not copy /tmp/from to /tmp/small/to: No space left on device")));
}

TEST_F(DirUtilTreeTest, TheSizeIsThatOfAllFilesAndNoLinkIsFollowed) {
    EXPECT_EQ(10'001, DirUtil::directorySize("/tmp/from"));
    EXPECT_EQ(0, DirUtil::directorySize("/tmp/from/empty"));
    EXPECT_EQ(outputOf("find /tmp/from -type f -print0 | du -bc --files0-from=- | tail -1 | cut -f1"),
              std::to_string(DirUtil::directorySize("/tmp/from")));
}

TEST_F(DirUtilTreeTest, SizesMayNeedMoreThan32Bits) {
    fs::resize_file("/tmp/from/nothing", 5'000'000'000);
    EXPECT_EQ(5'000'010'001, DirUtil::directorySize("/tmp/from"));
}

TEST_F(DirUtilTreeTest, ASumThatNoNumberHoldsIsTheLargestNumber) {
    constexpr std::int64_t kLargest = 9'223'372'036'854'775'807;
    const std::string first = "/tmp/from/empty/first";
    world.write(first, "");
    fs::resize_file(first, kLargest);
    EXPECT_EQ(kLargest, DirUtil::directorySize("/tmp/from/empty"));
    for (const char* next : {"/tmp/from/empty/second", "/tmp/from/empty/third"}) {
        fs::create_hard_link(first, next);
        EXPECT_EQ(kLargest, DirUtil::directorySize("/tmp/from/empty"));
    }
}

TEST_F(DirUtilTreeTest, WhatCannotBeListedHasNoSize) {
    EXPECT_EQ(-1, DirUtil::directorySize("/tmp/missing"));
    EXPECT_EQ(-1, DirUtil::directorySize("/tmp/from/file"));
    EXPECT_EQ(-1, DirUtil::directorySize(""));
    chmod("/tmp/from/a b", 0);
    EXPECT_TRUE(holdsInChild([] {
        dropCapabilities();
        return DirUtil::directorySize("/tmp/from") == -1;
    }));
}

}  // namespace
