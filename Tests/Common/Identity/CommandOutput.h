#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

/// What a shell command writes to its standard output; fails the test when the command does.
inline std::string outputOf(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        ADD_FAILURE() << "cannot run " << command;
        return {};
    }
    std::string output;
    std::array<char, 4096> piece;
    std::size_t count = 0;
    while ((count = std::fread(piece.data(), 1, piece.size(), pipe)) > 0) {
        output.append(piece.data(), count);
    }
    EXPECT_EQ(0, pclose(pipe)) << command;
    return output;
}
