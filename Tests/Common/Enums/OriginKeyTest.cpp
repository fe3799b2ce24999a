#include "Vl/Common/Enums/OriginKey.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace {

namespace OriginKey = Enums::OriginKey;

const std::map<int, std::string> kTexts = {{0, "Firmware"},
                                           {1, "DeviceDaemon"},
                                           {2, "Cardcontroller"},
                                           {3, "Core"},
                                           {4, "StatePersistency"},
                                           {5, "DataModel"},
                                           {6, "VLBusMaster"},
                                           {7, "ObserverListBasis"},
                                           {8, "Notify"},
                                           {9, "DeprecatedSwitchAccess"},
                                           {10, "SwitchSend"},
                                           {11, "Servicehandling"},
                                           {12, "RoutingFramework"},
                                           {13, "Replication"},
                                           {14, "AlarmEvent"},
                                           {15, "ConsistencyCheck"},
                                           {16, "UpdateHelper"},
                                           {17, "FPGAupdateHelper"},
                                           {18, "MCFWupdateHelper"},
                                           {19, "MSGQMaster"},
                                           {20, "MCsimulator"},
                                           {21, "Logging"},
                                           {22, "NetworkService"},
                                           {23, "DeprecatedReconnection"},
                                           {24, "FPGAController"},
                                           {25, "MultFPGAupdateHelper"},
                                           {26, "MultMCFWupdateHelper"},
                                           {27, "SNMP"},
                                           {28, "CPCardInterface"},
                                           {29, "DebugThread"},
                                           {30, "PTCardcontroller"},
                                           {31, "PTUtils"},
                                           {32, "PTCardTest"},
                                           {33, "PTLog"},
                                           {34, "Thread"},
                                           {35, "PTminiDM"},
                                           {36, "Allocation"},
                                           {37, "VersionChecker"},
                                           {38, "Updater"},
                                           {39, "Unpacker"},
                                           {40, "BusyStates"},
                                           {42, "CommunicationInterface"},
                                           {43, "ComponentStarter"},
                                           {44, "DrawGraph"},
                                           {45, "InterSwitchCommunication"},
                                           {46, "TimeSync"},
                                           {47, "TestScriptEngine"},
                                           {50, "CompInfoService"},
                                           {51, "PBExecutor"},
                                           {52, "Rerouter"},
                                           {53, "TestpatternControl"},
                                           {57, "VLProto"},
                                           {58, "UnitTest"},
                                           {59, "CompactLTHelper"},
                                           {60, "FanControl"},
                                           {61, "OLED"},
                                           {62, "TSL"},
                                           {63, "SimHelper"},
                                           {64, "QuarionComm"},
                                           {65, "LaneTarget"},
                                           {66, "MicInput"},
                                           {67, "Connection"},
                                           {68, "OneWire"},
                                           {69, "OldPortsEBTabEnable"},
                                           {70, "Watchdog"},
                                           {71, "FrameDiscovery"},
                                           {72, "FirmwareLevelLinks"},
                                           {73, "PTPCPeriph"},
                                           {74, "Scheduler"},
                                           {75, "AllocReqRecv"},
                                           {76, "ProbelServer"},
                                           {77, "MasterElection"},
                                           {78, "Allocator"},
                                           {79, "EmberProvider"},
                                           {80, "ConfigMaster"},
                                           {81, "IdMapping"},
                                           {82, "EmberProxy"},
                                           {83, "FrameReachability"},
                                           {84, "Instrumentation"},
                                           {85, "AllocReqSend"},
                                           {86, "TemperatureMonitor"},
                                           {87, "OGP"},
                                           {88, "UserRights"},
                                           {89, "NetConfigId"},
                                           {90, "Diagnostics"},
                                           {91, "NetParameter"},
                                           {92, "HWDefinition"},
                                           {93, "Trunks"},
                                           {94, "MicLevels"},
                                           {95, "SettingsReplicator"},
                                           {96, "Settings"},
                                           {97, "ThirdParty"},
                                           {98, "ParameterDatabase"},
                                           {99, "TransceiverReconf"},
                                           {100, "ExceptionAssert"},
                                           {102, "ChangeService"},
                                           {103, "Multiviewer"},
                                           {104, "TimeSettings"},
                                           {105, "Ntp"},
                                           {106, "MultiviewerConfigs"},
                                           {107, "UftpControl"},
                                           {108, "MultiviewerImages"},
                                           {109, "LinkErrorMonitor"},
                                           {111, "MacAddressMonitor"},
                                           {112, "Butler"},
                                           {113, "PTP"},
                                           {114, "IPAddressControl"},
                                           {115, "Snapshots"},
                                           {116, "RumbaProto"},
                                           {117, "UDPSocketReliable"},
                                           {118, "LLDP"},
                                           {119, "LinkUp"},
                                           {120, "DolbyE"},
                                           {121, "IPAudio"},
                                           {122, "IPVideo"},
                                           {123, "IPCore"},
                                           {124, "Aes67"},
                                           {125, "numberOfEntries"}};

OriginKey::Type key(int number) {
    return static_cast<OriginKey::Type>(number);
}

TEST(OriginKeyTest, TextsLeadToValuesAndBack) {
    for (const auto& [number, text] : kTexts) {
        EXPECT_EQ(text, OriginKey::GetText(key(number)));
        EXPECT_EQ(number, OriginKey::GetType(text.c_str()));
    }
}

TEST(OriginKeyTest, NumbersWithoutATextReadUnknown) {
    for (int number = -3; number < 300; ++number) {
        if (!kTexts.contains(number)) {
            EXPECT_STREQ("unknown", OriginKey::GetText(key(number))) << number;
        }
    }
}

TEST(OriginKeyTest, NumberBehindTheLastReadsUnknown) {
    EXPECT_STREQ("numberOfEntries", OriginKey::GetText(key(125)));
    EXPECT_STREQ("unknown", OriginKey::GetText(key(126)));
}

TEST(OriginKeyTest, Number48IsAGapThatReadsUnknownAndIsNotValid) {
    EXPECT_STREQ("unknown", OriginKey::GetText(key(48)));
    EXPECT_FALSE(OriginKey::IsValidNum(48));
}

TEST(OriginKeyTest, TextsThatAreNoComponentGiveMinusOne) {
    for (const char* text : {"", "oled", "OLED ", "unknown", "Firmwar"}) {
        EXPECT_EQ(-1, OriginKey::GetType(text)) << text;
    }
}

TEST(OriginKeyTest, GapsAndNumbersOutsideAreNotValid) {
    const std::set<int> gaps = {41, 48, 49, 54, 55, 56};
    for (int number = 0; number <= 125; ++number) {
        EXPECT_EQ(!gaps.contains(number), OriginKey::IsValidNum(number)) << number;
    }
    EXPECT_FALSE(OriginKey::IsValidNum(-1));
    EXPECT_FALSE(OriginKey::IsValidNum(126));
    EXPECT_FALSE(OriginKey::IsValidNum(1L << 40));
}

TEST(OriginKeyTest, TwoNumbersAreValidWithoutATextOnPurpose) {
    for (const int number : {101, 110}) {
        EXPECT_TRUE(OriginKey::IsValidNum(number)) << number;
        EXPECT_STREQ("unknown", OriginKey::GetText(key(number))) << number;
    }
}

TEST(OriginKeyTest, SizeIs120OnPurpose) {
    EXPECT_EQ(120, OriginKey::Size());
}

}  // namespace
