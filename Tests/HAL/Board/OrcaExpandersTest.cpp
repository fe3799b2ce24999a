#include "Tests/HAL/Board/VariantWorld.h"
#include "Vl/HAL/Board/OrcaInterface.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Valen::OrcaInterface;

class OrcaExpandersTest : public VariantWorld {
protected:
    static support::LogLine notice(const std::string& text) { return {kUserLog, 4, text}; }

    std::vector<std::string> linesOfConstruction() {
        const OrcaInterface board(nullptr);
        return syslog.texts();
    }
};

std::vector<std::string> qsfpSetUp(const std::string& bus) {
    std::vector<std::string> calls;
    for (const char* call :
         {"write8 21=f0", "write8 20=ff", "write8 0b=f0", "write8 0a=ff", "write8 01=f0", "write8 00=ff",
          "write8 1e=40", "write8 1f=40", "write8 11=00", "write8 0f=fe"}) {
        calls.push_back(bus + "-3e " + call);
    }
    return calls;
}

TEST_F(OrcaExpandersTest, ConstructionMakesTheseTransfersInThisOrder) {
    std::vector<std::string> expected;
    for (const std::string bus : {"3", "4", "5", "6"}) {
        expected.insert(expected.end(),
                        {"i2c-" + bus + " select 3e", bus + "-3e read16 10", bus + "-3e read16 0e"});
    }
    for (const std::string bus : {"3", "4", "5", "6"}) {
        const auto calls = qsfpSetUp(bus);
        expected.insert(expected.end(), calls.begin(), calls.end());
    }
    expected.insert(
        expected.end(),
        {"i2c-2 select 3f", "2-3f read16 10", "2-3f read16 0e", "2-3f write8 11=00", "2-3f write8 0f=00",
         "2-3f write8 14=80", "2-3f write8 20=77", "2-3f write8 1e=40", "2-3f write8 1f=40",
         "2-3f write8 00=77", "2-3f write8 0a=77", "i2c-2 select 21", "2-21 read16 10", "2-21 read16 0e",
         "2-21 write8 11=00", "2-21 write8 0f=00", "2-21 write8 0b=30"});
    const OrcaInterface board(nullptr);
    kernel.calls.erase(kernel.calls.begin(), kernel.calls.begin() + 3);  // the panel's line
    EXPECT_THAT(kernel.calls, ElementsAreArray(expected));
}

TEST_F(OrcaExpandersTest, OutputsAreSetUpOnTopOfWhatTheChipsHold) {
    kernel.chips[{2, 0x3F}][0x0F] = 0xFF;  // directions
    kernel.chips[{2, 0x3F}][0x11] = 0xFF;  // levels
    kernel.chips[{2, 0x21}][0x0F] = 0xFF;
    kernel.chips[{2, 0x21}][0x11] = 0xFF;
    const OrcaInterface board(nullptr);
    EXPECT_EQ(0xF8, (kernel.chips[{2, 0x3F}][0x0F]));
    EXPECT_EQ(0xF8, (kernel.chips[{2, 0x3F}][0x11]));
    EXPECT_EQ(0xCF, (kernel.chips[{2, 0x21}][0x0F]));
    EXPECT_EQ(0xCF, (kernel.chips[{2, 0x21}][0x11]));
}

TEST_F(OrcaExpandersTest, EverySettingOfEveryQsfpChipCounts) {
    for (const std::string bus : {"3", "4", "5", "6"}) {
        const auto calls = qsfpSetUp(bus);
        for (std::size_t index = 0; index < calls.size(); ++index) {
            kernel.failing = {calls[index]};
            const bool counts = index < 8;  // the directions do not
            EXPECT_THAT(linesOfConstruction(),
                        counts ? testing::ElementsAreArray({"Core: Failed to initialize QSFP GPIO"})
                               : testing::ElementsAreArray(std::vector<const char*>()))
                << calls[index];
        }
    }
}

