#include "Vl/Common/Enums/ErrorId.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {{0, "none"},
                                           {1, "UpdateRequired"},
                                           {2, "InitFailed"},
                                           {3, "HWFailure"},
                                           {4, "TemperatureHigh"},
                                           {5, "TemperatureSensor"},
                                           {6, "FanSpeed"},
                                           {7, "FanControl"},
                                           {8, "FanDirection"},
                                           {9, "PSU"},
                                           {10, "Voltage"},
                                           {11, "CardCommunication"},
                                           {12, "QuarionCommunication"},
                                           {13, "WrongSlotType"},
                                           {14, "SyncIn"},
                                           {15, "HWDefMismatch"},
                                           {16, "SampleRateMsimatch"},
                                           {17, "InvalidInputSignal"},
                                           {18, "CameraPalNtscMismatch"},
                                           {19, "UnsupportedSFP"},
                                           {20, "WrongSFPBandwidth"},
                                           {21, "FiberLength"},
                                           {22, "SFPRXLow"},
                                           {23, "SFPRXHigh"},
                                           {24, "LinkUnstable"},
                                           {25, "TooManyFrames"},
                                           {26, "TrunksInP2P"},
                                           {27, "P2PFrameType"},
                                           {28, "MADIasync"},
                                           {29, "SFPIdRead"},
                                           {31, "PtpOffsetWarning"},
                                           {32, "PtpOffsetError"},
                                           {33, "TXBandwidthTooHigh"},
                                           {34, "MediaPortSubnetMismatch"},
                                           {101, "SL_DuplicateNodeId"},
                                           {102, "SL_CardCommunication"},
                                           {103, "SL_MADI4B5B"},
                                           {104, "SL_VideoLineLength"},
                                           {105, "SL_VideoFieldLength"},
                                           {106, "SL_DuplicateIPConfig"},
                                           {107, "SL_NmosConnect"},
                                           {200, "CO_Interrupted"}};

TEST(ErrorIdTest, TextsLeadToValuesAndBack) {
    for (const auto& [number, text] : kTexts) {
        EXPECT_EQ(text, GetText(static_cast<Enums::ErrorId::Type>(number)));
        EXPECT_EQ(number, Enums::ErrorId::GetType(text.c_str()));
    }
}

TEST(ErrorIdTest, NumbersWithoutATextReadUnknown) {
    expectOthersUnknown(ENUMERATION(ErrorId), kTexts);
}

TEST(ErrorIdTest, ThreeBandsAreValid) {
    for (long number = -1000; number < kBeyondAll; ++number) {
        const bool inBand =
            (number >= 0 && number <= 34) || (number >= 101 && number <= 107) || number == 200;
        EXPECT_EQ(inBand, Enums::ErrorId::IsValidNum(number)) << number;
    }
    for (const long number : kStrangeNumbers) {
        EXPECT_FALSE(Enums::ErrorId::IsValidNum(number)) << number;
    }
}

TEST(ErrorIdTest, Number30IsValidWithoutATextOnPurpose) {
    EXPECT_TRUE(Enums::ErrorId::IsValidNum(30));
    EXPECT_STREQ("unknown", GetText(static_cast<Enums::ErrorId::Type>(30)));
}

TEST(ErrorIdTest, SampleRateMismatchIsMisspeltOnPurpose) {
    EXPECT_EQ(16, Enums::ErrorId::GetType("SampleRateMsimatch"));
    EXPECT_EQ(-1, Enums::ErrorId::GetType("SampleRateMismatch"));
}

TEST(ErrorIdTest, SizeIsTheLengthOfItsTable) {
    EXPECT_EQ(201, Enums::ErrorId::Size());
}

}  // namespace
