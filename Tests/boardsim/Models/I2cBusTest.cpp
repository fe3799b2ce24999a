#include "Tools/boardsim/Models/I2cBus.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <string>

namespace {

using boardsim::FaultSchedule;
using boardsim::I2cBus;
using boardsim::I2cDirection;
using boardsim::I2cEvent;
using boardsim::I2cFault;
using boardsim::I2cMessage;
using testing::ElementsAre;

constexpr auto kWrite = I2cDirection::Write;
constexpr auto kRead = I2cDirection::Read;
constexpr std::errc kGood{};
constexpr auto kNobody = std::errc::no_such_device_or_address;

/// Writes down what the bus does to it; gives 1, 2, 3…
class Witness : public boardsim::I2cTarget {
public:
    bool start(I2cDirection direction) override {
        told += direction == kWrite ? "W" : "R";
        return true;
    }
    bool take(std::uint8_t byte) override {
        told += " " + std::to_string(byte);
        return byte != 99;
    }
    std::uint8_t give() override {
        told += " ?";
        return ++given;
    }
    void stop() override { told += "."; }
    void losePower() override { told += "!"; }

    std::string told;
    std::uint8_t given = 0;
};

class I2cBusTest : public testing::Test {
protected:
    I2cBusTest() {
        bus.attach(0x48, chip);
        bus.attach(0x49, other);
    }

    std::errc transfer(std::vector<I2cMessage> wanted) {
        messages = std::move(wanted);
        return bus.transfer(messages);
    }
    std::errc poke() { return transfer({{0x48, kWrite, {7}}}); }

