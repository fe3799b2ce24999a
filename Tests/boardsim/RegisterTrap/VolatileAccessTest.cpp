#include <gmock/gmock.h>

#include <vector>

#include "Tests/Support/RegisterWindow/RegisterWindow.h"
#include "Tests/boardsim/RegisterTrap/VolatileAccesses.h"

namespace registertrap {

namespace {

using support::AccessMatcher;
using support::Read16, support::Read32, support::Read64, support::Read8;
using support::Write16, support::Write32, support::Write64, support::Write8;

const std::vector<AccessMatcher> kExpected = {
    Write32(0x0, 0xDEADBEEF), Write16(0x4, 0xBEEF),
    Write8(0x6, 0x5A),        Write64(0x8, 0x0123456789ABCDEF),
    Read32(0x0, 0xDEADBEEF),  Read16(0x4, 0xBEEF),
    Read8(0x6, 0x5A),         Read64(0x8, 0x0123456789ABCDEF),

    Read32(0x0, 0xDEADBEEF),  Write32(0x0, 0xDEADBEFF),
    Read32(0x0, 0xDEADBEFF),  Write32(0x0, 0xDEADBEFE),
    Read16(0x4, 0xBEEF),      Write16(0x4, 0xBEF0),
    Read8(0x6, 0x5A),         Write8(0x6, 0xA5),

    Read8(0x6, 0xA5),         Read16(0x4, 0xBEF0),
    Read32(0x0, 0xDEADBEFE),

    Write32(0x200, 0),        Write32(0x204, 1),
    Write32(0x208, 2),        Write32(0x20C, 3),
    Read32(0x20C, 3),         Read32(0x208, 2),
    Read32(0x204, 1),         Read32(0x200, 0),

    Read32(0x0, 0xDEADBEFE),  Read8(0x6, 0xA5),
    Read32(0x0, 0xDEADBEFE),  Write8(0x300, 1),
};

void expectAll(const VolatileAccesses& accesses) {
    support::RegisterWindow window;

    EXPECT_TRUE(accesses.run(window.address()));

    EXPECT_THAT(window.accesses(), testing::ElementsAreArray(kExpected));
}

TEST(VolatileAccess, MakesEachAccessOnceAndInItsWidthWithoutOptimisation) {
    expectAll(kUnoptimisedAccesses);
}

TEST(VolatileAccess, MakesEachAccessOnceAndInItsWidthWithOptimisation) {
    expectAll(kOptimisedAccesses);
}

}  // namespace

}  // namespace registertrap
