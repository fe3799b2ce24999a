#include "Tools/boardinfo/Report.h"

#include <gtest/gtest.h>

#include "Tests/boardinfo/SampleReport.h"

namespace {

using namespace boardinfo;

TEST(ReportTest, HasFailuresWhenOneRowOfAnySectionFailed) {
    EXPECT_TRUE(samples::smallReport().hasFailures());
}

TEST(ReportTest, WhatIsNotPresentIsNoFailure) {
    Report report{"hd24", {{"identity", Form::Fixed, {notPresent("card ID"), answered("MAC 0", true)}}}};
    EXPECT_FALSE(report.hasFailures());
    report.sections.push_back({"chips on 1-Wire", Form::Found});
    EXPECT_FALSE(report.hasFailures());
    report.sections.back().rows.push_back(failed("28-000000000001"));
    EXPECT_TRUE(report.hasFailures());
}

TEST(ReportTest, OverItsLimitIsNoFailure) {
    Section temperatures{"temperatures"};
    temperatures.rows = {answered("fan", std::int64_t{99}).with("limit", std::int64_t{60})};
    EXPECT_FALSE((Report{"orca", {temperatures}}.hasFailures()));
}

}  // namespace
