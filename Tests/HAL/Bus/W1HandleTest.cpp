#include <gtest/gtest.h>

#include "Vl/HAL/Bus/W1Util.h"

namespace {

using Valen::HAL::W1Util;
using W1Handle = W1Util::W1Handle;

TEST(W1HandleTest, AHandleIsFamilyAndSerialAndNamesADirectory) {
    constexpr W1Handle slave{0x1a2b3c'2800};
    EXPECT_EQ((0x28ULL << 8) | (0x1a2b3cULL << 16), slave.value);
    EXPECT_EQ(0x28U, slave.family());
    EXPECT_EQ(0x1a2b3cU, slave.serial());
    EXPECT_EQ("28-0000001a2b3c", slave.name());
    EXPECT_EQ("ff-ffffffffffff", W1Handle{0xFFFFFFFFFFFFFF00}.name());
    EXPECT_EQ("00-000000000000", W1Handle{}.name());
}

TEST(W1HandleTest, NamesAreTwoHexadecimalNumbersNeitherZero) {
    const struct {
        const char* name;
        std::uint64_t handle;  ///< 0: no slave's name
    } rows[] = {
        {"28-0000001a2b3c", 0x1a2b3c2800},
        {"2D-1A", 0x1a2d00},
        {"028-01a", 0x1a2800},
        {"28-000000000000", 0},
        {"00-0000001a2b3c", 0},
        {"28-0000001a2b3c ", 0},
        {"28-0000001a2b3cg", 0},
        {"28-", 0},
        {"28", 0},
        {"", 0},
        {"-1a", 0},
        {"28_1a", 0},
        {"+28-1a", 0},
        {"28--1a", 0},
        {"0x28-1a", 0},
        {" 28-1a", 0},
        {"128-1a", 0},
        {"w1_bus_master1", 0},
        {".", 0},
        {"28-12340000001a2b3c", 0x1a2b3c2800},  // only 48 bits count
        {"28-1000000000000", 0},
        {"28-10000000000000001", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.handle, W1Util::parseName(row.name).value_or(W1Handle{}).value) << row.name;
    }
}

}  // namespace
