#include "Tools/boardsim/Models/SpiMaster.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Models/ModelTime.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr std::uint32_t kRxData = 0x00, kTxData = 0x04, kStatus = 0x08, kControl = 0x0C, kSlaveSelect = 0x14;
constexpr std::uint64_t kOverrun = 0x08, kOverflow = 0x10, kIdle = 0x20, kReady = 0x40, kReceived = 0x80,
                        kError = 0x100;

class SpiMasterTest : public testing::Test {
protected:
    SpiMasterTest() {
        for (const unsigned line : {0U, 5U}) {
            spi.attach(line, [this, line](std::uint32_t word) {
                words[line].push_back(word);
                return word + line + 1;
            });
        }
    }

    std::uint64_t read(std::uint32_t offset) { return spi.read(offset, 4).value; }
    bool isTaken(std::uint32_t offset, std::uint64_t value) { return !spi.write(offset, 4, value); }

    models::ModelTime time;
    boardsim::SpiMaster spi{time.clock()};
    std::array<std::vector<std::uint32_t>, 6> words;
};

TEST_F(SpiMasterTest, IsReadyAfterReset) {
    EXPECT_EQ(kIdle | kReady, read(kStatus));
    EXPECT_EQ(0U, read(kControl));
    EXPECT_EQ(1U, read(kSlaveSelect));
    EXPECT_EQ(0U, read(kRxData));
}

TEST_F(SpiMasterTest, TheSelectedSlaveGetsTheWordAndAnswers) {
    EXPECT_TRUE(isTaken(kSlaveSelect, 1U << 5));
    EXPECT_TRUE(isTaken(kTxData, 0x1234));
    EXPECT_EQ(kReady, read(kStatus)) << "the shifter has taken it at once";
    time.pass(3200ns);
    EXPECT_EQ(kIdle | kReady | kReceived, read(kStatus));
    EXPECT_EQ(0x123AU, read(kRxData));
    EXPECT_EQ(kIdle | kReady, read(kStatus)) << "reading takes the word";
    EXPECT_THAT(words[0], IsEmpty());
    EXPECT_THAT(words[5], ElementsAre(0x1234));
}

TEST_F(SpiMasterTest, OneWordWaitsForTheShifter) {
    EXPECT_TRUE(isTaken(kTxData, 1));
    EXPECT_TRUE(isTaken(kTxData, 2));
    EXPECT_EQ(0U, read(kStatus));
    time.pass(3200ns);
    EXPECT_EQ(kReady | kReceived, read(kStatus));
    EXPECT_EQ(2U, read(kRxData));
    time.pass(3200ns);
    EXPECT_EQ(kIdle | kReady | kReceived, read(kStatus));
    EXPECT_THAT(words[0], ElementsAre(1, 2));
}

TEST_F(SpiMasterTest, AWordTooManyIsRefusedAndLost) {
    EXPECT_TRUE(isTaken(kTxData, 1));
    EXPECT_TRUE(isTaken(kTxData, 2));
    EXPECT_FALSE(isTaken(kTxData, 3));
    EXPECT_EQ(kOverflow | kError, read(kStatus));
    EXPECT_TRUE(isTaken(kStatus, 0));
    EXPECT_EQ(0U, read(kStatus)) << "a write clears the error";
    time.pass(1s);
    read(kStatus);
    EXPECT_THAT(words[0], ElementsAre(1, 2));
}

TEST_F(SpiMasterTest, AReceivedWordThatNobodyTookStaysAndTheNextIsLost) {
    isTaken(kTxData, 10);
    isTaken(kTxData, 20);
    time.pass(1s);
    EXPECT_EQ(kOverrun | kIdle | kReady | kReceived | kError, read(kStatus));
    EXPECT_EQ(11U, read(kRxData));
}

TEST_F(SpiMasterTest, WithoutASlaveTheLineIsHigh) {
    isTaken(kSlaveSelect, 0);
    isTaken(kTxData, 1);
    time.pass(1s);
    EXPECT_EQ(0xFFFFFFFFU, read(kRxData));
}

TEST_F(SpiMasterTest, ControlHoldsInterruptsAndSlaveSelectOverride) {
    EXPECT_TRUE(isTaken(kControl, 0xFFFFFFFF));
    EXPECT_EQ(0x7D8U, read(kControl));
    EXPECT_TRUE(isTaken(kControl, 0x400));
    EXPECT_EQ(0x400U, read(kControl));
}

TEST_F(SpiMasterTest, RefusesWhatIsNoRegister) {
    EXPECT_FALSE(isTaken(kRxData, 0));
    EXPECT_FALSE(isTaken(0x10, 0));
    EXPECT_FALSE(isTaken(0x1C, 0));
    EXPECT_TRUE(spi.read(kTxData, 4).refused);
    EXPECT_TRUE(spi.read(kStatus, 2).refused);
    EXPECT_TRUE(spi.read(kStatus + 1, 4).refused);
    EXPECT_TRUE(spi.write(kTxData, 8, 0));
    EXPECT_THAT(words[0], IsEmpty());
}

}  // namespace
