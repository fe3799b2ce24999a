#include "Vl/Common/Enums/PtpRefClockType.h"

#include <gtest/gtest.h>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// timeSource, IEEE 1588-2019
TEST(PtpRefClockTypeTest, NumbersAreTheStandards) {
    expectExactly(ENUMERATION(PtpRefClockType), {{0x10, "Atomic clock"},
                                                 {0x20, "GNSS"},
                                                 {0x30, "Terrestrial radio"},
                                                 {0x39, "Serial time code"},
                                                 {0x40, "PTP"},
                                                 {0x50, "NTP"},
                                                 {0x60, "Hand set"},
                                                 {0x90, "Other"},
                                                 {0xA0, "Internal oscillator"}});
}

}  // namespace