    I2cBus bus;
    Witness chip;
    Witness other;
    std::vector<I2cMessage> messages;
};

TEST_F(I2cBusTest, BytesGoToTheChipThatWasAddressed) {
    EXPECT_EQ(kGood, transfer({{0x49, kWrite, {1, 2}}}));
    EXPECT_EQ("W 1 2.", other.told);
    EXPECT_EQ("", chip.told);
}

TEST_F(I2cBusTest, ARepeatedStartTurnsTheDirectionWithoutAStop) {
    EXPECT_EQ(kGood, transfer({{0x48, kWrite, {5}}, {0x48, kRead, {0, 0}}}));
    EXPECT_EQ("W 5R ? ?.", chip.told);
    EXPECT_THAT(messages[1].bytes, ElementsAre(1, 2));
}

TEST_F(I2cBusTest, AContinuedMessageHasNoStartAndNoAddress) {
    EXPECT_EQ(kGood, transfer({{0x48, kWrite, {5}}, {0x48, kRead, {0, 0}, true}}));
    EXPECT_EQ("W 5 ? ?.", chip.told);
    EXPECT_THAT(messages[1].bytes, ElementsAre(1, 2));
}

TEST_F(I2cBusTest, NothingCanBeContinuedBeforeAStartOrWithAnotherChip) {
    EXPECT_EQ(std::errc::invalid_argument, transfer({{0x48, kRead, {0}, true}}));
    EXPECT_EQ(std::errc::invalid_argument, transfer({{0x48, kWrite, {5}}, {0x49, kRead, {0}, true}}));
    EXPECT_EQ("", other.told);
}

TEST_F(I2cBusTest, OneTransferMayAddressSeveralChips) {
    EXPECT_EQ(kGood, transfer({{0x48, kWrite, {5}}, {0x49, kRead, {0}}}));
    EXPECT_EQ("W 5.", chip.told);
    EXPECT_EQ("R ?.", other.told);
}

TEST_F(I2cBusTest, AMessageWithoutBytesAsksWhoIsThere) {
    EXPECT_EQ(kGood, transfer({{0x48, kWrite}}));
    EXPECT_EQ("W.", chip.told);
    EXPECT_EQ(kNobody, transfer({{0x50, kWrite}}));
}

TEST_F(I2cBusTest, AByteThatIsNotAcknowledgedEndsTheTransfer) {
    EXPECT_EQ(static_cast<std::errc>(EREMOTEIO), transfer({{0x48, kWrite, {1, 99, 2}}, {0x48, kRead, {0}}}));
    EXPECT_EQ("W 1 99.", chip.told);
}

TEST_F(I2cBusTest, ACountedMessageIsAsLongAsItsFirstByteSays) {
    chip.given = 2;
    I2cMessage message{0x48, kRead, {0}, false, true};
    EXPECT_EQ(kGood, transfer({message}));
    EXPECT_THAT(messages[0].bytes, ElementsAre(3, 4, 5, 6));
}

TEST_F(I2cBusTest, ACountThatIsNoneIsAProtocolError) {
    for (const std::uint8_t before : std::initializer_list<std::uint8_t>{0xFF, 32}) {
        chip.given = before;
        I2cMessage message{0x48, kRead, {0}, false, true};
        EXPECT_EQ(std::errc::protocol_error, transfer({message}));
    }
}

TEST_F(I2cBusTest, EveryTransferIsToldUpToItsFailure) {
    std::vector<std::pair<std::size_t, std::errc>> events;
    bus.listen([&](const I2cEvent& event) { events.emplace_back(event.messages.size(), event.error); });
    transfer({{0x48, kWrite, {5}}, {0x48, kRead, {0}}});
    transfer({{0x50, kWrite, {5}}, {0x48, kRead, {0}}});
    EXPECT_THAT(events, ElementsAre(std::pair(std::size_t{2}, kGood), std::pair(std::size_t{1}, kNobody)));
}

struct ErrorRow {
    const char* what;
    std::errc error;
};

TEST_F(I2cBusTest, AFaultEndsTheTransferBeforeTheChipNotices) {
    const ErrorRow rows[] = {
        {"nobody acknowledges", kNobody},
        {"the clock is held", std::errc::timed_out},
        {"another master won", std::errc::resource_unavailable_try_again},
    };
    for (const ErrorRow& row : rows) {
        bus.addFault(0x48, {FaultSchedule(0, 1), row.error});
        EXPECT_EQ(row.error, poke()) << row.what;
        EXPECT_EQ("", chip.told) << row.what;
    }
    EXPECT_EQ(kGood, poke());
}

TEST_F(I2cBusTest, AFaultHitsTheTransfersThatItsScheduleNames) {
    bus.addFault(0x48, {FaultSchedule(1, 2), std::errc::timed_out});
    EXPECT_EQ(kGood, transfer({{0x48, kWrite, {5}}, {0x48, kRead, {0}}}));
    EXPECT_EQ(std::errc::timed_out, poke());
    EXPECT_EQ(std::errc::timed_out, poke());
    EXPECT_EQ(kGood, poke());
}

TEST_F(I2cBusTest, AFaultOfAChipLeavesTheOthersAlone) {
    bus.addFault(0x49, {FaultSchedule(), kNobody});
    EXPECT_EQ(kGood, poke());
    EXPECT_EQ(kNobody, transfer({{0x48, kWrite, {1}}, {0x49, kWrite, {1}}}));
}

TEST_F(I2cBusTest, AFaultOfTheBusHitsEveryAddress) {
    bus.addFault(std::nullopt, {FaultSchedule(), std::errc::timed_out});
    EXPECT_EQ(std::errc::timed_out, poke());
    EXPECT_EQ(std::errc::timed_out, transfer({{0x50, kWrite}}));
}

TEST_F(I2cBusTest, AWrongValueIsReadInPlaceOfEveryByte) {
    bus.addFault(0x48, {FaultSchedule(0, 1), {}, 0xA5});
    EXPECT_EQ(kGood, transfer({{0x48, kWrite, {5}}, {0x48, kRead, {0, 0}}}));
    EXPECT_THAT(messages[1].bytes, ElementsAre(0xA5, 0xA5));
    EXPECT_EQ(kGood, transfer({{0x48, kRead, {0}}}));
    EXPECT_THAT(messages[0].bytes, ElementsAre(3));
}

TEST_F(I2cBusTest, AnEventHappensBeforeTheChipIsAddressed) {
    I2cFault fault{FaultSchedule(1, 1)};
    fault.event = [this] { chip.losePower(); };
    bus.addFault(0x48, fault);
    poke();
    poke();
    poke();
    EXPECT_EQ("W 7.!W 7.W 7.", chip.told);
}

}  // namespace
