#include "Tools/boardsim/Host/Preload.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "Tests/Support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;

class PreloadTest : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& text) const {
        const std::string path = files.file(name);
        std::ofstream(path, std::ios::binary) << text;
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }

    support::TemporaryDirectory files;
};

TEST_F(PreloadTest, TellsStaticProgramsFromDynamicOnes) {
    EXPECT_FALSE(boardsim::isStaticallyLinked("/bin/sh"));
    EXPECT_TRUE(boardsim::isStaticallyLinked(STATIC_PROGRAM));
}

TEST_F(PreloadTest, AScriptCountsAsItsInterpreter) {
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("script", "#!/bin/sh -e\nexit\n")));
    EXPECT_TRUE(boardsim::isStaticallyLinked(write("static", "#! " STATIC_PROGRAM " -x\n")));
    EXPECT_TRUE(boardsim::isStaticallyLinked(write("second", "#!" + files.file("static") + "\n")));
}

TEST_F(PreloadTest, WhatIsNoProgramIsNotStatic) {
    EXPECT_FALSE(boardsim::isStaticallyLinked("/no/such/file"));
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("empty", "")));
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("short",
                                                    "\x7f"
                                                    "ELF")));
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("text", "just text\n")));
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("bare", "#!\n")));
}

TEST_F(PreloadTest, ACutProgramIsNotStatic) {
    std::ifstream whole("/bin/sh", std::ios::binary);
    std::string start(70, '\0');
    whole.read(start.data(), 70);
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("cut", start)));
}

TEST_F(PreloadTest, AScriptThatNamesItselfEnds) {
    EXPECT_FALSE(boardsim::isStaticallyLinked(write("loop", "#!" + files.file("loop") + "\n")));
}

std::map<std::string, std::string> environmentWith(const char* preload, const char* asan) {
    preload == nullptr ? unsetenv("LD_PRELOAD") : setenv("LD_PRELOAD", preload, 1);
    asan == nullptr ? unsetenv("ASAN_OPTIONS") : setenv("ASAN_OPTIONS", asan, 1);
    const auto variables = boardsim::trapEnvironment("/lib/trap.so", "/dev/socket");
    unsetenv("LD_PRELOAD");
    unsetenv("ASAN_OPTIONS");
    return {variables.begin(), variables.end()};
}

TEST_F(PreloadTest, TheLibraryComesInFrontOfOthers) {
    EXPECT_EQ("/lib/trap.so", environmentWith(nullptr, nullptr)["LD_PRELOAD"]);
    EXPECT_EQ("/lib/trap.so:other.so", environmentWith("other.so", nullptr)["LD_PRELOAD"]);
    EXPECT_EQ("/dev/socket", environmentWith(nullptr, nullptr)["BOARDSIM_TRAP_SOCKET"]);
}

TEST_F(PreloadTest, AddressSanitizersOptionsAreKept) {
    EXPECT_EQ("verify_asan_link_order=0", environmentWith(nullptr, nullptr)["ASAN_OPTIONS"]);
    EXPECT_EQ("detect_leaks=0:verify_asan_link_order=0",
              environmentWith(nullptr, "detect_leaks=0")["ASAN_OPTIONS"]);
}

}  // namespace
