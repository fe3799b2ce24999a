#include "Vl/Common/Strings/BoolText.h"

#include <gmock/gmock.h>

namespace {

TEST(BoolTextTest, TruthHasAWord) {
    EXPECT_EQ(Valen::BoolToString(true), "true");
    EXPECT_EQ(Valen::BoolToString(false), "false");
    EXPECT_STREQ(Valen::BoolToCString(true), "true");
    EXPECT_STREQ(Valen::BoolToCString(false), "false");
}

}  // namespace
