#include "Tools/boardsim/Host/ProgramSearch.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "Tests/Support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;
using boardsim::findProgram;
using boardsim::programExists;

class ProgramSearchTest : public testing::Test {
protected:
    std::string write(const std::string& name, fs::perms mode) const {
        const std::string path = files.file(name);
        std::ofstream(path) << "#!/bin/sh\n";
        fs::permissions(path, mode);
        return path;
    }

    support::TemporaryDirectory files;
    std::string folder = fs::path(files.file("x")).parent_path();
};

TEST_F(ProgramSearchTest, ProgramsAreFoundAlongThePath) {
    const std::string tool = write("tool", fs::perms::owner_all);
    EXPECT_EQ(folder + "/tool", findProgram("tool", "/no/such:" + folder + ":/bin"));
    EXPECT_FALSE(findProgram("tool", "/no/such:/bin"));
    EXPECT_FALSE(findProgram("tool", ""));
}

TEST_F(ProgramSearchTest, ANameWithASlashIsTakenAsItIs) {
    const std::string tool = write("tool", fs::perms::owner_all);
    EXPECT_EQ(tool, findProgram(tool, ""));
    EXPECT_FALSE(findProgram(tool + "s", folder));
}

TEST_F(ProgramSearchTest, FilesThatCannotBeRunExistButAreNoPrograms) {
    const std::string data = write("data", fs::perms::owner_read);
    EXPECT_FALSE(findProgram("data", folder));
    EXPECT_TRUE(programExists("data", folder));
    EXPECT_FALSE(findProgram(folder, ""));
    EXPECT_TRUE(programExists(folder, ""));
    EXPECT_FALSE(programExists("nothing", folder));
}

TEST_F(ProgramSearchTest, TheFirstThatCanBeRunIsTaken) {
    write("tool", fs::perms::owner_read);
    fs::create_directory(files.file("later"));
    write("later/tool", fs::perms::owner_all);
    EXPECT_EQ(folder + "/later/tool", findProgram("tool", folder + ":" + folder + "/later"));
}

TEST_F(ProgramSearchTest, AnEmptyFolderIsTheWorkingDirectory) {
    const fs::path before = fs::current_path();
    write("tool", fs::perms::owner_all);
    fs::current_path(folder);
    EXPECT_EQ("./tool", findProgram("tool", "/bin::/usr/bin"));
    fs::current_path(before);
}

}  // namespace
