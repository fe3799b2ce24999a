#include "Vl/HAL/Chips/W1TempRound.h"

#include <string>
#include <vector>

#include "Tests/HAL/Chips/W1SensorWorld.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::W1Temp;
using Valen::HAL::W1TempRound;

/// With sensors A, B and C, whose user data are 1, 2 and 3.
class W1TempRoundTest : public W1SensorWorld {
protected:
    W1TempRoundTest() {
        for (char number = 1; number <= 3; ++number) {
            addSensor(1, name(number), std::string{number, '\0'}, "\x10\0\0\0"s);
        }
        a = makeSensor(1);
        b = makeSensor(2);
        c = makeSensor(3);
    }

    static std::string name(char number) { return std::string("22-00000000000") + char('0' + number); }

    /// The sensors that the next steps read.
    std::string steps(int count) {
        std::string read;
        for (int step = 0; step < count; ++step) {
            for (const auto& sensor : {a.get(), b.get(), c.get()}) {
                sensor->Find();  // forgets the temperature
            }
            EXPECT_EQ(10'000, round.step());
            read += a->temperature() != kUnknown ? "A" : "";
            read += b->temperature() != kUnknown ? "B" : "";
            read += c->temperature() != kUnknown ? "C" : "";
        }
        return read;
    }

    W1TempRound round;
    std::unique_ptr<W1Temp> a;
    std::unique_ptr<W1Temp> b;
    std::unique_ptr<W1Temp> c;
};

TEST_F(W1TempRoundTest, AnEmptyRoundWaitsTenSeconds) {
    EXPECT_EQ(10'000, round.step());
    EXPECT_FALSE(W1TempRound().hasExactlyOne());
}

TEST_F(W1TempRoundTest, EachStepReadsOneSensorInTurn) {
    round.add(a.get());
    EXPECT_TRUE(round.hasExactlyOne());
    round.add(b.get());
    round.add(c.get());
    EXPECT_FALSE(round.hasExactlyOne());
    EXPECT_EQ("CBACBA", steps(6));  // at its end the round has a new first
}

TEST_F(W1TempRoundTest, ASensorIsAddedBehindTheOneWhoseTurnItIs) {
    round.add(a.get());
    round.add(b.get());
    EXPECT_EQ("B", steps(1));
    round.add(c.get());
    EXPECT_EQ("ACBAC", steps(5));
}

TEST_F(W1TempRoundTest, RemovingTheSensorWhoseTurnItIsMovesOn) {
    round.add(a.get());
    round.add(b.get());
    round.add(c.get());
    EXPECT_EQ("C", steps(1));
    round.remove(b.get());
    EXPECT_EQ("ACA", steps(3));
    round.remove(a.get());
    EXPECT_EQ("CC", steps(2));
    round.remove(c.get());
    EXPECT_EQ("", steps(2));
    round.remove(c.get());
}

TEST_F(W1TempRoundTest, AFailedReadIsTriedAgainOnTheSameSensorUntilTheSixth) {
    round.add(a.get());
    round.add(b.get());
    removeSlave(1, name(2));
    b->Find();
    logged();
    for (int failure = 1; failure <= 5; ++failure) {
        EXPECT_EQ(10'000, round.step());
        EXPECT_EQ(kUnknown, a->temperature());
    }
    addSensor(1, name(2), "\2\0"s, "\x20\0\0\0"s);
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_FALSE(b->isOpen());
    EXPECT_EQ(10'000, round.step());
    EXPECT_TRUE(b->isOpen());
    EXPECT_EQ(10'000, round.step());
    EXPECT_EQ(0x10, a->temperature());
    EXPECT_EQ(kUnknown, b->temperature());
    EXPECT_EQ(10'000, round.step());
    EXPECT_EQ(0x20, b->temperature());
}

TEST_F(W1TempRoundTest, AnInvalidReadingIsLoggedAndTriedAgainAfterASecond) {
    round.add(a.get());
    setTemperature(name(1), "\xFF\xFF\xFF\xFF");
    for (int failure = 1; failure <= 5; ++failure) {
        EXPECT_EQ(1'000, round.step());
        EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: failed to read temp for 22-000000000001")));
    }
    EXPECT_EQ(10'000, round.step());
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_TRUE(a->isOpen());
    EXPECT_EQ(1'000, round.step());
}

TEST_F(W1TempRoundTest, AGoodReadingEndsTheRowOfFailures) {
    round.add(a.get());
    for (int time = 0; time < 3; ++time) {
        setTemperature(name(1), "\xFF\xFF\xFF\xFF");
        for (int failure = 1; failure <= 5; ++failure) {
            EXPECT_EQ(1'000, round.step());
            logged();
        }
        setTemperature(name(1), "\x30\0\0\0"s);
        EXPECT_EQ(10'000, round.step());
        EXPECT_EQ(0x30, a->temperature());
    }
}

TEST_F(W1TempRoundTest, TheFailuresOfARemovedSensorDoNotCountForTheNext) {
    round.add(a.get());
    round.add(b.get());
    setTemperature(name(1), "\xFF\xFF\xFF\xFF");
    setTemperature(name(2), "\xFF\xFF\xFF\xFF");
    for (int failure = 1; failure <= 5; ++failure) {
        round.step();
        logged();
    }
    round.remove(b.get());
    for (int failure = 1; failure <= 5; ++failure) {
        EXPECT_EQ(1'000, round.step());
        logged();
    }
}

}  // namespace
