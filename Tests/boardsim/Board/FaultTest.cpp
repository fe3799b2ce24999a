#include "Tools/boardsim/Board/Fault.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <vector>

namespace {

using boardsim::Fault;
using boardsim::FaultSchedule;
using boardsim::numberOf;
using boardsim::parseFault;
using boardsim::wholeNumber;
using testing::ElementsAre;
using testing::HasSubstr;

std::string complaintAbout(const std::string& text) {
    try {
        parseFault(text);
    } catch (const std::invalid_argument& refusal) {
        return refusal.what();
    }
    return {};
}

/// What becomes of the first five accesses.
std::vector<bool> firstFive(FaultSchedule schedule) {
    std::vector<bool> hits;
    for (int i = 0; i < 5; ++i) {
        hits.push_back(schedule.strikes());
    }
    return hits;
}

TEST(FaultTest, HasKindDeviceAndAction) {
    const Fault fault = parseFault("i2c:fan@0x48:nack");
    EXPECT_EQ("i2c", fault.kind);
    EXPECT_EQ("fan@0x48", fault.device);
    EXPECT_EQ("nack", fault.action);
    EXPECT_EQ("", fault.value);
    EXPECT_EQ("i2c:fan@0x48:nack", fault.text);
}

TEST(FaultTest, AnActionMayHaveAValue) {
    const Fault fault = parseFault("w1:2d-000012:value=25.5");
    EXPECT_EQ("value", fault.action);
    EXPECT_EQ("25.5", fault.value);
}

TEST(FaultTest, HitsEveryAccessUnlessToldOtherwise) {
    EXPECT_THAT(firstFive(parseFault("i2c:a:nack").schedule), ElementsAre(true, true, true, true, true));
}

TEST(FaultTest, HitsSoManyAccessesAfterSoManyGoodOnes) {
    EXPECT_THAT(firstFive(parseFault("i2c:a:nack:after=2").schedule),
                ElementsAre(false, false, true, true, true));
    EXPECT_THAT(firstFive(parseFault("i2c:a:nack:times=2").schedule),
                ElementsAre(true, true, false, false, false));
    EXPECT_THAT(firstFive(parseFault("i2c:a:nack:times=0x1:after=1").schedule),
                ElementsAre(false, true, false, false, false));
    EXPECT_THAT(firstFive(parseFault("i2c:a:nack:times=0").schedule),
                ElementsAre(false, false, false, false, false));
}

TEST(FaultTest, TellsWhatIsWrong) {
    EXPECT_THAT(complaintAbout("i2c:fan"), HasSubstr("--fault i2c:fan: want KIND:DEVICE:ACTION"));
    for (const char* incomplete : {"", ":", "::", ":a:nack", "i2c::nack", "i2c:a:", "i2c:a:=1"}) {
        EXPECT_THAT(complaintAbout(incomplete), HasSubstr("want KIND:DEVICE:ACTION")) << incomplete;
    }
    for (const char* badNumber : {"i2c:a:nack:after=", "i2c:a:nack:times=x", "i2c:a:nack:times=-1",
                                  "i2c:a:nack:after=1x", "i2c:a:nack:after=99999999999999999999"}) {
        EXPECT_THAT(complaintAbout(badNumber), HasSubstr("wants a number")) << badNumber;
    }
    for (const char* unknown : {"i2c:a:nack:", "i2c:a:nack:often=1", "i2c:a:nack:times=1:times=1"}) {
        EXPECT_THAT(complaintAbout(unknown), HasSubstr("neither after=N nor times=N")) << unknown;
    }
}

TEST(FaultTest, AValueMayBeANumber) {
    EXPECT_EQ(37U, numberOf(parseFault("i2c:a:value=37"), 255));
    EXPECT_EQ(255U, numberOf(parseFault("i2c:a:value=0xfF"), 255));
    EXPECT_THROW(numberOf(parseFault("i2c:a:value=256"), 255), std::invalid_argument);
    EXPECT_THROW(numberOf(parseFault("i2c:a:value="), 255), std::invalid_argument);
    EXPECT_THROW(numberOf(parseFault("i2c:a:value"), 255), std::invalid_argument);
}

TEST(FaultTest, ANumberIsReadToItsEnd) {
    EXPECT_EQ(10U, wholeNumber("10"));
    EXPECT_EQ(16U, wholeNumber("0x10"));
    EXPECT_EQ(~std::uint64_t{0}, wholeNumber("0xffffffffffffffff"));
    for (const char* none : {"", "0x", "-1", "+1", " 1", "1 ", "ff", "0x0x1", "0x10000000000000000"}) {
        EXPECT_EQ(std::nullopt, wholeNumber(none)) << none;
    }
}

}  // namespace
