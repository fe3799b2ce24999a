#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <string>

#include "Tests/HAL/Fpga/LayoutStreams.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::getPldCoreInfo;

class DamagedLayoutTest : public LayoutStreams {};

TEST_F(DamagedLayoutTest, AFailedSkipOfAShortCoreIsLoggedLikeThatOfALongOne) {
    for (const auto words : std::to_array<std::uint16_t>({3, 16, 17})) {
        SCOPED_TRACE(words);
        std::string bytes = coreClaiming(words, "other", {1, 64});
        EXPECT_EQ(-5, read(memory(bytes), "x", 1));
        EXPECT_THAT(syslog.lines(),
                    ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read skip info: " +
                                      std::to_string(words * 2))));
        EXPECT_EQ(-5, read(file(bytes), "x", 1));
        EXPECT_THAT(syslog.lines(), IsEmpty());
    }
}

TEST_F(DamagedLayoutTest, AMissingCoreIsNotLogged) {
    EXPECT_EQ(-5, read(file(twoCores), "third", 1));
    EXPECT_EQ(-5, read(file(""), "third", 1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(DamagedLayoutTest, AShortWordCountIsNotLogged) {
    EXPECT_EQ(-5, read(file(std::string("x\0\0", 3)), "x", 1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(DamagedLayoutTest, AShortVersionIsLogged) {
    EXPECT_EQ(-5, read(file(std::string("x\0\0\2\0\0\0", 7)), "x", 1));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read version")));
}

TEST_F(DamagedLayoutTest, ShortWordsAreLogged) {
    EXPECT_EQ(-5, read(file(coreClaiming(3, "x", {1, 64})), "x", 2));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read info")));
}

TEST_F(DamagedLayoutTest, AFailedSkipIsLoggedWithTwiceTheNumberOfWordsOnPurpose) {
    std::string bytes = coreClaiming(300, "other", {1, 64});
    EXPECT_EQ(-5, read(memory(bytes), "x", 1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read skip info: 600")));
}

TEST_F(DamagedLayoutTest, ALayoutThatCannotSeekFailsAtTheFirstOtherCore) {
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    ASSERT_EQ(static_cast<ssize_t>(twoCores.size()), write(ends[1], twoCores.data(), twoCores.size()));
    close(ends[1]);
    EXPECT_EQ(-5, read(Stream(fdopen(ends[0], "r"), &std::fclose), "second", 1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read skip info: 4")));
}

TEST_F(DamagedLayoutTest, ALayoutCutAnywhereMissesItsLastCore) {
    for (std::size_t size = 1; size < twoCores.size(); ++size) {
        SCOPED_TRACE(size);
        std::string cut = twoCores.substr(0, size);
        EXPECT_EQ(-5, read(file(cut), "second", 3));
        EXPECT_EQ(-5, read(memory(cut), "second", 3));
        syslog.lines();  // the socket holds only a few
    }
    EXPECT_EQ(1, read(file(twoCores), "second", 3));
}

TEST_F(DamagedLayoutTest, HugeWordCountsLeadNowhere) {
    std::string other = coreClaiming(0xFFFF, "other", {1, 64}) + core("x", {1, 64});
    EXPECT_EQ(-5, read(file(other), "x", 1));
    EXPECT_EQ(-5, read(memory(other), "x", 1));
    EXPECT_EQ(-5, read(file(coreClaiming(0xFFFF, "x", {1, 64})), "x", 0xFFFE));
}

TEST_F(DamagedLayoutTest, AbsurdWordNumbersAreRefused) {
    unsigned int word = 0;
    EXPECT_EQ(-7, getPldCoreInfo(file(twoCores).get(), "first", &word, INT_MAX, INT_MAX, -1, -1));
    EXPECT_EQ(-5, getPldCoreInfo(file(twoCores).get(), "first", &word, INT_MIN, 1, -1, -1));
    EXPECT_EQ(-5, getPldCoreInfo(file(twoCores).get(), "first", &word, -1000, 1, -1, -1));
    EXPECT_EQ(1, getPldCoreInfo(file(twoCores).get(), "first", &word, 1, 0, -1, -1));
    EXPECT_EQ(0U, word);
}

}  // namespace
