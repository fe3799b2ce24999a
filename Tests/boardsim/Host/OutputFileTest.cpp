#include "Tools/boardsim/Host/OutputFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <system_error>

#include "Tests/Support/TemporaryDirectory.h"

namespace {

using boardsim::OutputFile;

class OutputFileTest : public testing::Test {
protected:
    std::string contents() const {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    void put(const std::string& text) const { std::ofstream(path) << text; }

    support::TemporaryDirectory files;
    std::string path = files.file("out");
};

TEST_F(OutputFileTest, HoldsWhatWasWritten) {
    {
        OutputFile file(path);
        file.write("one ");
        file.write("two");
    }
    EXPECT_EQ("one two", contents());
}

TEST_F(OutputFileTest, ReplacesWhatWasThere) {
    put("a long text that was there before");
    OutputFile(path).write("new");
    EXPECT_EQ("new", contents());
}

TEST_F(OutputFileTest, LeavesWhatWasThereWhenNothingIsWritten) {
    put("before");
    { OutputFile file(path); }
    EXPECT_EQ("before", contents());
}

TEST_F(OutputFileTest, MakesNoFileBeforeSomethingIsWritten) {
    OutputFile file(path);
    EXPECT_FALSE(std::filesystem::exists(path));
    file.write("x");
    EXPECT_EQ("x", contents());
}

TEST_F(OutputFileTest, ALinkThatLeadsNowhereYetIsFollowed) {
    std::filesystem::create_directory(files.file("folder"));
    std::filesystem::create_symlink("folder/target", path);
    OutputFile file(path);
    EXPECT_TRUE(std::filesystem::is_empty(files.file("folder")));
    file.write("x");
    EXPECT_EQ("x", contents());
    EXPECT_TRUE(std::filesystem::is_regular_file(files.file("folder/target")));

    std::filesystem::create_symlink("no/such/folder", files.file("lost"));
    EXPECT_THROW(OutputFile{files.file("lost")}, std::system_error);
}

TEST_F(OutputFileTest, TwoThatGrowInOneFileOverwriteNothing) {
    put("before");
    OutputFile one(path);
    OutputFile other(path);
    one.startEmpty();
    other.startEmpty();
    one.write("a long first line\n");
    other.write("second\n");
    one.write("third\n");
    EXPECT_EQ("a long first line\nsecond\nthird\n", contents());
}

TEST_F(OutputFileTest, KnowsWhoWouldOverwriteIt) {
    const OutputFile missing(path);
    std::filesystem::create_symlink("out", files.file("link"));
    EXPECT_TRUE(missing.wouldOverwrite(OutputFile(files.file("link"))));
    EXPECT_TRUE(missing.wouldOverwrite(OutputFile(files.file("./out"))));
    EXPECT_FALSE(missing.wouldOverwrite(OutputFile(files.file("another"))));

    put("there now");
    const OutputFile present(path);
    EXPECT_TRUE(present.wouldOverwrite(OutputFile(files.file("link"))));
    EXPECT_FALSE(present.wouldOverwrite(OutputFile(files.file("another"))));
    EXPECT_FALSE(OutputFile("/dev/null").wouldOverwrite(OutputFile("/dev/null")));
    EXPECT_FALSE(OutputFile("-").wouldOverwrite(OutputFile("-")));
}

TEST_F(OutputFileTest, AFileThatGrowsIsThereAndEmptyFromTheStart) {
    put("before");
    OutputFile file(path);
    file.startEmpty();
    EXPECT_EQ("", contents());
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(OutputFileTest, APathThatCannotBeOpenedIsNamed) {
    const std::string bad = files.file("no/such/directory");
    try {
        OutputFile file(bad);
        FAIL() << "was opened";
    } catch (const std::system_error& error) {
        EXPECT_NE(std::string::npos, std::string(error.what()).find(bad)) << error.what();
    }
    EXPECT_THROW(OutputFile{files.file("")}, std::system_error) << "a directory";
    EXPECT_THROW(OutputFile{files.file("missing/")}, std::system_error) << "a directory that is missing";
    EXPECT_THROW(OutputFile{files.file(std::string(300, 'x'))}, std::system_error) << "a name too long";
}

TEST_F(OutputFileTest, AFullDiskIsAnError) {
    OutputFile file("/dev/full");
    EXPECT_THROW(file.write("x"), std::system_error);
}

}  // namespace
