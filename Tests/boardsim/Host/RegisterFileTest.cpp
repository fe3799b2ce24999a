#include "Tools/boardsim/Host/RegisterFile.h"

#include <gmock/gmock.h>

#include <array>

namespace {

using boardsim::ByteRegisters;
using boardsim::FileCalls;
using testing::ElementsAre;

/// Four registers.
class RegisterFileTest : public testing::Test {
protected:
    ByteRegisters registers() {
        ByteRegisters result;
        result.count = values.size();
        result.get = [this](std::size_t number) { return values.at(number); };
        result.set = [this](std::size_t number, std::uint8_t value) { values.at(number) = value; };
        return result;
    }

    std::array<std::uint8_t, 4> values{10, 11, 12, 13};
    FileCalls file = boardsim::registerFile(registers());
    std::array<std::byte, 3> bytes{std::byte{1}, std::byte{2}, std::byte{3}};
};

TEST_F(RegisterFileTest, TheByteAtAnOffsetIsTheRegisterOfThatNumber) {
    EXPECT_EQ(3U, file.read(1, bytes).count);
    EXPECT_THAT(bytes, ElementsAre(std::byte{11}, std::byte{12}, std::byte{13}));
    EXPECT_EQ(1U, file.write(2, std::span(bytes).first(1)).count);
    EXPECT_THAT(values, ElementsAre(10, 11, 11, 13));
}

TEST_F(RegisterFileTest, EndsBehindTheLastRegister) {
    EXPECT_EQ(1U, file.read(3, bytes).count);
    EXPECT_EQ(0U, file.read(4, bytes).count);
    EXPECT_EQ(1U, file.write(3, std::span(bytes).last(2)).count);
    EXPECT_EQ(std::errc::file_too_large, file.write(4, bytes).error);
    EXPECT_EQ(std::errc::file_too_large, file.write(~std::uint64_t{0}, bytes).error);
    EXPECT_THAT(values, ElementsAre(10, 11, 12, 2));
}

}  // namespace