TEST_F(OrcaExpandersTest, AQsfpChipThatFailsKeepsNoOtherFromBeingSetUp) {
    unlink("qsfp0_0");
    kernel.failing = {"4-3e", "i2c-5 select"};
    const OrcaInterface board(nullptr);
    EXPECT_THAT(kernel.callsOf("3-"), IsEmpty());
    EXPECT_EQ(12u, kernel.callsOf("6-3e").size());
    EXPECT_THAT(kernel.callsOf("5-3e write8 0f"), ElementsAre("5-3e write8 0f=fe"));
    EXPECT_THAT(syslog.lines(), ElementsAre(error("Core: Failed to initialize QSFP GPIO")));
}

TEST_F(OrcaExpandersTest, ASyncExpanderThatDoesNotAnswerAt3FIsTriedAt71) {
    kernel.failing = {"i2c-2 select 3f"};
    const OrcaInterface board(nullptr);
    EXPECT_THAT(kernel.callsOf("i2c-2"),
                ElementsAre("i2c-2 select 3f", "i2c-2 select 71", "i2c-2 select 21"));
    EXPECT_THAT(kernel.callsOf("2-71"),
                ElementsAre("2-71 read16 10", "2-71 read16 0e", "2-71 write8 11=00", "2-71 write8 0f=00",
                            "2-71 write8 14=80", "2-71 write8 20=77", "2-71 write8 1e=40",
                            "2-71 write8 1f=40", "2-71 write8 00=77", "2-71 write8 0a=77"));
    EXPECT_THAT(syslog.lines(), ElementsAre(notice("Core: Failed to initialize led_sync with default i2c "
                                                   "slave:63 trying slave: 113")));
}

TEST_F(OrcaExpandersTest, ASyncExpanderThatAnswersNowhereIsToldTwice) {
    kernel.failing = {"i2c-2 select 3f", "i2c-2 select 71", "2-71"};
    EXPECT_THAT(linesOfConstruction(),
                ElementsAre("Core: Failed to initialize led_sync with default i2c slave:63 trying slave: 113",
                            "Core: Failed to initialize led_sync ", "Core: Failed to initialize led_sync "));
}

TEST_F(OrcaExpandersTest, AnyFailureAtTheOtherAddressIsTold) {
    kernel.failing = {"i2c-2 select 3f", "2-71 read16 0e"};
    EXPECT_THAT(linesOfConstruction(),
                ElementsAre("Core: Failed to initialize led_sync with default i2c slave:63 trying slave: 113",
                            "Core: Failed to initialize led_sync "))
        << "what is written after it succeeds";
}

TEST_F(OrcaExpandersTest, ASyncExpanderElsewhereIsTriedNowhereElse) {
    link("led_sync", "/sys/bus/i2c/devices/2-0040");
    kernel.failing = {"i2c-2 select 40", "2-40"};
    EXPECT_THAT(linesOfConstruction(), ElementsAre("Core: Failed to initialize led_sync "));
    EXPECT_THAT(kernel.callsOf("i2c-2 select 71"), IsEmpty());
}

TEST_F(OrcaExpandersTest, ASyncExpanderThatCannotBeReadIsNotTriedElsewhere) {
    kernel.failing = {"2-3f read16"};
    EXPECT_THAT(linesOfConstruction(), IsEmpty()) << "what is written succeeds";
    EXPECT_THAT(kernel.callsOf("i2c-2 select 71"), IsEmpty());
}

TEST_F(OrcaExpandersTest, EverySettingOfTheSyncExpanderCounts) {
    for (const char* call : {"2-3f write8 11", "2-3f write8 0f", "2-3f write8 14", "2-3f write8 20",
                             "2-3f write8 1e", "2-3f write8 1f", "2-3f write8 00", "2-3f write8 0a"}) {
        kernel.failing = {call};
        EXPECT_THAT(linesOfConstruction(), ElementsAre("Core: Failed to initialize led_sync ")) << call;
    }
}

