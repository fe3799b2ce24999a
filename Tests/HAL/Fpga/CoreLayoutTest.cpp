#include "Vl/HAL/Fpga/CoreLayout.h"

#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Vl/Common/Log/LogInterface.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::getPldCoreAddress;
using Valen::HAL::getPldCoreInfo;

using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;

class CoreLayoutTest : public BoardWorld {
protected:
    CoreLayoutTest() { logUpTo(Valen::Log::SeverityLevel::DEBUG); }

    /// A file; one can seek behind its end.
    static Stream file(const std::string& bytes) {
        Stream stream(std::tmpfile(), &std::fclose);
        std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
        std::rewind(stream.get());
        return stream;
    }

    /// A stream in which one cannot seek behind the end.
    static Stream memory(std::string& bytes) {
        return {fmemopen(bytes.data(), bytes.size(), "r"), &std::fclose};
    }

    /// Reads word n whatever the version.
    static int read(const Stream& stream, const char* name, int n, unsigned int& word) {
        return getPldCoreInfo(stream.get(), name, &word, n, 1, -1, -1);
    }
    static int read(const Stream& stream, const char* name, int n) {
        unsigned int word = 0;
        return read(stream, name, n, word);
    }

    static int readVersioned(std::uint32_t version, int minimum, int maximum) {
        unsigned int word = 0;
        return getPldCoreInfo(file(core("x", {version, 64})).get(), "x", &word, 1, 1, minimum, maximum);
    }

