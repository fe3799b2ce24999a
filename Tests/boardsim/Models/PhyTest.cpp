#include "Tools/boardsim/Models/Phy.h"

#include <gtest/gtest.h>

#include <array>

#include "Tests/boardsim/Models/ModelTime.h"

namespace {

using boardsim::FaultSchedule;
using boardsim::Phy;
using namespace std::chrono_literals;

constexpr std::array kAfterPowerOn{Phy::Register{0, 0x1140, 0x7D40},  Phy::Register{1, 0x7949, 0},
                                   Phy::Register{2, 0x1234, 0},       Phy::Register{4, 0x01E1, 0xBFFF},
                                   Phy::Register{6, 0x0004, 0},       Phy::Register{9, 0x0300, 0xFF00},
                                   Phy::Register{16, 0x0000, 0xFFFF}, Phy::Register{20, 0xABCD, 0x00FF}};

class PlainPhy : public Phy {
public:
    explicit PlainPhy(boardsim::ModelClock clock) : Phy(kAfterPowerOn, std::move(clock)) {}
    using Phy::link;
};

class PhyTest : public testing::Test {
protected:
    bool hasLink() { return phy.read(1) & 0x0004; }
    bool hasNegotiated() { return phy.read(1) & 0x0020; }
    void waitForLink() { time.pass(10ms); }

