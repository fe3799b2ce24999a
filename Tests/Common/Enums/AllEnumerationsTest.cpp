// What all enumerations have in common, over one table of them all.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"
#include "Vl/Common/Enums/Aes67PacketTime.h"
#include "Vl/Common/Enums/Aes67PayloadFormat.h"
#include "Vl/Common/Enums/AlarmGroup.h"
#include "Vl/Common/Enums/AlarmPriority.h"
#include "Vl/Common/Enums/AlinkLinkStatus.h"
#include "Vl/Common/Enums/AlinkRedundancyMode.h"
#include "Vl/Common/Enums/CaptionDisplayPosition.h"
#include "Vl/Common/Enums/CaptionMode.h"
#include "Vl/Common/Enums/CardType.h"
#include "Vl/Common/Enums/CdrSetting.h"
#include "Vl/Common/Enums/ChangeType.h"
#include "Vl/Common/Enums/ClosedCapEngMode.h"
#include "Vl/Common/Enums/ClosedCapStandard.h"
#include "Vl/Common/Enums/CompactLED.h"
#include "Vl/Common/Enums/ConnectionEntryType.h"
#include "Vl/Common/Enums/ConnectionFailureReason.h"
#include "Vl/Common/Enums/CounterSource.h"
#include "Vl/Common/Enums/DistProfileEvent.h"
#include "Vl/Common/Enums/DolbyECorrectionSetting.h"
#include "Vl/Common/Enums/DolbyECorrectionUnit.h"
#include "Vl/Common/Enums/EmbedderMode.h"
#include "Vl/Common/Enums/ErrorId.h"
#include "Vl/Common/Enums/EthernetLinkState.h"
#include "Vl/Common/Enums/EventDefs.h"
#include "Vl/Common/Enums/FSY_InputErrorReaction.h"
#include "Vl/Common/Enums/FrameState.h"
#include "Vl/Common/Enums/GVCameraSpeed.h"
#include "Vl/Common/Enums/GenlockMode.h"
#include "Vl/Common/Enums/IPConfig.h"
#include "Vl/Common/Enums/InstumentationStartMode.h"
#include "Vl/Common/Enums/IpBridgingMode.h"
#include "Vl/Common/Enums/IpInputMode.h"
#include "Vl/Common/Enums/IpSyncMode.h"
#include "Vl/Common/Enums/LED.h"
#include "Vl/Common/Enums/LoginResult.h"
#include "Vl/Common/Enums/MetronPart.h"
#include "Vl/Common/Enums/MultiviewerMode.h"
#include "Vl/Common/Enums/NmosChannelMode.h"
#include "Vl/Common/Enums/NmosRegistryMode.h"
#include "Vl/Common/Enums/OLEDMode.h"
#include "Vl/Common/Enums/OriginKey.h"
#include "Vl/Common/Enums/PRCCColorSpace.h"
#include "Vl/Common/Enums/PRCCMode.h"
#include "Vl/Common/Enums/ParameterID.h"
#include "Vl/Common/Enums/PlugType.h"
#include "Vl/Common/Enums/PreEmphasisMode.h"
#include "Vl/Common/Enums/PtpMode.h"
#include "Vl/Common/Enums/PtpProfile.h"
#include "Vl/Common/Enums/PtpRefClockType.h"
#include "Vl/Common/Enums/PtpState.h"
#include "Vl/Common/Enums/RequestResult.h"
#include "Vl/Common/Enums/ResetMode.h"
#include "Vl/Common/Enums/SFPReconfigMode.h"
#include "Vl/Common/Enums/SFPType.h"
#include "Vl/Common/Enums/SFPWawelengthMode.h"
#include "Vl/Common/Enums/SendInfo.h"
#include "Vl/Common/Enums/SendSyncPacketRetval.h"
#include "Vl/Common/Enums/SignalStatus.h"
#include "Vl/Common/Enums/SimulatedCardType.h"
#include "Vl/Common/Enums/SyncSource.h"
#include "Vl/Common/Enums/Sync_State.h"
#include "Vl/Common/Enums/SystemMode.h"
#include "Vl/Common/Enums/Temperature.h"
#include "Vl/Common/Enums/TestPatternFormat.h"
#include "Vl/Common/Enums/TestPatternResolution.h"
#include "Vl/Common/Enums/TestPatternSource.h"
#include "Vl/Common/Enums/ThirdPartyMasterMode.h"
#include "Vl/Common/Enums/ThirdPartyProtocol.h"
#include "Vl/Common/Enums/TimeCodeMode.h"
#include "Vl/Common/Enums/TimeCodeSource.h"
#include "Vl/Common/Enums/TimeSource.h"
#include "Vl/Common/Enums/TimerParam.h"
#include "Vl/Common/Enums/TrunkType.h"
#include "Vl/Common/Enums/TslMappingMode.h"
#include "Vl/Common/Enums/UhdMode.h"
#include "Vl/Common/Enums/UnpackResult.h"
#include "Vl/Common/Enums/UnpackerState.h"
#include "Vl/Common/Enums/UpdateComponent.h"
#include "Vl/Common/Enums/UpdatePackage.h"
#include "Vl/Common/Enums/UpdateRequiredReason.h"
#include "Vl/Common/Enums/UpdateStep.h"

