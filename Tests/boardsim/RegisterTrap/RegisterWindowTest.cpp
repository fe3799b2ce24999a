#include "Tests/Support/RegisterWindow/RegisterWindow.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace registertrap {

namespace {

using boardsim::Direction;
using boardsim::RegisterAccess;
using support::Read32, support::Write32, support::Read16, support::Write8;
using support::RegisterWindow;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::PrintToString;

TEST(RegisterWindow, RecordsAccessesInOrder) {
    RegisterWindow window;
    volatile std::uint32_t* registers = window.base();

    registers[1] = 0x12;
    const std::uint32_t value = registers[1];
    registers[0] = 0;

    EXPECT_EQ(value, 0x12U);
    EXPECT_THAT(window.accesses(), ElementsAre(Write32(0x4, 0x12), Read32(0x4), Write32(0x0, 0)));
}

TEST(RegisterWindow, StartsWithZeros) {
    RegisterWindow window;

    EXPECT_EQ(window.get32(0x0), 0U);
    EXPECT_EQ(window.get32(RegisterWindow::kDefaultLength - 4), 0U);
}

TEST(RegisterWindow, DoesNotRecordWhatTheTestItselfDoes) {
    RegisterWindow window;

    window.set32(0x8, 5);
    EXPECT_EQ(window.get8(0x8), 5);

    EXPECT_THAT(window.accesses(), IsEmpty());
    EXPECT_EQ(window.base()[2], 5U);
}

TEST(RegisterWindow, ForgetsAccessesOnRequest) {
    RegisterWindow window;
    window.base()[0] = 1;

    window.clearAccesses();
    window.base()[0] = 2;

    EXPECT_THAT(window.accesses(), ElementsAre(Write32(0x0, 2)));
}

TEST(RegisterWindow, GivesReadsTheirScriptedValuesAndKeepsTheLast) {
    RegisterWindow window;
    window.onRead(0x10, {1, 0, 7});

    EXPECT_EQ(window.base()[4], 1U);
    EXPECT_EQ(window.base()[4], 0U);
    EXPECT_EQ(window.base()[4], 7U);
    EXPECT_EQ(window.base()[4], 7U);
    EXPECT_EQ(window.get32(0x10), 7U);
}

TEST(RegisterWindow, ScriptedValuesTakeNoMoreThanTheWidthOfTheRead) {
    RegisterWindow window;
    window.set32(0x10, 0xFFFFFFFF);
    window.onRead(0x10, {0x12345678});

    const std::uint16_t value = *static_cast<volatile std::uint16_t*>(window.address(0x10));

    EXPECT_EQ(value, 0x5678);
    EXPECT_EQ(window.get32(0x10), 0xFFFF5678U);
    EXPECT_THAT(window.accesses(), ElementsAre(Read16(0x10, 0x5678)));
}

TEST(RegisterWindow, LetsTheTestPlayTheDeviceBehindAWrite) {
    RegisterWindow window;
    window.onWrite(0x0, [&window](std::uint64_t command) {
        window.set32(0x4, static_cast<std::uint32_t>(command) + 1);
    });

    window.base()[0] = 41;

    EXPECT_EQ(window.base()[1], 42U);
    EXPECT_THAT(window.accesses(), ElementsAre(Write32(0x0, 41), Read32(0x4, 42)));
}

TEST(RegisterWindow, RefusesToLookBehindItsEnd) {
    RegisterWindow window(0x100);

    EXPECT_THROW(window.get32(0xFD), std::out_of_range);
    EXPECT_THROW(window.set8(0x100, 0), std::out_of_range);
    EXPECT_THROW(window.get32(static_cast<std::size_t>(-1)), std::out_of_range);
    EXPECT_NO_THROW(window.get32(0xFC));
}

TEST(AccessMatcher, TellsDirectionWidthOffsetAndValue) {
    const RegisterAccess access{0x4, 0x80, 1, Direction::Write};

    EXPECT_THAT(access, Write8(0x4, 0x80));
    EXPECT_THAT(access, Write8(0x4));
    EXPECT_THAT(access, Not(Write8(0x4, 0x81)));
    EXPECT_THAT(access, Not(Write8(0x5, 0x80)));
    EXPECT_THAT(access, Not(Write32(0x4, 0x80)));
    EXPECT_THAT(access, Not(support::Read8(0x4, 0x80)));
}

TEST(AccessMatcher, ShowsAnAccessAsTheTestWouldWriteIt) {
    EXPECT_EQ(PrintToString(RegisterAccess{0x13, 0x80, 1, Direction::Write}), "Write8(0x13, 0x80)");
    EXPECT_EQ(PrintToString(RegisterAccess{0x40, 0x1F, 4, Direction::Read}), "Read32(0x40) = 0x1f");
}

TEST(AccessMatcher, DescribesWhatItWaitsFor) {
    EXPECT_EQ(testing::DescribeMatcher<const RegisterAccess&>(Write32(0x4, 0x10)), "Write32(0x4, 0x10)");
    EXPECT_EQ(testing::DescribeMatcher<const RegisterAccess&>(Read32(0x4)), "Read32(0x4)");
    EXPECT_EQ(testing::DescribeMatcher<const RegisterAccess&>(Not(Write32(0x4))), "not Write32(0x4)");
}

}  // namespace

}  // namespace registertrap
