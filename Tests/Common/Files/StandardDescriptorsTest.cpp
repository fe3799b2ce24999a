#include "Vl/Common/Files/StandardDescriptors.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using Links = std::array<std::string, 3>;

/// What a descriptor of this process is open on; empty when it is closed.
std::string linkOf(int descriptor) {
    std::error_code closed;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), closed);
}

/// Ends the process: with 0 if those that were closed are "/dev/null", open both ways, and nothing else has
/// changed.
[[noreturn]] void fillAndJudge(const std::vector<int>& closed) {
    for (const int descriptor : closed) {
        close(descriptor);
    }
    Links expected;
    for (int i = 0; i < 3; ++i) {
        const bool isClosed = std::find(closed.begin(), closed.end(), i) != closed.end();
        expected[static_cast<std::size_t>(i)] = isClosed ? "/dev/null" : linkOf(i);
    }
    Valen::fillStandardDescriptors();
    const bool asExpected = expected == Links{linkOf(0), linkOf(1), linkOf(2)};
    const bool writable = std::all_of(closed.begin(), closed.end(), [](int descriptor) {
        return (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDWR && fcntl(descriptor, F_GETFD) == 0;
    });
    std::_Exit(asExpected && writable ? 0 : 1);
}

TEST(StandardDescriptorsTest, WhatIsClosedBecomesTheNullDeviceAndTheRestStays) {
    const std::vector<std::vector<int>> cases = {{}, {0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}};
    for (const std::vector<int>& closed : cases) {
        EXPECT_EXIT(fillAndJudge(closed), testing::ExitedWithCode(0), "") << closed.size();
    }
}

TEST(StandardDescriptorsTest, NothingIsOpenedWhenNothingIsClosed) {
    const int before = dup(0);
    close(before);
    Valen::fillStandardDescriptors();
    const int after = dup(0);
    close(after);
    EXPECT_EQ(before, after);
}

}  // namespace
