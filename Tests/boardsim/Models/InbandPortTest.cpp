#include "Tools/boardsim/Models/InbandPort.h"

#include <gtest/gtest.h>

namespace {

using boardsim::InbandPort;

TEST(InbandPortTest, TellsTheFibreLengthOfItsPorts) {
    const InbandPort port({120, 0});
    EXPECT_EQ(120, port.fibreLength(0));
    EXPECT_EQ(0, port.fibreLength(1));
    EXPECT_FALSE(port.fibreLength(2));
    EXPECT_FALSE(InbandPort({}).fibreLength(0));
}

TEST(InbandPortTest, RemembersAShutdown) {
    InbandPort port({});
    EXPECT_FALSE(port.isShutDown());
    port.shutDown();
    EXPECT_TRUE(port.isShutDown());
}

}  // namespace
