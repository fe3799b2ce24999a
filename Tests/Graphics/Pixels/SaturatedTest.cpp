#include "Vl/Graphics/Pixels/Saturated.h"

#include <gtest/gtest.h>

#include <climits>

TEST(SaturatedTest, WhatAnIntHoldsIsUnchanged) {
    for (const int value : {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX}) {
        EXPECT_EQ(value, saturated(value));
    }
}

TEST(SaturatedTest, WhatAnIntCannotHoldIsItsNearestEnd) {
    EXPECT_EQ(INT_MAX, saturated(int64_t{INT_MAX} + 1));
    EXPECT_EQ(INT_MAX, saturated(INT64_MAX));
    EXPECT_EQ(INT_MIN, saturated(int64_t{INT_MIN} - 1));
    EXPECT_EQ(INT_MIN, saturated(INT64_MIN));
}
