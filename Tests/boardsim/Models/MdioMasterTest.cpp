#include "Tools/boardsim/Models/MdioMaster.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Models/ModelTime.h"
#include "Tools/boardsim/Models/Dp83867.h"

namespace {

using boardsim::FaultSchedule;
using boardsim::MdioFrame;
using testing::ElementsAre;
using testing::Field;
using namespace std::chrono_literals;

class MdioMasterTest : public testing::Test {
protected:
    MdioMasterTest() {
        bus.attach(1, phy);
        bus.listen([this](const MdioFrame& frame) { frames.push_back(frame); });
    }

    std::uint64_t read() { return master.read(0, 4).value; }
    bool isTaken(std::uint64_t frame) { return !master.write(0, 4, frame); }

    models::ModelTime time;
    boardsim::Dp83867 phy{time.clock()};
    boardsim::MdioBus bus;
    boardsim::MdioMaster master{bus, time.clock()};
    std::vector<MdioFrame> frames;
};

auto isFrame(bool isWrite, unsigned phy, unsigned reg, unsigned data) {
    return testing::AllOf(Field(&MdioFrame::isWrite, isWrite), Field(&MdioFrame::phy, phy),
                          Field(&MdioFrame::reg, reg), Field(&MdioFrame::data, data));
}

TEST_F(MdioMasterTest, IsIdleAfterPowerOn) {
    EXPECT_EQ(0U, read());
}

TEST_F(MdioMasterTest, AWriteFrameReachesThePhysRegister) {
    EXPECT_TRUE(isTaken(0x509201E1));
    EXPECT_THAT(frames, ElementsAre(isFrame(true, 1, 4, 0x01E1)));
    EXPECT_EQ(0x01E1, phy.read(4));
}

TEST_F(MdioMasterTest, AReadFrameBringsThePhysData) {
    EXPECT_TRUE(isTaken(0x60880000));
    EXPECT_THAT(frames, ElementsAre(isFrame(false, 1, 2, 0x2000)));
    time.pass(1ms);
    EXPECT_EQ(0x2000U, read());
}

TEST_F(MdioMasterTest, BusyBitsFallOneAfterTheOtherWhenTheFrameIsOver) {
    EXPECT_TRUE(isTaken(0x60880000));
    EXPECT_EQ(0xC0000000U, read() & 0xFFFF0000);
    time.pass(25599ns);
    EXPECT_EQ(0xC0000000U, read() & 0xFFFF0000);
    time.pass(1ns);
    EXPECT_EQ(0x40002000U, read());
    time.pass(400ns);
    EXPECT_EQ(0x00002000U, read());
}

TEST_F(MdioMasterTest, RefusesAFrameWhileAnotherIsOnTheWires) {
    EXPECT_TRUE(isTaken(0x60880000));
    time.pass(25600ns);
    EXPECT_FALSE(isTaken(0x608C0000));
    time.pass(400ns);
    EXPECT_TRUE(isTaken(0x608C0000));
    EXPECT_THAT(frames, ElementsAre(isFrame(false, 1, 2, 0x2000), isFrame(false, 1, 3, 0xA231)));
}

TEST_F(MdioMasterTest, RefusesWhatIsNoFrameOfClause22) {
    for (const std::uint64_t word : {0x00000000U,     // no start
                                     0x20880000U,     // a clause 45 start
                                     0xE0880000U,     // start of ones
                                     0x40880000U,     // no opcode
                                     0x70880000U,     // both opcodes
                                     0x509001E1U,     // a write without turnaround
                                     0x509101E1U}) {  // one of the wrong kind
        EXPECT_FALSE(isTaken(word)) << std::hex << word;
    }
    EXPECT_THAT(frames, testing::IsEmpty());
    EXPECT_EQ(0U, read()) << "nothing keeps the master busy";
}

TEST_F(MdioMasterTest, RefusesOtherWidths) {
    for (const unsigned width : {1U, 2U, 8U, 16U}) {
        EXPECT_TRUE(master.write(0, width, 0x60880000)) << width;
        EXPECT_TRUE(master.read(0, width).refused) << width;
    }
    EXPECT_THAT(frames, testing::IsEmpty());
}

TEST_F(MdioMasterTest, FindsOnesWhereNoPhyIs) {
    EXPECT_TRUE(isTaken(0x60080000));
    time.pass(1ms);
    EXPECT_EQ(0xFFFFU, read());
    EXPECT_FALSE(frames[0].isAnswered);
}

TEST_F(MdioMasterTest, IsBusyForEverWhenItHangs) {
    master.hang(FaultSchedule(1));
    EXPECT_TRUE(isTaken(0x60880000));
    time.pass(1ms);
    EXPECT_EQ(0x2000U, read()) << "the first frame goes well";
    EXPECT_TRUE(isTaken(0x608C0000));
    time.pass(24h);
    EXPECT_EQ(0xC0000000U, read() & 0xFFFF0000);
    EXPECT_FALSE(isTaken(0x60880000));
}

TEST_F(MdioMasterTest, ASilentPhyIsNoneOnTheBusAndTakesNoWrite) {
    phy.beSilent(FaultSchedule(0, 2));
    EXPECT_EQ(0xFFFF, bus.read(1, 2));
    bus.write(1, 4, 0x0001);
    EXPECT_EQ(0x2000, bus.read(1, 2)) << "two frames only";
    EXPECT_EQ(0x01E1, bus.read(1, 4));
    EXPECT_FALSE(frames[0].isAnswered);
    EXPECT_FALSE(frames[1].isAnswered);
    EXPECT_TRUE(frames[2].isAnswered);
}

}  // namespace
