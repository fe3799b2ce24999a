#include "Vl/Common/Strings/TimeText.h"

#include <gmock/gmock.h>
#include <stdlib.h>

#include <array>
#include <climits>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

using testing::AnyOfArray;

/// The time zone of one test.
class TimeZone {
public:
    explicit TimeZone(const char* name) { setenv("TZ", name, 1); }
    ~TimeZone() { unsetenv("TZ"); }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
};

constexpr const char* kUtc = "UTC0";
constexpr const char* kCentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* kHalfHours = "IST-5:30";

/// What date(1) says.
std::string date(std::time_t time, const std::string& format) {
    const std::string command = "date -d @" + std::to_string(time) + " '+" + format + "'";
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), &pclose);
    std::array<char, 100> line{};
    EXPECT_NE(std::fgets(line.data(), line.size(), output.get()), nullptr) << command;
    const std::string text = line.data();
    return text.substr(0, text.find('\n'));
}

TEST(TimeTextTest, AKnownTimeInUtc) {
    const TimeZone zone(kUtc);
    EXPECT_EQ(Valen::TimeToString(1000000000), "09.09.2001 01:46:40");
    EXPECT_EQ(Valen::TimeToStringWithoutDate(1000000000), "01:46:40");
    EXPECT_EQ(Valen::TimeToString(0), "01.01.1970 00:00:00");
}

TEST(TimeTextTest, ANewTimeZoneIsNoticed) {
    const TimeZone zone(kUtc);
    EXPECT_EQ(Valen::TimeToStringWithoutDate(1000000000), "01:46:40");
    const TimeZone other(kHalfHours);
    EXPECT_EQ(Valen::TimeToStringWithoutDate(1000000000), "07:16:40");
}

TEST(TimeTextTest, TimesAreThoseOfDate) {
    for (const char* name : {kUtc, kCentralEurope, kHalfHours}) {
        const TimeZone zone(name);
        for (const std::time_t time :
             {-1L, 951782400L, 1729987200L, 1729990800L, 4102444799L, 253402300800L}) {
            EXPECT_EQ(Valen::TimeToString(time), date(time, "%d.%m.%Y %H:%M:%S")) << name << ' ' << time;
            EXPECT_EQ(Valen::TimeToStringWithoutDate(time), date(time, "%H:%M:%S")) << name << ' ' << time;
        }
    }
}

TEST(TimeTextTest, TimesThatNoCalendarCanExpressAreEmpty) {
    for (const std::time_t time : {LONG_MAX, LONG_MIN}) {
        EXPECT_EQ(Valen::TimeToString(time), "");
        EXPECT_EQ(Valen::TimeToStringWithoutDate(time), "");
    }
}

TEST(TimeTextTest, TheTimeNowIsFitForFileNames) {
    const TimeZone zone(kCentralEurope);
    const std::time_t before = std::time(nullptr);
    const std::string now = Valen::GetTimeAsString();
    const std::time_t after = std::time(nullptr);
    std::vector<std::string> possible;
    for (std::time_t time = before; time <= after; ++time) {
        possible.push_back(date(time, "%d.%m.%y_%H.%M.%S"));
    }
    EXPECT_THAT(now, AnyOfArray(possible));
}

TEST(TimeTextTest, TheTimeNowIsTheSecondsSinceTheEpoch) {
    const std::time_t before = std::time(nullptr);
    const std::string now = Valen::GetTimeString();
    const std::time_t after = std::time(nullptr);
    EXPECT_EQ(now.find_first_not_of("0123456789"), std::string::npos) << now;
    EXPECT_GE(std::stol(now), before);
    EXPECT_LE(std::stol(now), after);
}

}  // namespace
