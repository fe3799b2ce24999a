#include "Vl/Common/Log/LogInterface.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <sstream>
#include <thread>
#include <vector>

#include "Tests/Common/Log/RecordingLog.h"
#include "Vl/Common/Log/LogImpl.h"

namespace {

using Key = Enums::OriginKey::Type;
using Severity = Valen::Log::SeverityLevel_T;
using Valen::Log::LogImpl;

constexpr Key key(int number) {
    return static_cast<Key>(number);
}
constexpr Severity severity(int number) {
    return static_cast<Severity>(number);
}

int thresholdOf(const LogImpl& log, int component) {
    int threshold = -1;
    while (threshold < 14 &&
           log.ComponentSeverityMoreDetailedOrEqualTo(key(component), severity(threshold + 1))) {
        ++threshold;
    }
    return threshold;
}

TEST(LogInterfaceTest, EveryThresholdStartsAtService) {
    const LogImpl log;
    for (int component = 0; component <= 124; ++component) {
        EXPECT_EQ(7, thresholdOf(log, component)) << component;
    }
}

TEST(LogInterfaceTest, TheFirstThresholdsCanBeGiven) {
    EXPECT_EQ(0, thresholdOf(LogImpl(severity(0)), 61));
    EXPECT_EQ(14, thresholdOf(LogImpl(severity(14)), 124));
    EXPECT_EQ(7, thresholdOf(LogImpl(severity(15)), 61)) << "a level that does not exist is ignored";
}

TEST(LogInterfaceTest, AllThresholdsCanBeSetAtOnce) {
    LogImpl log;
    log.setGlobalComponentSeverity(severity(10));
    EXPECT_EQ(10, thresholdOf(log, 0));
    EXPECT_EQ(10, thresholdOf(log, 124));
    log.setGlobalComponentSeverity(severity(15));
    EXPECT_EQ(10, thresholdOf(log, 0));
}

TEST(LogInterfaceTest, OneThresholdCanBeSet) {
    LogImpl log;
    EXPECT_TRUE(log.SetComponentSeverity(key(5), severity(9)));
    EXPECT_EQ(9, thresholdOf(log, 5));
    EXPECT_EQ(7, thresholdOf(log, 4));
    EXPECT_EQ(7, thresholdOf(log, 6));
}

TEST(LogInterfaceTest, KeysAndLevelsThatDoNotExistChangeNothing) {
    LogImpl log;
    EXPECT_FALSE(log.SetComponentSeverity(key(125), severity(3)));
    EXPECT_FALSE(log.SetComponentSeverity(key(-1), severity(3)));
    EXPECT_FALSE(log.SetComponentSeverity(key(5), severity(15)));
    EXPECT_EQ(7, thresholdOf(log, 5));
}

TEST(LogInterfaceTest, AKeyBeyondTheTableWantsNothing) {
    const LogImpl log;
    EXPECT_FALSE(log.ComponentSeverityMoreDetailedOrEqualTo(key(200), severity(0)));
    EXPECT_FALSE(log.ComponentSeverityMoreDetailedOrEqualTo(key(125), severity(0)));
    EXPECT_TRUE(log.ComponentSeverityMoreDetailedOrEqualTo(key(200), severity(-1)));
}

TEST(LogInterfaceTest, NegativeLevelsWantNothingButTheirLike) {
    LogImpl log;
    EXPECT_TRUE(log.SetComponentSeverity(key(5), severity(-1)));
    EXPECT_FALSE(log.ComponentSeverityMoreDetailedOrEqualTo(key(5), severity(0)));
    EXPECT_TRUE(log.ComponentSeverityMoreDetailedOrEqualTo(key(5), severity(-1)));
    log.setGlobalComponentSeverity(severity(-2));
    EXPECT_FALSE(log.ComponentSeverityMoreDetailedOrEqualTo(key(61), severity(-1)));
}

TEST(LogInterfaceTest, ItHoldsAVirtualTableAnd125ThresholdsOf32Bits) {
    constexpr std::size_t kPadding = 4;
    EXPECT_EQ(sizeof(void*) + 125 * sizeof(std::int32_t) + kPadding, sizeof(Valen::Log::LogInterface));
}

TEST(LogInterfaceTest, WhoAsksWhileAThresholdChangesGetsTheOldOrTheNew) {
    LogImpl log;
    log.SetComponentSeverity(key(61), severity(3));
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        for (int round = 0; round < 20000; ++round) {
            log.SetComponentSeverity(key(61), severity(round % 2 == 0 ? 9 : 3));
        }
        isDone = true;
    });
    int surprises = 0;
    do {
        surprises += log.ComponentSeverityMoreDetailedOrEqualTo(key(61), severity(3)) ? 0 : 1;
        surprises += log.ComponentSeverityMoreDetailedOrEqualTo(key(61), severity(10)) ? 1 : 0;
    } while (!isDone);
    writer.join();
    EXPECT_EQ(0, surprises);
}

TEST(LogInterfaceTest, AStreamIsPassedOnLineByLine) {
    support::RecordingLog log;
    std::stringstream text("100 %s\n\nlast");
    log.Log(key(61), severity(99), text);
    const std::vector<support::Message> expected = {{61, 99, "100 %s"}, {61, 99, ""}, {61, 99, "last"}};
    EXPECT_EQ(expected, log.messages) << "with neither threshold nor severity tested again";
}

TEST(LogInterfaceTest, AStreamIsReadAgainAfterItsEnd) {
    support::RecordingLog log;
    std::stringstream text("a\nb\n");
    log.Log(key(61), severity(3), text);
    log.Log(key(61), severity(3), text);
    const std::vector<support::Message> expected = {{61, 3, "a"}, {61, 3, "b"}, {61, 3, "a"}, {61, 3, "b"}};
    EXPECT_EQ(expected, log.messages);
}

}  // namespace
