#include "Vl/HAL/Bus/FpgaMdio.h"

#include <chrono>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/SimulatedTime.h"
#include "Tests/Support/RegisterWindow/RegisterWindow.h"

namespace {

using namespace std::chrono_literals;
using support::Read32;
using support::Write32;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::FpgaMdio;

class FpgaMdioTest : public BoardWorld {
protected:
    /// A core that has sent a frame before anybody looks.
    void beFast() {
        window.onWrite(0, [this](std::uint64_t) { window.set32(0, 0); });
    }

    SimulatedTime time;
    support::RegisterWindow window;
    FpgaMdio mdio{window.base(), 1};
};

TEST_F(FpgaMdioTest, ConstructionTouchesNothing) {
    EXPECT_THAT(window.accesses(), IsEmpty());
}

TEST_F(FpgaMdioTest, AWriteIsOneLookAndOneFrame) {
    EXPECT_TRUE(mdio.setReg(4, 0x01E1));
    EXPECT_THAT(window.accesses(), ElementsAre(Read32(0), Write32(0, 0x509201E1)));
    EXPECT_THAT(time.sleeps, IsEmpty());
}

TEST_F(FpgaMdioTest, AReadIsALookAFrameAndTheAnswer) {
    window.onWrite(0, [&](std::uint64_t) { window.set32(0, 0x0000796D); });
    mdio.changePhyAddress(0);
    EXPECT_EQ(0x796D, mdio.getReg(2));
    EXPECT_THAT(window.accesses(), ElementsAre(Read32(0), Write32(0, 0x60080000), Read32(0, 0x796D)));
    EXPECT_THAT(time.sleeps, IsEmpty());
}

TEST_F(FpgaMdioTest, TheHighestAddressesAndValuesStayInTheirFields) {
    beFast();
    mdio.changePhyAddress(31);
    EXPECT_TRUE(mdio.setReg(31, 0xFFFF));
    mdio.changePhyAddress(0);
    EXPECT_TRUE(mdio.setReg(0, 0));
    EXPECT_THAT(window.accesses(),
                ElementsAre(Read32(0), Write32(0, 0x5FFEFFFF), Read32(0), Write32(0, 0x50020000)));
}

TEST_F(FpgaMdioTest, WhatDoesNotFitAFieldDoesNotReachTheOthers) {
    beFast();
    mdio.changePhyAddress(-1);
    EXPECT_TRUE(mdio.setReg(0x20, -1));
    mdio.changePhyAddress(0x20);
    EXPECT_TRUE(mdio.setReg(-1, 0x10000));
    EXPECT_THAT(window.accesses(),
                ElementsAre(Read32(0), Write32(0, 0x5F82FFFF), Read32(0), Write32(0, 0x507E0000)));
}

TEST_F(FpgaMdioTest, BothBusyBitsHoldAFrameBack) {
    window.onRead(0, {0x80000000, 0x40000000, 0xC0000000, 0x3FFFFFFF});
    EXPECT_TRUE(mdio.setReg(0, 0));
    EXPECT_THAT(window.accesses(),
                ElementsAre(Read32(0), Read32(0), Read32(0), Read32(0), Write32(0, 0x50820000)));
    EXPECT_THAT(time.sleeps, ElementsAre(5us, 5us, 5us));
}

TEST_F(FpgaMdioTest, OnlyTheTopBitHoldsAnAnswerBack) {
    window.onRead(0, {0, 0x80001111, 0x40002222});
    EXPECT_EQ(0x2222, mdio.getReg(1));
    EXPECT_THAT(window.accesses(), ElementsAre(Read32(0), Write32(0, 0x60840000), Read32(0), Read32(0)));
    EXPECT_THAT(time.sleeps, ElementsAre(5us));
}

TEST_F(FpgaMdioTest, AnAnswerIsSixteenBits) {
    window.onRead(0, {0, 0x7FFFFFFF});
    EXPECT_EQ(0xFFFF, mdio.getReg(1));
}

TEST_F(FpgaMdioTest, ACoreThatStaysBusyIsGivenUpAfter100MillisecondsWithNothingWritten) {
    window.set32(0, 0xC0000123);
    EXPECT_FALSE(mdio.setReg(4, 1));
    EXPECT_EQ(100ms, time.elapsed);
    EXPECT_EQ(20000U, time.sleeps.size());
    EXPECT_THAT(time.sleeps, Each(5us));
    EXPECT_EQ(20001U, window.accesses().size());
    EXPECT_THAT(window.accesses(), Each(Read32(0)));
    EXPECT_THAT(syslog.texts(), ElementsAre("CPCardInterface: MDIO: timeout: 0xC0000123 & C0000000"));
}

TEST_F(FpgaMdioTest, AReadOfACoreThatStaysBusyWritesNothing) {
    window.set32(0, 0x40000000);
    EXPECT_EQ(-1, mdio.getReg(4));
    EXPECT_THAT(window.accesses(), Each(Read32(0)));
    EXPECT_THAT(syslog.texts(), ElementsAre("CPCardInterface: MDIO: timeout: 0x40000000 & C0000000"));
}

TEST_F(FpgaMdioTest, AnAnswerThatDoesNotComeIsMinusOneAndLogged) {
    window.onWrite(0, [&](std::uint64_t) { window.set32(0, 0x80000007); });
    EXPECT_EQ(-1, mdio.getReg(4));
    EXPECT_EQ(100ms, time.elapsed);
    EXPECT_THAT(syslog.texts(), ElementsAre("CPCardInterface: MDIO: timeout: 0x80000007 & 80000000"));
}

TEST_F(FpgaMdioTest, AfterSleepingThroughTheTimeItLooksOnceMore) {
    time.oversleep = 1s;
    window.onRead(0, {0x80000000, 0});
    EXPECT_TRUE(mdio.setReg(0, 0));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(FpgaMdioTest, TimeoutsAreAServiceMessage) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    window.set32(0, 0x80000000);
    EXPECT_FALSE(mdio.setReg(0, 0));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(FpgaMdioTest, WithoutACoreEveryAccessFailsAtOnce) {
    FpgaMdio none(nullptr, 1);
    EXPECT_FALSE(none.setReg(0, 0));
    EXPECT_EQ(-1, none.getReg(0));
    EXPECT_EQ(0ms, time.elapsed);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

}  // namespace
