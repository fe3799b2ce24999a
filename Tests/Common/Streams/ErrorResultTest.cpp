#include "Vl/Common/Streams/ErrorResult.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <type_traits>
#include <utility>

namespace {

using Valen::ErrorResult;

TEST(ErrorResultTest, SuccessHasNoText) {
    EXPECT_EQ(nullptr, ErrorResult().error());
}

TEST(ErrorResultTest, AnErrorHasItsFormattedText) {
    const ErrorResult result("could not open %s: %d", "/dev/fpga", 13);
    EXPECT_STREQ("could not open /dev/fpga: 13", result.error());
}

TEST(ErrorResultTest, AnErrorWithoutWordsIsStillAnError) {
    const char* const format = "%s";
    EXPECT_STREQ("", ErrorResult(format, "").error());
}

TEST(ErrorResultTest, ANullFormatIsASuccess) {
    const char* const format = nullptr;
    EXPECT_EQ(nullptr, ErrorResult(format).error());
}

TEST(ErrorResultTest, AnErrorThatCannotBeFormattedIsStillAnError) {
    // The C locale has no multi-byte character for this one.
    ErrorResult result("%lc", static_cast<std::wint_t>(0x20AC));
    EXPECT_STREQ("out of memory", result.error());
    const ErrorResult moved(std::move(result));
    EXPECT_STREQ("out of memory", moved.error());
}

TEST(ErrorResultTest, MovingTransfersTheTextAndLeavesASuccess) {
    ErrorResult first("no %s", "panel");
    const char* const text = first.error();
    ErrorResult second(std::move(first));
    EXPECT_EQ(text, second.error());
    EXPECT_EQ(nullptr, first.error());  // NOLINT: what a moved-from result promises

    ErrorResult third("replaced");
    third = std::move(second);
    EXPECT_EQ(text, third.error());
    EXPECT_EQ(nullptr, second.error());  // NOLINT
}

TEST(ErrorResultTest, ThereIsOneOwner) {
    EXPECT_FALSE(std::is_copy_constructible_v<ErrorResult>);
    EXPECT_FALSE(std::is_copy_assignable_v<ErrorResult>);
    EXPECT_EQ(sizeof(char*), sizeof(ErrorResult));
}

}  // namespace
