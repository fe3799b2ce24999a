#include <chrono>
#include <memory>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/SimulatedTime.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"

namespace {

using namespace std::chrono_literals;
using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::CPInterface;
using Valen::HAL::GenericEthernetPhy;

constexpr unsigned kCtrl = 0x1000;
constexpr unsigned kBase = 0x2000;

/// A PHY that notes what had happened when it was started.
class NotingPhy : public GenericEthernetPhy {
public:
    NotingPhy(const support::RecordedRegisters& registers, const SimulatedTime& time)
        : registers_(registers), time_(time) {}

    bool initUserEth() override {
        ++starts;
        accessesBefore = registers_.accesses().size();
        timeBefore = time_.elapsed;
        return result;
    }

    bool result = true;
    int starts = 0;
    std::size_t accessesBefore = 0;
    std::chrono::nanoseconds timeBefore{0};

private:
    const support::RecordedRegisters& registers_;
    const SimulatedTime& time_;
};

class UserEthernetTest : public BoardWorld {
protected:
    UserEthernetTest() {
        syslog.lines();  // what the bare board misses
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
        registers.onWrite(kBase + 8, [this](std::uint64_t value) {
            if (value == 0x2000 && resetEnds) {
                registers.set32(kBase + 8, 0);
            }
        });
    }

    static std::vector<support::LogLine> lines(const std::vector<std::string>& texts) {
        std::vector<support::LogLine> expected;
        for (const std::string& text : texts) {
            expected.push_back(debug("CPCardInterface: " + text));
        }
        return expected;
    }

    const std::string start = "ethernet core set up at 00001000 / 00002000";
    bool resetEnds = true;
    support::DeviceRegisterWindow registers;
    TestBoard board;
    SimulatedTime time;
    std::shared_ptr<NotingPhy> noting = std::make_shared<NotingPhy>(registers, time);
    std::shared_ptr<GenericEthernetPhy> phy = noting;
};

TEST_F(UserEthernetTest, ThePhyComesOutOfResetFirstAndTheMacIsSetUpAfterIt) {
    EXPECT_TRUE(board.initUserEth(kCtrl, kBase, true, phy, false));
    EXPECT_EQ(1, noting->starts);
    EXPECT_EQ(1U, noting->accessesBefore);
    EXPECT_EQ(100ms, noting->timeBefore);
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Write32(kCtrl, 3), Write32(kBase + 8, 0x2000), Read32(kBase + 8, 0),
                            Write32(kBase + 12, 0x17231C20), Write32(kBase + 16, 0x0001CB4A),
                            Write32(kBase + 20, 9100), Write32(kBase + 92, 11), Write32(kBase + 24, 25),
                            Write32(kBase + 8, 0x01800093)));
    EXPECT_EQ(lines({start}), syslog.lines());
}

TEST_F(UserEthernetTest, NormalFramesAndTheExtraWordAreHandedOn) {
    EXPECT_TRUE(board.initUserEth(kCtrl, kBase, false, phy, true));
    EXPECT_EQ(18U, registers.accesses().size());
    EXPECT_EQ(1600U, registers.get32(kBase + 20));
    EXPECT_THAT(registers.accesses().back(), Write32(kBase + 592, 3));
}

TEST_F(UserEthernetTest, APhyThatDoesNotStartEndsIt) {
    noting->result = false;
    EXPECT_FALSE(board.initUserEth(kCtrl, kBase, true, phy, false));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kCtrl, 3)));
    EXPECT_EQ(lines({start, "could not init ethernet phy"}), syslog.lines());
}

TEST_F(UserEthernetTest, AMissingPhyDoesNotStart) {
    phy.reset();
    EXPECT_FALSE(board.initUserEth(kCtrl, kBase, true, phy, false));
    EXPECT_EQ(lines({start, "could not init ethernet phy"}), syslog.lines());
}

TEST_F(UserEthernetTest, AMacThatDoesNotComeOutOfResetEndsIt) {
    resetEnds = false;
    EXPECT_FALSE(board.initUserEth(kCtrl, kBase, true, phy, false));
    EXPECT_EQ(0U, registers.get32(kBase + 12));
    EXPECT_EQ(106ms, time.elapsed);
    EXPECT_EQ(lines({start, "tseMacReset: Timeout"}), syslog.lines());
}

TEST_F(UserEthernetTest, OffsetsAreLoggedWithAtLeastEightDigits) {
    noting->result = false;
    EXPECT_FALSE(board.initUserEth(0x123456789A, 0xF, true, phy, false));
    EXPECT_EQ(lines({"ethernet core set up at 123456789A / 0000000F", "could not init ethernet phy"}),
              syslog.lines());
}

TEST_F(UserEthernetTest, ThePhyIsStartedAlsoWhereThePortHasNoRegisters) {
    EXPECT_FALSE(board.initUserEth(0x10000, 0x10000, true, phy, false));
    EXPECT_EQ(1, noting->starts);
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(UserEthernetTest, SettingTheSpeedDoesNothing) {
    board.setUserEthMACSpeed(kBase, CPInterface::EthSpeed::Mbit1000);
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

}  // namespace
