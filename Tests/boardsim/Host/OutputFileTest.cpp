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

TEST_F(OutputFileTest, LeavesNoFileWhereNoneWasAndNothingIsWritten) {
    { OutputFile file(path); }
    EXPECT_FALSE(std::filesystem::exists(path));
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
}

TEST_F(OutputFileTest, AFullDiskIsAnError) {
    OutputFile file("/dev/full");
    EXPECT_THROW(file.write("x"), std::system_error);
}

}  // namespace