TEST_F(OrcaExpandersTest, EverySettingOfTheEthernetLedExpanderCounts) {
    for (const char* call : {"2-21 write8 11", "2-21 write8 0f", "2-21 write8 0b"}) {
        kernel.failing = {call};
        EXPECT_THAT(linesOfConstruction(), ElementsAre("Core: Failed to initialize eth_led ")) << call;
    }
    kernel.failing = {"2-21 read16"};
    EXPECT_THAT(linesOfConstruction(), IsEmpty());
}

TEST_F(OrcaExpandersTest, ExpandersThatAreNotRegisteredAreTold) {
    unlink("led_sync");
    unlink("eth_led");
    const OrcaInterface board(nullptr);
    EXPECT_THAT(syslog.lines(), ElementsAre(error("Core: Unable to find i2c device: led_sync"),
                                            error("Core: Failed to initialize led_sync "),
                                            error("Core: Unable to find i2c device: eth_led"),
                                            error("Core: Failed to initialize eth_led ")));
    EXPECT_THAT(kernel.callsOf("i2c-2"), IsEmpty());
}

TEST_F(OrcaExpandersTest, QsfpExpandersAreNumberedByCageAndIndex) {
    OrcaInterface board(nullptr);
    EXPECT_EQ("sx1509b: 3-62", board.getQsfpIo(0, 0)->dbg_print());
    EXPECT_EQ("sx1509b: 4-62", board.getQsfpIo(0, 1)->dbg_print());
    EXPECT_EQ("sx1509b: 5-62", board.getQsfpIo(1, 0)->dbg_print());
    EXPECT_EQ("sx1509b: 6-62", board.getQsfpIo(1, 1)->dbg_print());
    EXPECT_EQ(board.getQsfpIo(1, 1), board.getQsfpIo(0, 3)) << "nothing is checked: meant";
    EXPECT_EQ("sx1509b: 2-63", board.getSyncIo()->dbg_print());
}

TEST_F(OrcaExpandersTest, TheResetSignalsAreOnTheEthernetLedExpander) {
    OrcaInterface board(nullptr);
    kernel.calls.clear();
    kernel.chips[{2, 0x21}][0x11] = 0x08;
    EXPECT_EQ(Enums::ResetMode::Software, board.getResetIOs()->queryResetMode());
    EXPECT_THAT(kernel.calls, ElementsAre("2-21 read8 11"));
}

TEST_F(OrcaExpandersTest, TheSuppliesLedsArePinsA5AndA4) {
    OrcaInterface board(nullptr);
    kernel.calls.clear();
    EXPECT_TRUE(board.setPsuModuledLed(0, OrcaInterface::PinHigh));
    EXPECT_TRUE(board.setPsuModuledLed(1, OrcaInterface::PinHigh));
    EXPECT_TRUE(board.setPsuModuledLed(0, OrcaInterface::PinLow));
    EXPECT_THAT(kernel.calls, ElementsAre("2-21 write8 11=20", "2-21 write8 11=30", "2-21 write8 11=10"));
}

TEST_F(OrcaExpandersTest, EveryColourButZeroDrivesTheLedHigh) {
    OrcaInterface board(nullptr);
    for (const int colour : {2, 255, 256, -1}) {
        kernel.chips[{2, 0x21}][0x11] = 0;
        board.setPsuModuledLed(1, OrcaInterface::PinLow);
        EXPECT_TRUE(board.setPsuModuledLed(1, static_cast<OrcaInterface::PSULedColorType>(colour)));
        EXPECT_EQ(0x10, (kernel.chips[{2, 0x21}][0x11])) << colour;
    }
}

TEST_F(OrcaExpandersTest, ThereAreTwoSupplies) {
    OrcaInterface board(nullptr);
    kernel.calls.clear();
    for (const int module : {-1, 2, 100}) {
        EXPECT_FALSE(board.setPsuModuledLed(module, OrcaInterface::PinHigh)) << module;
    }
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(OrcaExpandersTest, ASupplysLedThatCannotBeWrittenFails) {
    OrcaInterface board(nullptr);
    kernel.failing = {"2-21 write8 11"};
    EXPECT_FALSE(board.setPsuModuledLed(0, OrcaInterface::PinHigh));
}

}  // namespace
