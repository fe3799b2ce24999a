#include "Tools/boardsim/Board/Json/BoardJson.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Support/RandomBoard.h"

namespace {

using boardsim::BoardDescription;
using boardsim::readBoard;
using boardsim::writeBoard;
using testing::HasSubstr;

std::string complaintAbout(const std::string& text) {
    try {
        readBoard(text, "b.json");
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

/// The description of the orca with one piece of its text replaced.
std::string orcaWith(const std::string& piece, const std::string& replacement) {
    std::string text = writeBoard(boardsim::orcaBoard());
    const std::size_t at = text.find(piece);
    EXPECT_NE(std::string::npos, at) << piece;
    return at == std::string::npos ? text : text.replace(at, piece.size(), replacement);
}

TEST(BoardJsonTest, TheBuiltInBoardsSurviveWritingAndReading) {
    for (const BoardDescription& board : boardsim::builtInBoards()) {
        EXPECT_EQ(board, readBoard(writeBoard(board), board.name)) << writeBoard(board);
    }
}

TEST(BoardJsonTest, ABoardMayConsistOfItsNameOnly) {
    BoardDescription bare;
    bare.name = "bare";
    EXPECT_EQ("{\n  \"name\": \"bare\"\n}\n", writeBoard(bare));
    EXPECT_EQ(bare, readBoard(R"({"name": "bare"})", ""));
}

TEST(BoardJsonTest, RandomBoardsSurviveWritingAndReading) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        const BoardDescription board = boards::randomBoard(seed);
        ASSERT_EQ(board, readBoard(writeBoard(board), board.name)) << writeBoard(board);
    }
}

TEST(BoardJsonTest, ABoardWithoutAnyOneDeviceIsStillABoard) {
    for (const BoardDescription& whole : boardsim::builtInBoards()) {
        for (const boards::Removal& removal : boards::removals(whole)) {
            EXPECT_NE(whole, removal.board) << removal.device;
            EXPECT_EQ(removal.board, readBoard(writeBoard(removal.board), removal.device));
        }
    }
}

TEST(BoardJsonTest, NumbersAreDecimalHexadecimalOrTextOfEither) {
    for (const char* bytes : {"65536", "\"65536\"", "\"0x10000\""}) {
        const std::string text =
            std::string(R"({"name": "b", "fpga": {"cores": [], "bytes": )") + bytes + "}}";
        EXPECT_EQ(65536U, readBoard(text, "").fpga->bytes) << bytes;
    }
}

struct ComplaintRow {
    const char* text;
    const char* complaint;
};

TEST(BoardJsonTest, WhatIsWrongIsToldWithFileLineAndPath) {
    const ComplaintRow rows[] = {
        {"", "b.json:1: syntax error"},
        {"{\n\n\"name\": oops}", "b.json:3: syntax error"},
        {"[]", "b.json:1: want an object"},
        {"{}", "b.json:1: name: is missing"},
        {"{\"name\": 3}", "b.json:1: name: want a text of 1 to 64 bytes"},
        {"{\"name\": \"../x\"}", "b.json:1: name: want what can be the name of a file"},
        {"{\"name\": \"b\",\n\"colour\": \"red\"}", "b.json:2: colour: there is no such field"},
        {"{\"name\": \"b\",\n\"name\": \"c\"}", "b.json:2: 'name' comes twice"},
        {"{\"name\": \"b\", \"fpga\": null}", "b.json:1: fpga: want an object"},
        {"{\"name\": \"b\", \"mac_core\": \"m\"}", "mac_core: fpga.cores has no 'm' with an address"},
        {"{\"name\": \"b\",\n\"i2c\": {\"buses\": [{\"number\": 1}],\n\"devices\": [{\"bus\": 1,\n"
         "\"address\": \"0x80\",\n\"chip\": \"expander\"}]}}",
         "b.json:4: i2c.devices[0].address: want a number from 0x3 to 0x77"},
        {"{\"name\": \"b\",\n\"i2c\": {\"buses\": [],\n\"devices\": [{\"bus\": 1, \"address\": 4,\n"
         "\"chip\": \"expander\"}]}}",
         "b.json:3: i2c.devices[0].bus: there is no such bus"},
        {"{\"name\": \"b\", \"w1_buses\": [{\"sensors\": [{\"serial\": 1, \"user_data\": 0, "
         "\"celsius\": 0.1}]}]}",
         "w1_buses[0].sensors[0].celsius: want sixteenths from -55.0 to 125.0"},
    };
    for (const ComplaintRow& row : rows) {
        EXPECT_THAT(complaintAbout(row.text), HasSubstr(row.complaint)) << row.text;
    }
}

struct EditRow {
    const char* piece;
    const char* replacement;
    const char* complaint;
};

TEST(BoardJsonTest, PartsThatDoNotFitTogetherAreRefused) {
    const EditRow rows[] = {
        {"\"0x00002003\"", "\"0x00000fc3\"", "mac_core: the registers of 'subsys_hps_eth_mac' are on top of"},
        {"\"0x00002003\"", "\"0x0000fd03\"", "mac_core: the registers of 'subsys_hps_eth_mac' are beyond"},
        {"\"number\": 1,", "\"number\": 0,", "i2c.buses[1].number: another bus has it"},
        {"\"name\": \"psu\"", "\"name\": \"fan\"", "i2c.devices[3].name: a bus or another device has it"},
        {"\"address\": \"0x48\"", "\"address\": \"0x2a\"",
         "i2c.devices[1].address: another device of the bus has it"},
        {"\"chip\": \"temperature-sensor\"", "\"chip\": \"expander\"",
         "i2c.devices[1].celsius: only a temperature-sensor has it"},
        {"\"chip\": \"eeprom\"", "\"chip\": \"power-supply\"",
         "i2c.devices[2].identity: only an eeprom without contents has it"},
        {"\"base\": 496", "\"base\": 495", "gpio_chips[1]: it has lines of another one"},
        {"\"interface\": \"eth1\"", "\"interface\": \"eth0\"", "mii_ports[1].interface: another one has it"},
        {"\"offset\": 18", "\"offset\": 120", "records[1].data: the record reaches beyond"},
        {"\"1.0\"", "\"1\"", "panel.screen.device: want bus and chip select"},
        {"\"02:00:5e:10:20:30\"", "\"02-00-5e-10-20-30\"", "macs[0]: want a MAC address"},
        {"\"01a\"", "\"1a\"", "pcb.revision: want three characters"},
        {"\"dp83867\"", "\"dp\"", "mdio.phys[0].model: want one of dp83867, 88e1510"},
        {"\"interface\": \"eth1\"", "\"interface\": \"inbd\"",
         "mii_ports[1].interface: another interface has it"},
        {"\"interface\": \"eth1\"", "\"interface\": \"lo\"",
         "mii_ports[1].interface: another interface has it"},
        {"\"frame_rate\": 25", "\"frame_rate\": 24", "sync.settings.frame_rate: want a number from 25 to 30"},
        {"\"frame_rate\": 25", "\"frame_rate\": 29", "sync.settings.frame_rate: want 25 or 30"},
        {"\"frames\": 0", "\"frames\": 25", "sync.settings.time_code.frames: the frame rate has no such"},
        {"\"seconds\": 36000", "\"seconds\": 86400", "time_code.seconds: want a number from 0 to 86399"},
        {"\"is_master\": true", "\"is_master\": 1", "sync.settings.is_master: want true or false"},
        {"\"0x001a2b3c00042a\"", "\"0x1001a2b3c00042a\"",
         "sync.settings.id: want a number from 0x0 to 0xffffff"},
        {"\"0x00000500\"", "\"0x00000501\"", "misc.others: the low byte is the temperature"},
        {"\"0x00000c02\"", "\"0x00000401\"", "on top of others"},
        {"\"lanes\": 8", "\"lanes\": 1025", "pattern.lanes: want a number from 0 to 1024"},
    };
    for (const EditRow& row : rows) {
        EXPECT_THAT(complaintAbout(orcaWith(row.piece, row.replacement)), HasSubstr(row.complaint));
    }
}

TEST(BoardJsonTest, LevelsWithoutEndAreRefused) {
    EXPECT_THAT(complaintAbout(std::string(100000, '[')), HasSubstr("b.json:1: too many levels"));
}

TEST(BoardJsonTest, AFileThatCannotBeReadIsToldByItsName) {
    try {
        boardsim::readBoardFile("/nowhere/b.json");
        ADD_FAILURE();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ("/nowhere/b.json: No such file or directory", error.what());
    }
}

}  // namespace
