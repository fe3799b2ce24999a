#include "Tools/boardsim/Board/StatusRegisters.h"

#include <gmock/gmock.h>

#include <map>
#include <stdexcept>

namespace {

using boardsim::BoardDescription;
using boardsim::BoardPart;
using boardsim::BoardParts;
using boardsim::ModelTime;
using boardsim::parseFault;
using boardsim::StatusRegisters;
using testing::HasSubstr;
using namespace std::chrono_literals;

BoardDescription someBoard() {
    BoardDescription board;
    board.name = "some";
    board.fpga = {0x1000,
                  {{"cardid", 1, {0x100}},
                   {"sync", 1, {0x203}},
                   {"misc", 1, {0x300}},
                   {"hot", 1, {0x340}},
                   {"nowhere", 1, {}}},
                  {0x80000102, 0x2F460003, 0x80000001}};
    board.sync = {"sync", {}};
    board.sync->settings.timeCode = {59, 24, {}};
    board.misc = {"misc", 32, 0x500};
    board.temperatures = {{"hot", 61}};
    return board;
}

std::map<std::uint32_t, std::uint32_t> powerOn(const StatusRegisters& status) {
    std::map<std::uint32_t, std::uint32_t> words;
    for (const boardsim::RegisterWord& word : status.powerOn()) {
        words[word.offset] = word.value;
    }
    return words;
}

class StatusRegistersTest : public testing::Test {
protected:
    std::string complaint(const std::string& text) {
        try {
            status.apply(parseFault(text));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    const BoardDescription board = someBoard();
    StatusRegisters status{board, {}};
};

TEST_F(StatusRegistersTest, TheRegistersAreFilledBeforeTheProgramStarts) {
    const auto words = powerOn(status);
    EXPECT_EQ(0x80000102U, words.at(0x100));
    EXPECT_EQ(0x2F460003U, words.at(0x104));
    EXPECT_EQ(0x80000001U, words.at(0x108));
    EXPECT_EQ(0x04000000U, words.at(0x20C));
    EXPECT_EQ(0x05090204U, words.at(0x238));
    EXPECT_EQ(0x000005A0U, words.at(0x300));
    EXPECT_EQ(0x00003D00U, words.at(0x340));
}

TEST_F(StatusRegistersTest, TheTimeCodeRunsInTheBoardsMemory) {
    alignas(8) std::array<std::uint32_t, 0x400> memory{};
    EXPECT_FALSE(status.nextFrame());
    status.attach(memory, ModelTime{});
    EXPECT_EQ(ModelTime{} + 40ms, status.nextFrame());
    status.runUntil(ModelTime{} + 2s);
    EXPECT_EQ(50U, memory[0x234 / 4]);
    EXPECT_EQ(0x00020000U, memory[0x238 / 4]);
}

TEST_F(StatusRegistersTest, ABoardMayLackAll) {
    BoardDescription bare;
    bare.fpga = {0x1000, {}, {}};
    StatusRegisters none(bare, {});
    EXPECT_TRUE(none.powerOn().empty());
    std::array<std::uint32_t, 0x400> memory{};
    none.attach(memory, ModelTime{});
    EXPECT_FALSE(none.nextFrame());
    none.runUntil(ModelTime{} + 1s);
}

TEST_F(StatusRegistersTest, TheSyncBlockMayBeMissing) {
    BoardParts missing;
    missing.add(BoardPart::Sync);
    const StatusRegisters without(board, missing);
    EXPECT_EQ(0U, powerOn(without).count(0x204));
    EXPECT_EQ(1U, powerOn(without).count(0x300));
}

TEST_F(StatusRegistersTest, CoresWithoutAnAddressHaveNoRegisters) {
    BoardDescription other = board;
    other.misc->core = "nowhere";
    other.temperatures[0].core = "elsewhere";
    other.sync->core = "nowhere";
    EXPECT_EQ(3U, StatusRegisters(other, {}).powerOn().size()) << "the card ID only";
}

TEST_F(StatusRegistersTest, ACardIdBeyondTheFpgaIsNotThere) {
    BoardDescription other = board;
    other.fpga->cores[0].addresses = {0xFFFFFFC0};
    EXPECT_EQ(0U, powerOn(StatusRegisters(other, {})).count(0xFFFFFFC0));
}

TEST_F(StatusRegistersTest, FaultsChangeTemperatures) {
    EXPECT_TRUE(status.apply(parseFault("temp:hot:value=95")));
    EXPECT_TRUE(status.apply(parseFault("temp:misc:raw=0xdeadbeef")));
    EXPECT_EQ(0x5F00U, powerOn(status).at(0x340));
    EXPECT_EQ(0xDEADBEEFU, powerOn(status).at(0x300));
}

TEST_F(StatusRegistersTest, ASyncBlockMayStand) {
    EXPECT_TRUE(status.apply(parseFault("sync:sync:stopped")));
    alignas(8) std::array<std::uint32_t, 0x400> memory{};
    status.attach(memory, ModelTime{});
    EXPECT_FALSE(status.nextFrame());
    EXPECT_EQ(0x04000000U, powerOn(status).at(0x20C));
}

TEST_F(StatusRegistersTest, ASyncBlockMayTellNonsense) {
    EXPECT_TRUE(status.apply(parseFault("sync:sync:nonsense")));
    for (std::uint32_t offset = 0x200; offset < 0x240; offset += 4) {
        EXPECT_EQ(0xFFFFFFFFU, powerOn(status).at(offset));
    }
    EXPECT_FALSE(status.nextFrame());
}

TEST_F(StatusRegistersTest, OtherKindsOfFaultsAreForOthers) {
    EXPECT_FALSE(status.apply(parseFault("i2c:fan:nack")));
}

TEST_F(StatusRegistersTest, FaultsThatNoRegisterCanHaveAreRefused) {
    EXPECT_THAT(complaint("temp:cold:value=1"), HasSubstr("no temperature register 'cold'"));
    EXPECT_THAT(complaint("temp:misc:value=128"), HasSubstr("from 0 to 127"));
    EXPECT_THAT(complaint("temp:misc:on-fire"), HasSubstr("there are value, raw"));
    EXPECT_THAT(complaint("sync:misc:stopped"), HasSubstr("no sync block 'misc'"));
    EXPECT_THAT(complaint("sync:sync:melted"), HasSubstr("there are stopped, nonsense"));
}

}  // namespace