    models::ModelTime time;
    PlainPhy phy{time.clock()};
};

TEST_F(PhyTest, HasItsValuesAfterPowerOn) {
    EXPECT_EQ(0x1140, phy.read(0));
    EXPECT_EQ(0x7949, phy.read(1));
    EXPECT_EQ(0x1234, phy.read(2));
    EXPECT_EQ(0x0000, phy.read(31)) << "a register that the chip does not have";
}

TEST_F(PhyTest, OnlyWritableBitsCanBeWritten) {
    phy.write(20, 0x1234);
    EXPECT_EQ(0xAB34, phy.read(20));
    phy.write(2, 0xFFFF);
    EXPECT_EQ(0x1234, phy.read(2));
    phy.write(31, 0xFFFF);
    EXPECT_EQ(0x0000, phy.read(31));
}

TEST_F(PhyTest, NegotiationTakesAWhileAfterPowerOn) {
    time.pass(9999us);
    EXPECT_FALSE(hasNegotiated());
    EXPECT_EQ(0x0000, phy.read(5));
    EXPECT_EQ(0x0000, phy.read(10));
    time.pass(1us);
    EXPECT_TRUE(hasNegotiated());
    EXPECT_EQ(0xC1E1, phy.read(5));
    EXPECT_EQ(0x3800, phy.read(10));
}

TEST_F(PhyTest, TheLinkBitRemembersThatTheLinkWasDown) {
    waitForLink();
    EXPECT_FALSE(hasLink()) << "it was down since power-on";
    EXPECT_TRUE(hasLink());
    phy.write(0, 0x1340);
    waitForLink();
    EXPECT_FALSE(hasLink()) << "it was down when negotiation restarted";
    EXPECT_TRUE(hasLink());
}

TEST_F(PhyTest, ThePageReceivedBitIsClearedByReading) {
    waitForLink();
    EXPECT_EQ(0x0007, phy.read(6));
    EXPECT_EQ(0x0005, phy.read(6));
}

struct Negotiation {
    std::uint16_t advertisement;
    std::uint16_t gigabit;
    Phy::Speed speed;
    bool isFullDuplex;
};
class PhyNegotiation : public testing::TestWithParam<Negotiation> {};

TEST_P(PhyNegotiation, FindsTheBestThatBothSidesCan) {
    models::ModelTime time;
    PlainPhy phy(time.clock());
    phy.write(4, GetParam().advertisement);
    phy.write(9, GetParam().gigabit);
    phy.write(0, 0x1340);
    time.pass(10ms);
    ASSERT_TRUE(phy.link());
    EXPECT_EQ(GetParam().speed, phy.link()->speed);
    EXPECT_EQ(GetParam().isFullDuplex, phy.link()->isFullDuplex);
}

INSTANTIATE_TEST_SUITE_P(Advertisements, PhyNegotiation,
                         testing::Values(Negotiation{0x01E1, 0x0200, Phy::Speed::Mbit1000, true},
                                         Negotiation{0x01E1, 0x0100, Phy::Speed::Mbit100, true},
                                         Negotiation{0x00E1, 0x0000, Phy::Speed::Mbit100, false},
                                         Negotiation{0x0061, 0x0000, Phy::Speed::Mbit10, true},
                                         Negotiation{0x0021, 0x0000, Phy::Speed::Mbit10, false}));

TEST_F(PhyTest, HasNoLinkWhenThereIsNothingThatBothSidesCan) {
    phy.write(4, 0x0001);
    phy.write(9, 0x0000);
    phy.write(0, 0x1340);
    waitForLink();
    EXPECT_FALSE(phy.link());
    EXPECT_FALSE(hasNegotiated());
}

TEST_F(PhyTest, WhatIsAdvertisedCountsWhenNegotiationIsRestarted) {
    waitForLink();
    phy.write(9, 0x0000);
    EXPECT_EQ(Phy::Speed::Mbit1000, phy.link()->speed);
    phy.write(0, 0x1340);
    EXPECT_FALSE(phy.link());
    waitForLink();
    EXPECT_EQ(Phy::Speed::Mbit100, phy.link()->speed);
}

TEST_F(PhyTest, ForcedSpeedsNeedNoNegotiation) {
    phy.write(0, 0x2100);
    waitForLink();
    ASSERT_TRUE(phy.link());
    EXPECT_EQ(Phy::Speed::Mbit100, phy.link()->speed);
    EXPECT_FALSE(hasNegotiated());
    phy.write(0, 0x0000);
    waitForLink();
    EXPECT_EQ(Phy::Speed::Mbit10, phy.link()->speed);
    EXPECT_FALSE(phy.link()->isFullDuplex);
    phy.write(0, 0x0140);
    waitForLink();
    EXPECT_FALSE(phy.link()) << "1000 Mbit/s always negotiates";
}

TEST_F(PhyTest, ResetPutsRegistersBackAndItsBitFallsByItself) {
    waitForLink();
    phy.write(4, 0x0001);
    phy.write(0, 0xA100);
    EXPECT_EQ(0x9140, phy.read(0));
    EXPECT_EQ(0x01E1, phy.read(4));
    phy.write(4, 0x0021);
    EXPECT_EQ(0x01E1, phy.read(4)) << "no write is taken during the reset";
    time.pass(200us);
    EXPECT_EQ(0x1140, phy.read(0));
    EXPECT_FALSE(phy.link());
    waitForLink();
    EXPECT_TRUE(phy.link());
}

TEST_F(PhyTest, TheRestartBitDoesNotStay) {
    phy.write(0, 0x1340);
    EXPECT_EQ(0x1140, phy.read(0));
}

TEST_F(PhyTest, HasNoLinkWhilePoweredDown) {
    waitForLink();
    phy.write(0, 0x1940);
    EXPECT_FALSE(phy.link());
    time.pass(1h);
    EXPECT_FALSE(phy.link());
    phy.write(0, 0x1140);
    waitForLink();
    EXPECT_TRUE(phy.link());
}

TEST_F(PhyTest, ALostLinkDoesNotComeBack) {
    phy.loseLink(FaultSchedule());
    time.pass(1h);
    EXPECT_FALSE(hasLink());
    EXPECT_FALSE(hasNegotiated());
    phy.write(0, 0x1340);
    time.pass(1h);
    EXPECT_FALSE(phy.link());
}

TEST_F(PhyTest, ALinkThatIsLostOnceComesUpWhenItIsMadeAnew) {
    phy.loseLink(FaultSchedule(0, 1));
    time.pass(1h);
    EXPECT_FALSE(phy.link());
    phy.write(0, 0x1340);
    waitForLink();
    EXPECT_TRUE(phy.link());
}

}  // namespace