namespace {

const std::array kAll = {
    ENUMERATION(Aes67PacketTime),
    ENUMERATION(Aes67PayloadFormat),
    ENUMERATION(AlarmGroup),
    ENUMERATION(AlarmPriority),
    ENUMERATION(AlinkLinkStatus),
    ENUMERATION(AlinkRedundancyMode),
    ENUMERATION(CaptionDisplayPosition),
    ENUMERATION(CaptionMode),
    ENUMERATION(CardType),
    ENUMERATION(CdrSetting),
    ENUMERATION(ChangeType),
    ENUMERATION(ClosedCapEngMode),
    ENUMERATION(ClosedCapStandard),
    ENUMERATION(CompactLED),
    ENUMERATION(ConnectionEntryType),
    ENUMERATION(ConnectionFailureReason),
    ENUMERATION(CounterSource),
    ENUMERATION(DistProfileEvent),
    ENUMERATION(DolbyECorrectionSetting),
    ENUMERATION(DolbyECorrectionUnit),
    ENUMERATION(EmbedderMode),
    ENUMERATION(ErrorId),
    ENUMERATION(EthernetLinkState),
    ENUMERATION(EventDefs),
    ENUMERATION(FSY_InputErrorReaction),
    ENUMERATION(FrameState),
    ENUMERATION(GVCameraSpeed),
    ENUMERATION(GenlockMode),
    ENUMERATION(IPConfig),
    ENUMERATION(InstumentationStartMode),
    ENUMERATION(IpBridgingMode),
    ENUMERATION(IpInputMode),
    ENUMERATION(IpSyncMode),
    ENUMERATION(LED),
    ENUMERATION(LoginResult),
    ENUMERATION(MetronPart),
    ENUMERATION(MultiviewerMode),
    ENUMERATION(NmosChannelMode),
    ENUMERATION(NmosRegistryMode),
    ENUMERATION(OLEDMode),
    ENUMERATION(OriginKey),
    ENUMERATION(PRCCColorSpace),
    ENUMERATION(PRCCMode),
    ENUMERATION(ParameterID),
    ENUMERATION(PlugType),
    ENUMERATION(PreEmphasisMode),
    ENUMERATION(PtpMode),
    ENUMERATION(PtpProfile),
    ENUMERATION(PtpRefClockType),
    ENUMERATION(PtpState),
    ENUMERATION(RequestResult),
    ENUMERATION(ResetMode),
    ENUMERATION(SFPReconfigMode),
    ENUMERATION(SFPType),
    ENUMERATION(SFPWawelengthMode),
    ENUMERATION(SendInfo),
    ENUMERATION(SendSyncPacketRetval),
    ENUMERATION(SignalStatus),
    ENUMERATION(SimulatedCardType),
    ENUMERATION(SyncSource),
    ENUMERATION(Sync_State),
    ENUMERATION(SystemMode),
    ENUMERATION(Temperature),
    ENUMERATION(TestPatternFormat),
    ENUMERATION(TestPatternResolution),
    ENUMERATION(TestPatternSource),
    ENUMERATION(ThirdPartyMasterMode),
    ENUMERATION(ThirdPartyProtocol),
    ENUMERATION(TimeCodeMode),
    ENUMERATION(TimeCodeSource),
    ENUMERATION(TimeSource),
    ENUMERATION(TimerParam),
    ENUMERATION(TrunkType),
    ENUMERATION(TslMappingMode),
    ENUMERATION(UhdMode),
    ENUMERATION(UnpackResult),
    ENUMERATION(UnpackerState),
    ENUMERATION(UpdateComponent),
    ENUMERATION(UpdatePackage),
    ENUMERATION(UpdateRequiredReason),
    ENUMERATION(UpdateStep),
};

/// Numbers that are valid without having a text.
const std::set<std::pair<std::string, int>> kWithoutText = {
    {"ErrorId", 30}, {"OriginKey", 101}, {"OriginKey", 110}};

/// What is not numbered 0, 1, 2 and so on up to its size.
const std::set<std::string> kSparse = {"AlarmGroup",  "AlarmPriority",   "CardType",
                                       "ErrorId",     "EventDefs",       "OriginKey",
                                       "ParameterID", "PtpRefClockType", "PtpState"};

/// What says something else than "unknown" of a number that is no value.
const std::set<std::string> kOwnWords = {"AlarmGroup", "AlarmPriority", "EventDefs"};

template <typename Check>
void forEveryNumber(Check check) {
    for (const Enumeration& enumeration : kAll) {
        SCOPED_TRACE(enumeration.name);
        for (int number = -10; number < kBeyondAll; ++number) {
            check(enumeration, number);
        }
    }
}

TEST(AllEnumerationsTest, EachStandsInTheTableOnce) {
    std::set<std::string> names;
    for (const Enumeration& enumeration : kAll) {
        EXPECT_TRUE(names.insert(enumeration.name).second) << enumeration.name;
    }
    EXPECT_EQ(81U, names.size());
}

TEST(AllEnumerationsTest, EveryValueHasATextThatLeadsBackToIt) {
    forEveryNumber([](const Enumeration& enumeration, int number) {
        if (enumeration.isValid(number) && !kWithoutText.contains({enumeration.name, number})) {
            const std::string text = enumeration.textOf(number);
            EXPECT_FALSE(text.empty()) << number;
            EXPECT_NE("unknown", text) << number;
            EXPECT_EQ(number, enumeration.typeOf(text.c_str())) << text;
        }
    });
}

TEST(AllEnumerationsTest, ANumberThatIsNoValueReadsUnknownUnlessTheEnumerationHasItsOwnWords) {
    forEveryNumber([](const Enumeration& enumeration, int number) {
        if (!enumeration.isValid(number) && !kOwnWords.contains(enumeration.name)) {
            EXPECT_STREQ("unknown", enumeration.textOf(number)) << number;
        }
    });
}

TEST(AllEnumerationsTest, WhatANumberThatIsNoValueReadsLeadsNowhere) {
    forEveryNumber([](const Enumeration& enumeration, int number) {
        if (!enumeration.isValid(number)) {
            EXPECT_EQ(-1, enumeration.typeOf(enumeration.textOf(number))) << number;
        }
    });
}

TEST(AllEnumerationsTest, NoTwoValuesShareAText) {
    for (const Enumeration& enumeration : kAll) {
        std::set<std::string> texts;
        for (int number = 0; number < kBeyondAll; ++number) {
            if (enumeration.isValid(number) && !kWithoutText.contains({enumeration.name, number})) {
                EXPECT_TRUE(texts.insert(enumeration.textOf(number)).second)
                    << enumeration.name << " " << number;
            }
        }
        EXPECT_GE(texts.size(), 3U) << enumeration.name;
    }
}

TEST(AllEnumerationsTest, MostCountFromZeroToTheirSizeWithoutAGap) {
    for (const Enumeration& enumeration : kAll) {
        if (kSparse.contains(enumeration.name)) {
            continue;
        }
        for (int number = -10; number < kBeyondAll; ++number) {
            EXPECT_EQ(number >= 0 && number < enumeration.size(), enumeration.isValid(number))
                << enumeration.name << " " << number;
        }
    }
}

TEST(AllEnumerationsTest, StrangeNumbersAreNotValidNotEvenByTheirLowerHalf) {
    for (const Enumeration& enumeration : kAll) {
        for (const long number : kStrangeNumbers) {
            EXPECT_FALSE(enumeration.isValid(number)) << enumeration.name << " " << number;
        }
    }
}

TEST(AllEnumerationsTest, WordsThatAreNoTextGiveMinusOne) {
    const std::string endless(100000, 'x');
    for (const Enumeration& enumeration : kAll) {
        for (const char* word : {"", " ", "?", "no such text", "unknown", "\xFF\xFE", endless.c_str()}) {
            EXPECT_EQ(-1, enumeration.typeOf(word)) << enumeration.name << " " << word;
        }
    }
}

TEST(AllEnumerationsTest, ATextMustMatchToTheLastLetter) {
    forEveryNumber([](const Enumeration& enumeration, int number) {
        if (enumeration.isValid(number) && !kWithoutText.contains({enumeration.name, number})) {
            const std::string text = enumeration.textOf(number);
            for (const std::string& near : {text + " ", " " + text, text + text, text + "\x80"}) {
                EXPECT_EQ(-1, enumeration.typeOf(near.c_str())) << near;
            }
        }
    });
}

TEST(AllEnumerationsTest, NoTextAtAllGivesMinusOne) {
    for (const Enumeration& enumeration : kAll) {
        EXPECT_EQ(-1, enumeration.typeOf(nullptr)) << enumeration.name;
    }
}

}  // namespace
