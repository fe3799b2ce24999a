#include "Tools/boardsim/Models/GpioDevice.h"

#include <gtest/gtest.h>

namespace {

using boardsim::answerGpioRequest;
using boardsim::describeGpioRequest;
using boardsim::GpioAnswer;
using boardsim::GpioBlock;

class GpioDeviceTest : public testing::Test {
protected:
    int value(std::uint32_t request, std::uint64_t argument) {
        const GpioAnswer answer = answerGpioRequest(lines, request, argument);
        EXPECT_EQ(std::errc{}, answer.error);
        return answer.value;
    }
    std::errc error(std::uint32_t request, std::uint64_t argument) {
        return answerGpioRequest(lines, request, argument).error;
    }

    GpioBlock lines{{{"chip", 0, 8}}};
};

TEST_F(GpioDeviceTest, TakesALineMakesItAnOutputAndGivesItBack) {
    EXPECT_EQ(0, value(0x7D06, 5));
    EXPECT_TRUE(lines.isTaken(5));
    EXPECT_EQ(0, value(0x7D04, 0x01010005));
    EXPECT_EQ(true, lines.isOutput(5));
    EXPECT_EQ(1, value(0x7D05, 5));
    EXPECT_EQ(0, value(0x7D03, 5));
    EXPECT_EQ(0, value(0x7D05, 5));
    EXPECT_EQ(0, value(0x7D03, 0x10005));
    EXPECT_EQ(1, value(0x7D05, 5));
    EXPECT_EQ(0, value(0x7D04, 5));
    EXPECT_EQ(false, lines.isOutput(5));
    EXPECT_EQ(0, value(0x7D07, 5));
    EXPECT_FALSE(lines.isTaken(5));
}

TEST_F(GpioDeviceTest, WithoutTheLevelBitAnOutputIsLow) {
    lines.drive(1, true);
    value(0x7D04, 0x01000001);
    EXPECT_EQ(0, value(0x7D05, 1));
}

TEST_F(GpioDeviceTest, RefusesWhatIsWrong) {
    lines.request(2);
    struct Refusal {
        std::uint32_t request;
        std::uint64_t argument;
        std::errc error;
    };
    for (const Refusal& wrong : {Refusal{0x7D02, 0, std::errc::inappropriate_io_control_operation},
                                 Refusal{0x7D08, 0, std::errc::inappropriate_io_control_operation},
                                 Refusal{0x7D05, 8, std::errc::invalid_argument},
                                 Refusal{0x7D03, 0x10003, std::errc::operation_not_permitted},
                                 Refusal{0x7D03, 0x20003, std::errc::invalid_argument},
                                 Refusal{0x7D04, 0x02000003, std::errc::invalid_argument},
                                 Refusal{0x7D05, 0x10003, std::errc::invalid_argument},
                                 Refusal{0x7D05, 0x100000003, std::errc::invalid_argument},
                                 Refusal{0x7D06, 2, std::errc::device_or_resource_busy},
                                 Refusal{0x7D07, 3, std::errc::invalid_argument}}) {
        EXPECT_EQ(wrong.error, error(wrong.request, wrong.argument))
            << std::hex << wrong.request << ' ' << wrong.argument;
    }
}

TEST_F(GpioDeviceTest, RequestsAreToldInWords) {
    EXPECT_EQ("gpio set 5 high", describeGpioRequest(0x7D03, 0x10005));
    EXPECT_EQ("gpio set 5 low", describeGpioRequest(0x7D03, 5));
    EXPECT_EQ("gpio direction 5 output high", describeGpioRequest(0x7D04, 0x01010005));
    EXPECT_EQ("gpio direction 5 input", describeGpioRequest(0x7D04, 5));
    EXPECT_EQ("gpio get 5", describeGpioRequest(0x7D05, 5));
    EXPECT_EQ("gpio request 5", describeGpioRequest(0x7D06, 5));
    EXPECT_EQ("gpio free 5", describeGpioRequest(0x7D07, 5));
    EXPECT_EQ("gpio unknown request 0x7d08", describeGpioRequest(0x7D08, 5));
}

}  // namespace
