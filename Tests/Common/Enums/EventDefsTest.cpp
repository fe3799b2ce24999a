#include "Vl/Common/Enums/EventDefs.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {{0, "Card changed / Wrong Core Version! Loading new Core..."},
                                           {1, "Card removed from Slot!"},
                                           {2, "(New) Card found in Slot!"},
                                           {4, "No Core found for Card in Slot!"},
                                           {5, "Card in Slot is not supported by this Firmware Version!"},
                                           {11, "Temperature is too high!"},
                                           {12, "Temperature is getting too high!"},
                                           {13, "Fan Speed is too low!"},
                                           {14, "Fan Speed is getting too low!"},
                                           {20, "Version Checker Failed!"},
                                           {21, "No Compatibility Information found!"},
                                           {24, "Update completed successfully!"},
                                           {26, "A Connection was interrupted"},
                                           {27, "Fan Control did not work!"},
                                           {28, "Card activated!"},
                                           {30, "Voltage failure!"},
                                           {31, "A Connection was created!"},
                                           {32, "A Connection was deleted!"},
                                           {33, "The routing of a connection failed!"},
                                           {34, "Invalid/Missing Input Signal!"},
                                           {36, "An update is required!"},
                                           {37, "Card initialization failed!"},
                                           {38, "Unsupported SFP Bandwidth!"},
                                           {39, "Card is in the wrong Slot!"},
                                           {40, "Temperature sensor failed!"},
                                           {41, "Power Supply Unit failed!"},
                                           {43, "Update failed!"},
                                           {45, "Update Progress"},
                                           {46, "Fiber Length exceeds SFP specification!"},
                                           {48, "CPLD has wrong version"},
                                           {52, "SFP Receive Power is too low!"},
                                           {53, "SFP Receive Power is too high!"},
                                           {54, "Highspeed Link is not up!"},
                                           {56, "Failed to read SFP ID data!"},
                                           {57, "Fiber link unstable!"},
                                           {60, "Firmware could not read Serial Number from backplane!"},
                                           {62, "A Connection was rerouted!"},
                                           {63, "A link was added"},
                                           {64, "A link was removed"},
                                           {67, "Failed to remove connection!"},
                                           {68, "External Sync failed while this frame was SyncMaster!"},
                                           {69, "Unrecoverable NAND flash error!"},
                                           {71, "MADI Input is asynchronous!"},
                                           {72, "Cantor setting / Sample Rate mismatch!"},
                                           {73, "Highspeed link errors detected!"},
                                           {74, "MADI Input 4B5B violation!"},
                                           {75, "CPLD was not reloaded since update"},
                                           {76, "Hardware failure!"},
                                           {77, "Communication to Quarion failed!"},
                                           {78, "Quarion <-> Valen Sample Rate mismatch"},
                                           {81, "Camera/Base station interface PAL/NTSC missmatch!"},
                                           {82, "Duplicate NodeID received, shutting down communication!"},
                                           {83, "Duplicate NodeID received!"},
                                           {84, "3rd Party master/slave tables are different!"},
                                           {85, "Frame or Card Type does not match HW Definition!"},
                                           {86, "Line Length Error!"},
                                           {87, "Field Length Error!"},
                                           {88, "Unsupported SFP!"},
                                           {89, "Fan Direction mismatch!"},
                                           {90, "Too many frames in P2P Net!"},
                                           {91, "Trunks in P2P Net!"},
                                           {92, "Non-P2P frames in P2P Net!"}};

const char* textOf(int number) {
    return GetText(static_cast<Enums::EventDefs::EventDef_T>(number));
}

TEST(EventDefsTest, MessagesLeadToValuesAndBack) {
    expectExactly(ENUMERATION(EventDefs), kTexts);
}

TEST(EventDefsTest, AnyOtherNumberIsWrittenInDecimal) {
    for (int number = -1000; number < 1000; ++number) {
        if (!kTexts.contains(number)) {
            EXPECT_EQ(std::to_string(number), textOf(number));
        }
    }
    EXPECT_STREQ("-2147483648", textOf(INT_MIN));
    EXPECT_STREQ("2147483647", textOf(INT_MAX));
}

TEST(EventDefsTest, TheNextNumberOverwritesTheTextOnPurpose) {
    const char* const first = textOf(93);
    EXPECT_STREQ("93", first);
    EXPECT_EQ(first, textOf(-7));
    EXPECT_STREQ("-7", first);
}

TEST(EventDefsTest, MessagesLeaveTheTextOfANumberAlone) {
    const char* const number = textOf(3);
    EXPECT_STREQ("Card removed from Slot!", textOf(1));
    EXPECT_STREQ("3", number);
}

TEST(EventDefsTest, CameraMismatchIsMisspeltOnPurpose) {
    EXPECT_STREQ("Camera/Base station interface PAL/NTSC missmatch!", textOf(81));
}

TEST(EventDefsTest, ANumberIsNoMessage) {
    EXPECT_EQ(-1, Enums::EventDefs::GetType("3"));
}

TEST(EventDefsTest, SizeIsOnePastTheLastMessage) {
    EXPECT_EQ(93, Enums::EventDefs::Size());
}

}  // namespace
