#include "Vl/HAL/Fpga/CoreLayout.h"

#include <array>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "Tests/HAL/Fpga/LayoutStreams.h"
#include "Vl/Common/Log/LogInterface.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::getPldCoreInfo;

class CoreLayoutTest : public LayoutStreams {
protected:
    static int readVersioned(std::uint32_t version, int minimum, int maximum) {
        unsigned int word = 0;
        return getPldCoreInfo(file(core("x", {version, 64})).get(), "x", &word, 1, 1, minimum, maximum);
    }
};

TEST_F(CoreLayoutTest, WordsComeInHostByteOrder) {
    std::array<unsigned int, 3> words{};
    EXPECT_EQ(1, getPldCoreInfo(file(twoCores).get(), "second", words.data(), 1, 3, -1, -1));
    EXPECT_THAT(words, ElementsAre(0x40, 0x80, 0xFFFEFDFC));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CoreLayoutTest, WordZeroIsTheVersion) {
    unsigned int word = 0;
    EXPECT_EQ(1, read(file(twoCores), "first", 0, word));
    EXPECT_EQ(0x00010002U, word);
}

TEST_F(CoreLayoutTest, TheFirstMatchInTheFileCounts) {
    unsigned int word = 0;
    EXPECT_EQ(1, read(file(core("a_x", {1, 64}) + core("b_x", {1, 128})), "*_x", 1, word));
    EXPECT_EQ(64U, word);
}

TEST_F(CoreLayoutTest, NamesMayBeOfAnyLength) {
    const std::string longName(5000, 'n');
    unsigned int word = 0;
    EXPECT_EQ(1, read(file(core(longName + "1", {1}) + core(longName, {1, 64})), longName.c_str(), 1, word));
    EXPECT_EQ(64U, word);
}

TEST_F(CoreLayoutTest, CoresWithoutWordsAreSkipped) {
    EXPECT_EQ(1, read(file(core("none", {}) + core("x", {1, 64})), "x", 1));
}

TEST_F(CoreLayoutTest, CoresOfAnySizeAreSkipped) {
    for (const auto words : std::to_array<std::size_t>({1, 2, 15, 16, 17, 1000, 0xFFFF})) {
        SCOPED_TRACE(words);
        std::string bytes = core("other", std::vector<std::uint32_t>(words, 0x78000000)) + twoCores;
        unsigned int word = 0;
        EXPECT_EQ(1, read(file(bytes), "second", 1, word));
        EXPECT_EQ(1, read(memory(bytes), "first", 1));
        EXPECT_EQ(0x40U, word);
    }
}

TEST_F(CoreLayoutTest, ACoreWithOnlyAVersionHasNoAddress) {
    EXPECT_EQ(-7, read(file(core("x", {1})), "x", 1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: n+count > words (1+1 >= 1)")));
}

TEST_F(CoreLayoutTest, AllWordsOfARecordCanBeReadThoughTheMessageForTooManySaysAtLeast) {
    std::array<unsigned int, 4> words{};
    EXPECT_EQ(1, getPldCoreInfo(file(twoCores).get(), "second", words.data(), 0, 4, -1, -1));
    EXPECT_THAT(words, ElementsAre(3, 0x40, 0x80, 0xFFFEFDFC));
    EXPECT_EQ(-7, getPldCoreInfo(file(twoCores).get(), "second", words.data(), 1, 4, -1, -1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: n+count > words (1+4 >= 4)")));
}

TEST_F(CoreLayoutTest, NegativeBoundsAdmitEveryVersion) {
    EXPECT_EQ(1, readVersioned(0, -1, -1));
    EXPECT_EQ(1, readVersioned(0x7FFFFFFF, -1, -1));
    EXPECT_EQ(1, readVersioned(0x80000000, -1, -1));
}

TEST_F(CoreLayoutTest, EqualBoundsAdmitOneVersion) {
    EXPECT_EQ(-4, readVersioned(4, 5, 5));
    EXPECT_EQ(1, readVersioned(5, 5, 5));
    EXPECT_EQ(-4, readVersioned(6, 5, 5));
}

TEST_F(CoreLayoutTest, AVersionWithTheTopBitComparesAsNegative) {
    EXPECT_EQ(1, readVersioned(0x80000000, -1, 0));
    EXPECT_EQ(-4, readVersioned(0x80000000, 0, -1));
}

TEST_F(CoreLayoutTest, AVersionOutOfBoundsIsLoggedInHexadecimal) {
    EXPECT_EQ(-4, readVersioned(0xAB, 0x1, 0x1F));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: version check failed: 1 <= AB <= 1F")));
    EXPECT_EQ(-4, readVersioned(0x80000000, 2, -1));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: version check failed: "
                                                  "2 <= 80000000 <= FFFFFFFF")));
}

TEST_F(CoreLayoutTest, MessagesNeedTheDebugThreshold) {
    logUpTo(Valen::Log::SeverityLevel::SERVICE);
    EXPECT_EQ(-4, readVersioned(1, 2, 2));
    EXPECT_EQ(-7, read(file(core("x", {1})), "x", 1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CoreLayoutTest, WithoutALogTheResultsAreTheSame) {
    Valen::Log::vlLog.reset();
    unsigned int word = 0;
    EXPECT_EQ(-4, readVersioned(1, 2, 2));
    EXPECT_EQ(-8, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
}

TEST_F(CoreLayoutTest, ALayoutInMemoryAnswersAsItsFileDoes) {
    const std::string bytes = core("none", {}) + twoCores + coreClaiming(0xFFFF, "last", {1, 64});
    const struct {
        const char* name;
        int n;
        int count;
        int minimum;
        int maximum;
    } rows[] = {
        {"second", 1, 3, -1, -1}, {"second", 0, 4, -1, -1},   {"second", 1, 4, -1, -1},
        {"first", 1, 1, 0, 2},    {"sec*d", -4, 1, -1, -1},   {"first", -1000, 1, -1, -1},
        {"third", 1, 1, -1, -1},  {"last", 1, 2, -1, -1},     {"last", 0xFFF0, 15, -1, -1},
        {"none", 0, 0, -1, -1},   {"*", 1, 0x7FFFFFFF, 0, 0}, {"second", 2147483647, 2147483647, 0, 9},
    };
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const std::string cut = bytes.substr(0, size);
        const Stream stream = file(cut);
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << row.name << ' ' << row.n << " of " << size << " bytes");
            std::array<unsigned int, 16> fromFile{};
            std::array<unsigned int, 16> fromMemory{};
            std::rewind(stream.get());
            const int result = getPldCoreInfo(stream.get(), row.name, fromFile.data(), row.n, row.count,
                                              row.minimum, row.maximum);
            const auto logged = syslog.lines();
            EXPECT_EQ(result, getPldCoreInfo(std::as_bytes(std::span(cut)), row.name, fromMemory.data(),
                                             row.n, row.count, row.minimum, row.maximum));
            EXPECT_EQ(fromFile, fromMemory);
            EXPECT_EQ(logged, syslog.lines());
        }
    }
}

}  // namespace
