#include "Vl/Common/Log/LogImpl.h"

#include <gmock/gmock.h>

#include <cstdarg>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"
#include "Vl/Common/Log/BufBase.h"

namespace {

using support::LogLine;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::Log::LogImpl;
using Valen::Log::vlLog;
using Valen::Log::SeverityLevel::SeverityLevel_T;

constexpr int kLocal0 = 16;
constexpr int kLocal1 = 17;
constexpr int kLocal2 = 18;

constexpr auto kOled = static_cast<Enums::OriginKey::Type>(61);

class LogImplTest : public testing::Test {
protected:
    ~LogImplTest() override { vlLog.reset(); }

    /// A log object that has written its opening line.
    LogImpl& openedLog() {
        auto log = std::make_unique<LogImpl>();
        log->LogInit();
        syslog.lines();
        LogImpl& reference = *log;
        vlLog = std::move(log);
        return reference;
    }

    support::PrivateWorld world;
    support::SyslogReceiver syslog;
};

TEST_F(LogImplTest, BannersMarkStartAndShutdown) {
    LogImpl log;
    EXPECT_TRUE(log.LogInit());
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{kLocal1, 6, "Logging: ******* Logging started *******"}));
    EXPECT_TRUE(log.LogUnInit());
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{kLocal1, 6, "Logging: ******* Logging shutdown ******"}));
}

TEST_F(LogImplTest, DestructionLogsTheShutdownBanner) {
    openedLog();
    vlLog.reset();
    EXPECT_THAT(syslog.texts(), ElementsAre("Logging: ******* Logging shutdown ******"));
}

TEST_F(LogImplTest, DestructionOfAClosedLogWritesNothing) {
    openedLog().LogUnInit();
    syslog.texts();
    vlLog.reset();
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

TEST_F(LogImplTest, NothingIsWrittenBeforeInitAndAfterUnInit) {
    LogImpl log;
    log.Log(kOled, static_cast<SeverityLevel_T>(3), "early");
    EXPECT_THAT(syslog.texts(), IsEmpty());
    log.LogInit();
    log.LogUnInit();
    syslog.texts();
    log.Log(kOled, static_cast<SeverityLevel_T>(3), "late");
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

struct Route {
    int severity;
    int facility;
    int level;
};

class LogImplRouteTest : public LogImplTest, public testing::WithParamInterface<Route> {};

TEST_P(LogImplRouteTest, SeverityChoosesFacilityAndLevel) {
    LogImpl& log = openedLog();
    const Route route = GetParam();
    log.Log(kOled, static_cast<SeverityLevel_T>(route.severity), "%d apples", 3);
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{route.facility, route.level, "OLED: 3 apples"}));
}

INSTANTIATE_TEST_SUITE_P(Table, LogImplRouteTest,
                         testing::Values(Route{0, kLocal1, 3}, Route{1, kLocal1, 3}, Route{2, kLocal1, 3},
                                         Route{3, kLocal1, 3}, Route{4, kLocal1, 4}, Route{5, kLocal1, 4},
                                         Route{6, kLocal1, 6}, Route{7, kLocal0, 6}, Route{8, kLocal2, 6},
                                         Route{9, kLocal2, 6}, Route{10, kLocal2, 6}, Route{11, kLocal2, 6},
                                         Route{12, kLocal2, 6}, Route{13, kLocal2, 6}),
                         [](const auto& route) { return "Severity" + std::to_string(route.param.severity); });

