#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

namespace registertrap {

namespace {

using boardsim::MessageBuffer;
using testing::SizeIs;

TEST(MessageBuffer, WritesNumbersWithoutLeadingZeros) {
    MessageBuffer message;
    message.hex(0) << " ";
    message.hex(0x10) << " ";
    message.hex(0xFEDCBA9876543210);

    EXPECT_EQ(message.text(), "0x0 0x10 0xfedcba9876543210");
}

TEST(MessageBuffer, WritesBytesWithTwoDigits) {
    constexpr std::array kBytes = {std::byte{0x0F}, std::byte{0xA0}};
    MessageBuffer message;
    message.bytes(kBytes);

    EXPECT_EQ(message.text(), "0f a0");
}

TEST(MessageBuffer, CutsOffWhatDoesNotFit) {
    MessageBuffer message;
    message << std::string(300, 'a') << std::string(300, 'b') << "c";

    EXPECT_THAT(message.text(), SizeIs(319));
    EXPECT_EQ(message.text().back(), 'b');
}

TEST(MessageBuffer, PrintsOneLine) {
    MessageBuffer message;
    message << "one line";
    testing::internal::CaptureStderr();

    message.print();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one line\n");
}

}  // namespace

}  // namespace registertrap
