#include "Vl/Common/Files/DirectoryReader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "Tests/Support/PrivateWorld.h"

namespace {

using Valen::DirectoryReader;

class DirectoryReaderTest : public testing::Test {
protected:
    DirectoryReaderTest() {
        world.makeDirectory("/tmp/here/directory");
        world.write("/tmp/here/file", "x");
        std::filesystem::create_symlink("directory", "/tmp/here/link");
        std::filesystem::create_symlink("file/nothing", "/tmp/here/dangling");
        std::filesystem::create_symlink("circle", "/tmp/here/circle");
    }

    support::PrivateWorld world;
};

TEST_F(DirectoryReaderTest, GivesEveryEntryOnceAndSaysWhatIsADirectory) {
    std::map<std::string, std::optional<bool>> entries;
    DirectoryReader reader("/tmp/here");
    while (const char* name = reader.next()) {
        EXPECT_TRUE(entries.emplace(name, reader.isDirectory()).second) << name;
    }
    const std::map<std::string, std::optional<bool>> expected = {
        {".", true},    {"..", true},        {"directory", true},     {"file", false},
        {"link", true}, {"dangling", false}, {"circle", std::nullopt}};
    EXPECT_EQ(expected, entries);
    EXPECT_FALSE(reader.failed());
    EXPECT_EQ(nullptr, reader.next());
}

TEST_F(DirectoryReaderTest, FailsOnWhatIsNoDirectory) {
    for (const char* path : {"/tmp/here/file", "/tmp/here/missing", "/tmp/here/circle", ""}) {
        DirectoryReader reader(path);
        EXPECT_TRUE(reader.failed()) << path;
        EXPECT_EQ(nullptr, reader.next()) << path;
        EXPECT_TRUE(reader.failed()) << path;
    }
}

}  // namespace
