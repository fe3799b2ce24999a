#include "Vl/Common/Files/TemporaryFile.h"

#include <fcntl.h>
#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>
#include <set>

#include "Tests/Common/Files/LoggedWorld.h"

namespace {

namespace fs = std::filesystem;
using testing::MatchesRegex;
using Valen::CreateTemporaryFile;
using Valen::TemporaryFileException;

class TemporaryFileTest : public LoggedWorld {};

TEST_F(TemporaryFileTest, AFileOfItsOwnIsCreatedEmptyForItsOwnerOnly) {
    const std::string path = CreateTemporaryFile("/tmp/");
    EXPECT_THAT(path, MatchesRegex("/tmp/dummyFile[A-Za-z0-9]{6}"));
    EXPECT_EQ("600 0", outputOf("stat -c '%a %s' " + path));
}

TEST_F(TemporaryFileTest, TheDirectoryIsJoinedAsItIsOnPurpose) {
    const std::string path = CreateTemporaryFile("/tmp/pre");
    EXPECT_THAT(path, MatchesRegex("/tmp/predummyFile[A-Za-z0-9]{6}"));
    EXPECT_TRUE(fs::exists(path));
}

TEST_F(TemporaryFileTest, NoNameIsGivenTwiceAndNothingIsLeftOpen) {
    const std::size_t before = openDescriptors();
    std::set<std::string> paths;
    for (int i = 0; i < 200; ++i) {
        EXPECT_TRUE(paths.insert(CreateTemporaryFile("/tmp/")).second);
    }
    EXPECT_EQ(200, std::distance(fs::directory_iterator("/tmp"), fs::directory_iterator()));
    EXPECT_EQ(before, openDescriptors());
}

TEST_F(TemporaryFileTest, AFailureSaysWhatAndWhyAndCarriesTheNumber) {
    try {
        CreateTemporaryFile("/tmp/missing/");
        FAIL() << "nothing was thrown";
    } catch (const TemporaryFileException& error) {
        EXPECT_STREQ("could not create /tmp/missing/dummyFileXXXXXX: No such file or directory",
                     error.what());
        EXPECT_EQ(ENOENT, error.error());
    }
}

TEST_F(TemporaryFileTest, TheExceptionIsAStandardOneThatKeepsWhatItWasBuiltFrom) {
    const TemporaryFileException error("why", 42);
    const std::exception& standard = error;
    EXPECT_STREQ("why", standard.what());
    EXPECT_EQ(42, error.error());
}

}  // namespace
