#include "Vl/Common/Enums/PtpState.h"

#include <gtest/gtest.h>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// portState, IEEE 1588
TEST(PtpStateTest, NumbersAreTheStandards) {
    expectExactly(ENUMERATION(PtpState), {{1, "Initializing"},
                                          {2, "Faulty"},
                                          {3, "Disabled"},
                                          {4, "Listening"},
                                          {5, "Pre-master"},
                                          {6, "Master"},
                                          {7, "Passive"},
                                          {8, "Uncalibrated"},
                                          {9, "Slave"}});
}

}  // namespace
