#include "Vl/Common/Log/Logging.h"

#include <gmock/gmock.h>

#include <cstdarg>
#include <string>
#include <type_traits>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"

namespace {

using Enums::Loglevel::LoglevelType;
using support::LogLine;
using testing::ElementsAre;
using Valen::Logging;

static_assert(std::is_empty_v<Logging>);

constexpr int kLocal0 = 16;
constexpr int kLocal1 = 17;
constexpr int kLocal2 = 18;

constexpr auto kOled = static_cast<Enums::OriginKey::Type>(61);

struct WriterRow {
    int loglevel;
    int syslogLevel;
};

/// The members that take a va_list, called as their callers do.
using ListWriter = void (*)(Enums::OriginKey::Type, LoglevelType, const char*, va_list);

void writeList(ListWriter writer, LoglevelType level, const char* format, ...) {
    va_list list;
    va_start(list, format);
    writer(kOled, level, format, list);
    va_end(list);
}

class LoggingTest : public testing::Test {
protected:
    support::PrivateWorld world;
    support::SyslogReceiver syslog;
};

class LoggingLevelTest : public LoggingTest, public testing::WithParamInterface<WriterRow> {};

TEST_P(LoggingLevelTest, EveryMemberWritesToItsFacilityAtTheLevelOfTheTable) {
    const auto level = static_cast<LoglevelType>(GetParam().loglevel);
    const int expected = GetParam().syslogLevel;
    Logging writer;
    writer.Log(kOled, level, "a%d", 1);
    Logging::StaticLog(kOled, level, "b%d", 2);
    writer.UserLog(kOled, level, "c%d", 3);
    Logging::StaticUserLog(kOled, level, "d%d", 4);
    writer.DebugLog(kOled, level, "e%d", 5);
    writeList(Logging::vStaticLog, level, "f%d", 6);
    writeList(Logging::vStaticUserLog, level, "g%d", 7);
    EXPECT_THAT(syslog.lines(),
                ElementsAre(LogLine{kLocal0, expected, "OLED: a1"}, LogLine{kLocal0, expected, "OLED: b2"},
                            LogLine{kLocal1, expected, "OLED: c3"}, LogLine{kLocal1, expected, "OLED: d4"},
                            LogLine{kLocal2, expected, "OLED: e5"}, LogLine{kLocal0, expected, "OLED: f6"},
                            LogLine{kLocal1, expected, "OLED: g7"}));
}

INSTANTIATE_TEST_SUITE_P(Table, LoggingLevelTest,
                         testing::Values(WriterRow{1, 3}, WriterRow{2, 4}, WriterRow{3, 6}, WriterRow{4, 7},
                                         WriterRow{0, 5}, WriterRow{5, 5}, WriterRow{-1, 5}));

TEST_F(LoggingTest, MessagesAreCutAt599Characters) {
    for (const std::size_t length : {598U, 599U, 600U, 100000U}) {
        const std::string text(length, 'x');
        Logging::StaticLog(kOled, static_cast<LoglevelType>(1), "%s", text.c_str());
        EXPECT_THAT(syslog.texts(), ElementsAre("OLED: " + text.substr(0, 599))) << length;
    }
}

TEST_F(LoggingTest, PercentSignsInAnArgumentAreText) {
    Logging::StaticUserLog(kOled, static_cast<LoglevelType>(1), "%s", "100 %s %n");
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: 100 %s %n"));
}

TEST_F(LoggingTest, AComponentWithoutATextIsUnknown) {
    for (const int key : {-1, 126, 2147483647}) {
        Logging::StaticLog(static_cast<Enums::OriginKey::Type>(key), static_cast<LoglevelType>(1), "hm");
        EXPECT_THAT(syslog.texts(), ElementsAre("unknown: hm")) << key;
    }
}

}  // namespace