TEST_F(LogImplTest, RamFileMessagesReachNothingOnPurpose) {
    LogImpl& log = openedLog();
    log.Log(kOled, static_cast<SeverityLevel_T>(14), "dropped");
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

TEST_F(LogImplTest, UnknownSeveritiesReachNothing) {
    LogImpl& log = openedLog();
    for (const int severity : {15, 99, -1}) {
        log.Log(kOled, static_cast<SeverityLevel_T>(severity), "dropped");
    }
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

TEST_F(LogImplTest, MessagesAreCutAt599Characters) {
    LogImpl& log = openedLog();
    log.Log(kOled, static_cast<SeverityLevel_T>(7), "%s", std::string(6000, 'x').c_str());
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: " + std::string(599, 'x')));
}

TEST_F(LogImplTest, MessagesLongerThanAnyBufferAreCutForEveryFacility) {
    LogImpl& log = openedLog();
    for (const std::size_t length : {598U, 599U, 600U, 4999U, 5000U, 5001U, 100000U}) {
        const std::string text(length, 'x');
        const std::string expected = "OLED: " + text.substr(0, 599);
        for (const int severity : {6, 7, 8}) {
            log.Log(kOled, static_cast<SeverityLevel_T>(severity), "%s", text.c_str());
        }
        log.internalLog(kOled, static_cast<SeverityLevel_T>(6), text.c_str());
        EXPECT_THAT(syslog.texts(), ElementsAre(expected, expected, expected, expected)) << length;
    }
}

TEST_F(LogImplTest, AFullBufferIsWrittenWithAllItsCharacters) {
    LogImpl& log = openedLog();
    Valen::Log::BufBase buffer;
    buffer.put(buffer.begin(), std::string(600, 'x').c_str());
    log.Log(kOled, static_cast<SeverityLevel_T>(7), buffer);
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: " + std::string(511, 'x')));
}

TEST_F(LogImplTest, ASecondInitReplacesTheWriterAndSaysSoAgain) {
    LogImpl& log = openedLog();
    EXPECT_TRUE(log.LogInit());
    log.Log(kOled, static_cast<SeverityLevel_T>(7), "once");
    EXPECT_THAT(syslog.texts(), ElementsAre("Logging: ******* Logging started *******", "OLED: once"));
}

TEST_F(LogImplTest, TheThresholdIsTestedByCallSitesOnly) {
    LogImpl& log = openedLog();
    log.setGlobalComponentSeverity(static_cast<SeverityLevel_T>(0));
    log.Log(kOled, static_cast<SeverityLevel_T>(13), "written all the same");
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: written all the same"));
}

/// Hears of every message that is formatted.
class ListeningLog : public LogImpl {
public:
    void LogWithList(Enums::OriginKey::Type key, SeverityLevel_T severity, const char* format,
                     va_list arguments) override {
        formats.emplace_back(format);
        LogImpl::LogWithList(key, severity, format, arguments);
    }

    std::vector<std::string> formats;
};

TEST_F(LogImplTest, FormattedMessagesAndStreamsPassThroughLogWithList) {
    ListeningLog log;
    log.LogInit();
    syslog.texts();
    log.formats.clear();
    log.Log(kOled, static_cast<SeverityLevel_T>(7), "%d", 1);
    std::stringstream stream("two");
    log.Log(kOled, static_cast<SeverityLevel_T>(7), stream);
    EXPECT_THAT(log.formats, ElementsAre("%d", "%s"));
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: 1", "OLED: two"));
}

TEST_F(LogImplTest, PercentSignsInAFinishedTextAreText) {
    LogImpl& log = openedLog();
    log.internalLog(kOled, static_cast<SeverityLevel_T>(3), "100 %s");
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: 100 %s"));
}

TEST_F(LogImplTest, ABufferIsWrittenAsItsText) {
    LogImpl& log = openedLog();
    Valen::Log::BufBase buffer;
    buffer.put(buffer.put(buffer.begin(), "two "), "pieces");
    log.Log(kOled, static_cast<SeverityLevel_T>(4), buffer);
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{kLocal1, 4, "OLED: two pieces"}));
}

TEST_F(LogImplTest, AStreamIsWrittenLineByLineFromItsBeginning) {
    LogImpl& log = openedLog();
    std::stringstream stream("one\n\ntwo");
    std::string consumed;
    std::getline(stream, consumed);
    log.Log(kOled, static_cast<SeverityLevel_T>(7), stream);
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: one", "OLED: ", "OLED: two"));
}

TEST_F(LogImplTest, AnEmptyStreamWritesNothing) {
    LogImpl& log = openedLog();
    std::stringstream stream;
    log.Log(kOled, static_cast<SeverityLevel_T>(7), stream);
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

TEST_F(LogImplTest, AnUnknownComponentIsLoggedAsUnknown) {
    LogImpl& log = openedLog();
    log.Log(static_cast<Enums::OriginKey::Type>(126), static_cast<SeverityLevel_T>(3), "hm");
    EXPECT_THAT(syslog.texts(), ElementsAre("unknown: hm"));
}

TEST_F(LogImplTest, CallSitesTestTheThresholdBeforeTheyEvaluateArguments) {
    openedLog();
    int evaluated = 0;
    VL_LOG(OLED, DEBUG, "%d", ++evaluated);
    EXPECT_EQ(0, evaluated);
    VL_LOG(OLED, SERVICE, "%d", ++evaluated);
    EXPECT_EQ(1, evaluated);
    EXPECT_THAT(syslog.texts(), ElementsAre("OLED: 1"));
}

TEST_F(LogImplTest, WithoutALogObjectCallSitesEvaluateAndWriteNothing) {
    int evaluated = 0;
    VL_LOG(OLED, EMERGENCY, "%d", ++evaluated);
    EXPECT_EQ(0, evaluated);
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

}  // namespace
