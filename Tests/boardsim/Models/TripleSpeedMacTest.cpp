#include "Tools/boardsim/Models/TripleSpeedMac.h"

#include <gtest/gtest.h>

#include "Tests/boardsim/Models/ModelTime.h"

namespace {

using boardsim::FaultSchedule;
using namespace std::chrono_literals;

constexpr std::uint32_t kCommand = 0x08;

class TripleSpeedMacTest : public testing::Test {
protected:
    std::uint64_t read(std::uint32_t offset) { return mac.read(offset, 4).value; }
    bool isTaken(std::uint32_t offset, std::uint64_t value) { return !mac.write(offset, 4, value); }

    models::ModelTime time;
    boardsim::TripleSpeedMac mac{time.clock()};
};

TEST_F(TripleSpeedMacTest, HasTheUserGuidesValuesAfterReset) {
    EXPECT_EQ(0U, read(kCommand));
    EXPECT_EQ(0U, read(0x0C));
    EXPECT_EQ(1518U, read(0x14));
    EXPECT_EQ(0U, read(0x5C));
    EXPECT_EQ(1U, read(0x40));
    EXPECT_EQ(0xFFFFU, read(0x44));
    EXPECT_EQ(0U, read(0x250));
}

TEST_F(TripleSpeedMacTest, KeepsWhatIsConfigured) {
    struct {
        std::uint32_t offset;
        std::uint32_t value;
    } const kConfiguration[] = {{0x0C, 0x17231C20}, {0x10, 0x0000CB4A}, {0x14, 9100}, {0x18, 25},
                                {0x1C, 1663},       {0x24, 2032},       {0x2C, 8},    {0x38, 8},
                                {0x5C, 11},         {0x250, 3}};
    for (const auto& [offset, value] : kConfiguration) {
        EXPECT_TRUE(isTaken(offset, value)) << offset;
        EXPECT_EQ(value, read(offset)) << offset;
    }
}

TEST_F(TripleSpeedMacTest, BitsThatAreNotThereStayZero) {
    EXPECT_TRUE(isTaken(0x10, 0xFFFFFFFF));
    EXPECT_EQ(0xFFFFU, read(0x10));
    EXPECT_TRUE(isTaken(0x5C, 0xFF));
    EXPECT_EQ(0x1FU, read(0x5C));
}

TEST_F(TripleSpeedMacTest, TheResetBitFallsByItselfAndTheMacIsOff) {
    EXPECT_TRUE(isTaken(0x14, 1600));
    EXPECT_TRUE(isTaken(kCommand, 0x01800093));
    EXPECT_EQ(0x01800093U, read(kCommand));
    EXPECT_TRUE(isTaken(kCommand, 0x01802093));
    EXPECT_EQ(0x01802090U, read(kCommand));
    time.pass(99us);
    EXPECT_EQ(0x01802090U, read(kCommand));
    time.pass(1us);
    EXPECT_EQ(0x01800090U, read(kCommand));
    EXPECT_EQ(1600U, read(0x14)) << "a software reset keeps the configuration";
}

TEST_F(TripleSpeedMacTest, DoesNotGoOnDuringReset) {
    EXPECT_TRUE(isTaken(kCommand, 0x2000));
    EXPECT_TRUE(isTaken(kCommand, 0x0003));
    time.pass(1s);
    EXPECT_EQ(0U, read(kCommand));
}

TEST_F(TripleSpeedMacTest, AResetThatHangsNeverEnds) {
    mac.hangInReset(FaultSchedule(1));
    EXPECT_TRUE(isTaken(kCommand, 0x2000));
    time.pass(100us);
    EXPECT_EQ(0U, read(kCommand)) << "the first goes well";
    EXPECT_TRUE(isTaken(kCommand, 0x2000));
    time.pass(24h);
    EXPECT_EQ(0x2000U, read(kCommand));
}

TEST_F(TripleSpeedMacTest, ARunningMacWantsNoNewAddressOrLength) {
    EXPECT_TRUE(isTaken(kCommand, 0x1));
    EXPECT_FALSE(isTaken(0x0C, 1));
    EXPECT_FALSE(isTaken(0x14, 1));
    EXPECT_EQ("frm_length is for a MAC that is off", *mac.write(0x14, 4, 1));
    EXPECT_EQ(1518U, read(0x14));
    EXPECT_TRUE(isTaken(0x18, 5)) << "others may change any time";
    EXPECT_TRUE(isTaken(kCommand, 0));
    EXPECT_TRUE(isTaken(0x14, 1600));
}

TEST_F(TripleSpeedMacTest, CountersAreZeroAndCannotBeWritten) {
    EXPECT_FALSE(mac.read(0x68, 4).refused);
    EXPECT_EQ(0U, read(0x68));
    EXPECT_FALSE(isTaken(0x68, 1));
}

TEST_F(TripleSpeedMacTest, RefusesWhatIsNoRegister) {
    EXPECT_FALSE(isTaken(0x00, 1)) << "the revision is fixed";
    EXPECT_FALSE(isTaken(0x48, 1));
    EXPECT_TRUE(mac.read(0x48, 4).refused);
    EXPECT_TRUE(mac.read(0x3FC, 4).refused);
    EXPECT_TRUE(mac.read(kCommand, 1).refused);
    EXPECT_TRUE(mac.write(kCommand + 2, 4, 0));
    EXPECT_TRUE(mac.write(kCommand, 2, 0));
}

}  // namespace
