#include "Vl/Common/Log/SeverityLevel.h"

#include <gtest/gtest.h>

namespace {

using Valen::Log::SeverityLevel::SeverityLevel_T;

constexpr SeverityLevel_T severity(int number) {
    return static_cast<SeverityLevel_T>(number);
}

TEST(SeverityLevelTest, EverySeverityHasItsText) {
    const char* const texts[] = {"EMERGENCY",  "ALERT",         "CRITICAL",        "ERROR",      "WARNING",
                                 "NOTICE",     "INFO",          "SERVICE",         "DEBUG",      "DETAILED",
                                 "CONSOLEMIN", "CONSOLENORMAL", "CONSOLEDETAILED", "CONSOLEMAX", "RAMFILE"};
    for (int level = 0; level <= 14; ++level) {
        EXPECT_STREQ(texts[level], Valen::Log::SeverityLevel::GetText(severity(level)));
    }
    EXPECT_STREQ("invalid", Valen::Log::SeverityLevel::GetText(severity(15)));
    EXPECT_STREQ("invalid", Valen::Log::SeverityLevel::GetText(severity(-1)));
}

TEST(SeverityLevelTest, SeveritiesAboveThirteenAreWrittenAtLevelThree) {
    const int loglevels[] = {1, 1, 1, 1, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3};
    for (int level = 0; level <= 15; ++level) {
        EXPECT_EQ(loglevels[level], Valen::Log::SeverityLevel::SeverityToLoglevel(severity(level))) << level;
    }
}

TEST(SeverityLevelTest, EveryNameHasItsNumber) {
    using namespace Valen::Log::SeverityLevel;
    const int numbers[] = {EMERGENCY,  ALERT,         CRITICAL,        ERROR,      WARNING,
                           NOTICE,     INFO,          SERVICE,         DEBUG,      DETAILED,
                           CONSOLEMIN, CONSOLENORMAL, CONSOLEDETAILED, CONSOLEMAX, RAMFILE};
    for (int number = 0; number <= 14; ++number) {
        EXPECT_EQ(number, numbers[number]);
    }
}

}  // namespace