    const std::string twoCores =
        core("first", {0x00010002, 0x12345678}) + core("second", {0x03, 0x40, 0x80, 0xFFFEFDFC});
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

TEST_F(CoreLayoutTest, AFailedSkipOfAShortCoreIsLoggedLikeThatOfALongOne) {
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

TEST_F(CoreLayoutTest, AMissingCoreIsNotLogged) {
    EXPECT_EQ(-5, read(file(twoCores), "third", 1));
    EXPECT_EQ(-5, read(file(""), "third", 1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CoreLayoutTest, AShortWordCountIsNotLogged) {
    EXPECT_EQ(-5, read(file(std::string("x\0\0", 3)), "x", 1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CoreLayoutTest, AShortVersionIsLogged) {
    EXPECT_EQ(-5, read(file(std::string("x\0\0\2\0\0\0", 7)), "x", 1));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read version")));
}

TEST_F(CoreLayoutTest, ShortWordsAreLogged) {
    EXPECT_EQ(-5, read(file(coreClaiming(3, "x", {1, 64})), "x", 2));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read info")));
}

TEST_F(CoreLayoutTest, AFailedSkipIsLoggedWithTwiceTheNumberOfWordsOnPurpose) {
    std::string bytes = coreClaiming(300, "other", {1, 64});
    EXPECT_EQ(-5, read(memory(bytes), "x", 1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read skip info: 600")));
}

TEST_F(CoreLayoutTest, ALayoutThatCannotSeekFailsAtTheFirstOtherCore) {
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    ASSERT_EQ(static_cast<ssize_t>(twoCores.size()), write(ends[1], twoCores.data(), twoCores.size()));
    close(ends[1]);
    EXPECT_EQ(-5, read(Stream(fdopen(ends[0], "r"), &std::fclose), "second", 1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: GetPLDCoreInfo: short read skip info: 4")));
}

TEST_F(CoreLayoutTest, ALayoutCutAnywhereMissesItsLastCore) {
    for (std::size_t size = 1; size < twoCores.size(); ++size) {
        SCOPED_TRACE(size);
        std::string cut = twoCores.substr(0, size);
        EXPECT_EQ(-5, read(file(cut), "second", 3));
        EXPECT_EQ(-5, read(memory(cut), "second", 3));
        syslog.lines();  // the socket holds only a few
    }
    EXPECT_EQ(1, read(file(twoCores), "second", 3));
}

TEST_F(CoreLayoutTest, HugeWordCountsLeadNowhere) {
    std::string other = coreClaiming(0xFFFF, "other", {1, 64}) + core("x", {1, 64});
    EXPECT_EQ(-5, read(file(other), "x", 1));
    EXPECT_EQ(-5, read(memory(other), "x", 1));
    EXPECT_EQ(-5, read(file(coreClaiming(0xFFFF, "x", {1, 64})), "x", 0xFFFE));
}

TEST_F(CoreLayoutTest, AbsurdWordNumbersAreRefused) {
    unsigned int word = 0;
    EXPECT_EQ(-7, getPldCoreInfo(file(twoCores).get(), "first", &word, INT_MAX, INT_MAX, -1, -1));
    EXPECT_EQ(-5, getPldCoreInfo(file(twoCores).get(), "first", &word, INT_MIN, 1, -1, -1));
    EXPECT_EQ(-5, getPldCoreInfo(file(twoCores).get(), "first", &word, -1000, 1, -1, -1));
    EXPECT_EQ(1, getPldCoreInfo(file(twoCores).get(), "first", &word, 1, 0, -1, -1));
    EXPECT_EQ(0U, word);
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

TEST_F(CoreLayoutTest, LayoutsOfAnyLengthAreReadWhole) {
    const auto layoutOf = [](std::size_t size) {
        // A record of 4 + 4 bytes goes before the end.
        return std::string(size - 12, 'x') + std::string("\0\0\0", 3) + core("y", {9}).substr(0, 8);
    };
    for (const auto size : std::to_array<std::size_t>({100, 8191, 8192, 8193, 16384, 100000})) {
        SCOPED_TRACE(size);
        writeLayout("fpga", layoutOf(size));
        const auto bytes = Valen::HAL::readLayout("fpga");
        ASSERT_TRUE(bytes);
        EXPECT_EQ(layoutOf(size).size(), bytes->size());
        unsigned int word = 0;
        EXPECT_EQ(1, getPldCoreInfo("fpga", "y", &word, 0, -1, -1));
        EXPECT_EQ(9U, word);
    }
}

TEST_F(CoreLayoutTest, ALayoutThatCannotBeReadHoldsNoCore) {
    support::PrivateWorld::makeDirectory("/sys/bus/avalon/devices/fpga/layout");
    unsigned int word = 0;
    EXPECT_EQ(-5, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CoreLayoutTest, EveryDeviceHasALayoutOfItsOwn) {
    writeLayout("fpga", core("x", {1, 0x1040}));
    writeLayout("cpld", core("x", {1, 0x2040}));
    unsigned int word = 0;
    EXPECT_EQ(1, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
    EXPECT_EQ(0x1040U, word);
    EXPECT_EQ(1, getPldCoreInfo("cpld", "x", &word, 1, -1, -1));
    EXPECT_EQ(0x2040U, word);
    EXPECT_EQ(0, descriptorsOn("/sys/bus/avalon/devices/fpga/layout"));
}

TEST_F(CoreLayoutTest, AMissingLayoutIsAnError) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    unsigned int word = 0;
    EXPECT_EQ(-8, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
    EXPECT_EQ(-8, getPldCoreAddress("cpld", "x", &word, 1, -1, -1));
    EXPECT_EQ(-1, getPldCoreAddress("other", "x", 1, -1, -1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: could not find: /sys/bus/avalon/devices/fpga/layout"),
                            error("CPCardInterface: could not find: /sys/bus/avalon/devices/cpld/layout"),
                            error("CPCardInterface: could not find: /sys/bus/avalon/devices/other/layout")));
}

TEST_F(CoreLayoutTest, AddressesLoseTheirLowSixBits) {
    writeLayout("fpga", core("x", {1, 0xFFFFFFFF}));
    unsigned int address = 0;
    EXPECT_EQ(1, getPldCoreAddress("fpga", "x", &address, 1, -1, -1));
    EXPECT_EQ(0xFFFFFFC0U, address);
    EXPECT_EQ(0xFFFFFFC0L, getPldCoreAddress("fpga", "x", 1, -1, -1));
}

TEST_F(CoreLayoutTest, AFailedAddressLookupClearsLowBitsTooOnPurpose) {
    unsigned int address = 0xFFFFFFFF;
    EXPECT_EQ(-8, getPldCoreAddress("fpga", "x", &address, 1, -1, -1));
    EXPECT_EQ(0xFFFFFFC0U, address);
    writeLayout("fpga", core("y", {1, 64}));
    address = 0x7F;
    EXPECT_EQ(-5, getPldCoreAddress("fpga", "x", &address, 1, -1, -1));
    EXPECT_EQ(0x40U, address);
}

TEST_F(CoreLayoutTest, TheShortFormFoldsEveryFailureIntoMinusOne) {
    writeLayout("fpga", core("x", {5, 64}));
    EXPECT_EQ(64, getPldCoreAddress("fpga", "x", 1, 5, 5));
    EXPECT_EQ(-1, getPldCoreAddress("fpga", "x", 1, 6, 6));
    EXPECT_EQ(-1, getPldCoreAddress("fpga", "x", 2, -1, -1));
    EXPECT_EQ(-1, getPldCoreAddress("fpga", "y", 1, -1, -1));
    EXPECT_EQ(-1, getPldCoreAddress("cpld", "x", 1, -1, -1));
}

}  // namespace
