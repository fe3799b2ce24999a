#include "Tools/boardsim/Board/FileTrace.h"

#include <gmock/gmock.h>

namespace {

using boardsim::FileCalls;
using boardsim::Transfer;
using testing::ElementsAre;

class FileTraceTest : public testing::Test {
protected:
    FileCalls traced(Transfer answer) {
        FileCalls calls;
        calls.read = [answer](std::uint64_t, std::span<std::byte>) { return answer; };
        calls.write = [answer](std::uint64_t, std::span<const std::byte>) { return answer; };
        return boardsim::traced("dev x/file", calls,
                                [this](const std::string& line) { lines.push_back(line); });
    }
    Transfer write(const FileCalls& calls, std::string_view text, std::uint64_t offset = 0) {
        return calls.write(offset, std::as_bytes(std::span(text)));
    }

    std::vector<std::string> lines;
    std::array<std::byte, 32> buffer{};
};

TEST_F(FileTraceTest, ReadsAreToldWithSizeAndPlace) {
    EXPECT_EQ(18U, traced({18}).read(3, buffer).count);
    traced({1}).read(0, buffer);
    EXPECT_THAT(lines, ElementsAre("dev x/file read 18 bytes at 3", "dev x/file read 1 byte at 0"));
}

TEST_F(FileTraceTest, ShortWritesAreToldByTheirBytesAndLongOnesByTheirSize) {
    EXPECT_EQ(2U, write(traced({2}), "1\n", 127).count);
    write(traced({8}), "12345678");
    write(traced({9}), "123456789");
    EXPECT_THAT(lines, ElementsAre("dev x/file write 0x31 0x0a at 127",
                                   "dev x/file write 0x31 0x32 0x33 0x34 0x35 0x36 0x37 0x38 at 0",
                                   "dev x/file write 9 bytes at 0"));
}

TEST_F(FileTraceTest, OfAWriteOnlyWhatWasTakenIsTold) {
    write(traced({1}), "12");
    EXPECT_THAT(lines, ElementsAre("dev x/file write 0x31 at 0"));
}

TEST_F(FileTraceTest, RefusalsAreToldWithTheirReason) {
    const FileCalls calls = traced({0, std::errc::io_error});
    EXPECT_EQ(std::errc::io_error, calls.read(4, buffer).error);
    EXPECT_EQ(std::errc::io_error, write(calls, "1").error);
    EXPECT_THAT(lines, ElementsAre("dev x/file refused read at 4: Input/output error",
                                   "dev x/file refused write 0x31 at 0: Input/output error"));
}

TEST_F(FileTraceTest, WhatAFileCannotDoItStillCannot) {
    const FileCalls calls = boardsim::traced("x", {}, [](const std::string&) {});
    EXPECT_FALSE(calls.read);
    EXPECT_FALSE(calls.write);
}

}  // namespace
