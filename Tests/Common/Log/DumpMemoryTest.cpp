#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "Tests/Common/Log/RecordingLog.h"

namespace {

using support::Message;
using support::RecordingLog;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::Log::vlLog;
using Key = RecordingLog::Key;
using Severity = RecordingLog::Severity;

constexpr auto kOled = static_cast<Key>(61);
constexpr auto kService = static_cast<Severity>(7);

class DumpMemoryTest : public testing::Test {
protected:
    DumpMemoryTest() {
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        auto owned = std::make_unique<RecordingLog>();
        log = owned.get();
        vlLog = std::move(owned);
    }
    ~DumpMemoryTest() override { vlLog.reset(); }

    std::vector<std::string> dump(int length) {
        log->messages.clear();
        log->dumpMemory(kOled, kService, bytes.data(), length);
        std::vector<std::string> lines;
        for (const Message& message : log->messages) {
            lines.push_back(message.text);
        }
        return lines;
    }

    /// 00 01 02 ... FF 00 ...
    std::array<std::uint8_t, 4128> bytes{};
    RecordingLog* log = nullptr;
};

constexpr const char* kFirstLine =
    "[000]: 03020100 07060504 0B0A0908 0F0E0D0C 13121110 17161514 1B1A1918 1F1E1D1C";

TEST_F(DumpMemoryTest, FortyBytesAreALineOfEightWordsAndALineOfTwo) {
    EXPECT_THAT(dump(40), ElementsAre(kFirstLine, "[020]: 23222120 27262524"));
}

TEST_F(DumpMemoryTest, ThirtyTwoBytesAreOneLineOfEightWords) {
    EXPECT_THAT(dump(32), ElementsAre(kFirstLine));
}

TEST_F(DumpMemoryTest, FiveBytesAreOneLineOfTwoWordsOfWhichTheLastIsReadWhole) {
    EXPECT_THAT(dump(5), ElementsAre("[000]: 03020100 07060504"));
}

TEST_F(DumpMemoryTest, TheLastLineHoldsOneByteAtLeastAndThirtyTwoAtMost) {
    EXPECT_THAT(dump(1), ElementsAre("[000]: 03020100"));
    EXPECT_THAT(dump(4), ElementsAre("[000]: 03020100"));
    EXPECT_THAT(dump(33), ElementsAre(kFirstLine, "[020]: 23222120"));
    const char* const second =
        "[020]: 23222120 27262524 2B2A2928 2F2E2D2C 33323130 37363534 3B3A3938 3F3E3D3C";
    EXPECT_THAT(dump(61), ElementsAre(kFirstLine, second));
    EXPECT_THAT(dump(64), ElementsAre(kFirstLine, second));
}

TEST_F(DumpMemoryTest, OffsetsBeyondThreeDigitsGrow) {
    const auto lines = dump(4100);
    ASSERT_EQ(129U, lines.size());
    EXPECT_EQ("[FE0]: E3E2E1E0", lines[127].substr(0, 15));
    EXPECT_EQ("[1000]: 03020100", lines[128]);
}

TEST_F(DumpMemoryTest, NothingIsLoggedOfNothing) {
    EXPECT_THAT(dump(0), IsEmpty());
    EXPECT_THAT(dump(-1), IsEmpty());
    EXPECT_THAT(dump(-2147483647 - 1), IsEmpty());
}

TEST_F(DumpMemoryTest, AnyAddressWillDo) {
    log->dumpMemory(kOled, kService, bytes.data() + 1, 4);
    EXPECT_THAT(log->messages, ElementsAre(Message{61, 7, "[000]: 04030201"}));
}

TEST_F(DumpMemoryTest, WhatIsNotWantedIsNeitherLoggedNorRead) {
    log->dumpMemory(kOled, static_cast<Severity>(8), nullptr, 1000);
    EXPECT_THAT(log->messages, IsEmpty());
    log->SetComponentSeverity(kOled, static_cast<Severity>(8));
    log->dumpMemory(kOled, static_cast<Severity>(8), bytes.data(), 4);
    EXPECT_THAT(log->messages, ElementsAre(Message{61, 8, "[000]: 03020100"}));
}

TEST_F(DumpMemoryTest, AKeyAboveTheTableAdmitsNegativeSeveritiesOnlyOnPurpose) {
    for (const int key : {125, 200}) {
        log->messages.clear();
        log->dumpMemory(static_cast<Key>(key), static_cast<Severity>(0), bytes.data(), 4);
        EXPECT_THAT(log->messages, IsEmpty());
        log->dumpMemory(static_cast<Key>(key), static_cast<Severity>(-1), bytes.data(), 36);
        EXPECT_EQ(2U, log->messages.size());
    }
}

TEST_F(DumpMemoryTest, WithoutALogObjectItStopsAtOnce) {
    const RecordingLog other;
    vlLog.reset();
    other.dumpMemory(kOled, kService, nullptr, 1000);
    EXPECT_THAT(other.messages, IsEmpty());
}

/// Steps down as the log object of the process with its first message.
class OneMessageLog : public RecordingLog {
public:
    void LogWithList(Key key, Severity severity, const char* format, va_list arguments) override {
        RecordingLog::LogWithList(key, severity, format, arguments);
        static_cast<void>(vlLog.release());
    }
};

TEST_F(DumpMemoryTest, ItStopsEarlyWhenTheLogObjectIsGone) {
    OneMessageLog lastingLog;
    vlLog.reset(&lastingLog);
    lastingLog.dumpMemory(kOled, kService, bytes.data(), 4128);
    EXPECT_THAT(lastingLog.messages, ElementsAre(Message{61, 7, kFirstLine}));
}

TEST_F(DumpMemoryTest, TheLogObjectOfTheProcessReceivesTheLinesOnPurpose) {
    const RecordingLog other(static_cast<Severity>(0));  // nor does its threshold count
    other.dumpMemory(kOled, kService, bytes.data(), 4);
    EXPECT_THAT(other.messages, IsEmpty());
    EXPECT_THAT(log->messages, ElementsAre(Message{61, 7, "[000]: 03020100"}));
}

}  // namespace
