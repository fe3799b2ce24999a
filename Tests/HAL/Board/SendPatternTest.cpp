#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "Tests/HAL/Board/PatternWorld.h"

namespace {

using namespace std::chrono_literals;
using support::LogLine;
using support::PrivateNetwork;
using support::PrivateWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::JenkinsChecksum;

/// The checksum of the file as another program reckons it.
JenkinsChecksum independentChecksum(const std::string& arguments) {
    const std::string command = "/usr/bin/python3 -IS " PATTERN_CHECKSUM " " + arguments;
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
    JenkinsChecksum checksum;
    EXPECT_EQ(2, std::fscanf(output.get(), "%u %u", &checksum.hash, &checksum.count)) << command;
    return checksum;
}

class SendPatternTest : public PatternWorld {};

TEST_F(SendPatternTest, AGoodFileArrivesInFramesOf1024BytesWithEveryByteCounted) {
    for (const std::size_t size : {16U, 400U, 1024U, 1040U, 4096U, 50'000U}) {
        const std::string bytes = patternOf(size);
        const unsigned long before = transmitted();
        EXPECT_EQ(1, send(bytes)) << size;
        EXPECT_EQ(framesOf(bytes), received());
        EXPECT_EQ(size, transmitted() - before);
        EXPECT_THAT(syslog.lines(), ElementsAre(sent(static_cast<long>(size))));
    }
}

TEST_F(SendPatternTest, TheChecksumIsTheOneThatAnotherProgramReckons) {
    for (const std::size_t size : {16U, 1021U, 1024U, 1025U + 14, 5003U}) {
        checksum = {};
        send(patternOf(size));
        EXPECT_EQ(independentChecksum(kFile), checksum) << size;
    }
}

TEST_F(SendPatternTest, TheChecksumGoesOnFromWhereItWas) {
    EXPECT_EQ(1, send(patternOf(1024)));
    const JenkinsChecksum once = checksum;
    EXPECT_EQ(1, send(patternOf(1024)));
    EXPECT_EQ(2 * once.count, checksum.count);
    EXPECT_NE(once.hash, checksum.hash);
}

TEST_F(SendPatternTest, CorruptedFramesDifferFromTheFileInOneBitAndTheChecksumIsTheirs) {
    const std::string bytes = patternOf(2048);
    EXPECT_EQ(1, send(bytes, true));
    std::string altered = bytes;
    altered[12] = static_cast<char>(altered[12] ^ 1);
    EXPECT_EQ(framesOf(altered), received());
    EXPECT_EQ(independentChecksum(kFile + std::string(" corrupt")), checksum);
    EXPECT_NE(independentChecksum(kFile), checksum);
    EXPECT_EQ(bytes, PrivateWorld::read(kFile));
}

TEST_F(SendPatternTest, FramesGoOutEveryTenMillisecondsAndTheCounterIsReadAfterAHundredMore) {
    int openAtTheEnd = -1;
    files.onSleep = [&] { openAtTheEnd = descriptorsOn(kFile); };
    EXPECT_EQ(1, send(patternOf(2100)));
    EXPECT_THAT(files.sleeps, ElementsAre(10ms, 10ms, 10ms, 100ms));
    EXPECT_EQ(0, openAtTheEnd);
}

TEST_F(SendPatternTest, NoDescriptorStaysOpenWhateverComes) {
    const auto count = [] {
        using Entries = std::filesystem::directory_iterator;
        return std::distance(Entries("/proc/self/fd"), Entries());
    };
    const auto before = count();
    EXPECT_EQ(1, send(patternOf(1024)));
    EXPECT_EQ(0, send(patternOf(1024, 1)));
    EXPECT_EQ(-8, link.sendPattern("/tmp/none", checksum, false));
    PrivateNetwork::ip("link set pattern down");
    EXPECT_EQ(0, send(patternOf(1024)));
    PrivateNetwork::ip("link del pattern");
    EXPECT_EQ(-7, send(patternOf(1024)));
    EXPECT_EQ(before, count());
}

/// What a file is like, and what is said of it after its frames have gone out.
struct Row {
    const char* what;
    std::size_t size;
    std::uint32_t words;
    long read;
    long expected;
};

TEST_F(SendPatternTest, AFileThatIsNotAsLongAsItSaysIsSentButDoesNotCount) {
    constexpr auto kRows = std::to_array<Row>({
        {"a word too few", 1024, 254, 1012, 1016},
        {"a word too many", 1024, 252, 1012, 1008},
        {"a byte too many", 1025 + 14, 256, 1027, 1024},
        {"the last word half there", 1038, 257, 1026, 1028},
        {"nothing announced", 40, 0, 28, 0},
        {"the longest of all", 40, 0xFFFFFFFF, 28, 17179869180},
    });
    for (const Row& row : kRows) {
        const std::string bytes = patternOf(row.size, row.words);
        checksum = {};
        EXPECT_EQ(0, send(bytes)) << row.what;
        EXPECT_EQ(framesOf(bytes), received()) << row.what;
        EXPECT_EQ(independentChecksum(kFile), checksum) << row.what;
        EXPECT_THAT(syslog.lines(),
                    ElementsAre(service("Bytes read do not match expected: " + std::to_string(row.read) +
                                        " != " + std::to_string(row.expected))))
            << row.what;
    }
}

TEST_F(SendPatternTest, AnEmptyFileIsASizeMismatch) {
    for (const bool corrupt : {false, true}) {
        EXPECT_EQ(0, send("", corrupt));
        EXPECT_THAT(syslog.lines(), ElementsAre(service("Bytes read do not match expected: -12 != 0")));
        EXPECT_THAT(received(), IsEmpty());
        EXPECT_EQ(JenkinsChecksum{}, checksum);
    }
}

TEST_F(SendPatternTest, WhatIsShorterThanAnEthernetHeaderCannotBeSentButIsInTheChecksum) {
    for (const std::size_t size : {1U, 11U, 12U, 13U}) {  // 12: a file without payload
        checksum = {};
        EXPECT_EQ(0, send(patternOf(size, 0))) << size;
        EXPECT_THAT(syslog.lines(), ElementsAre(service("Raw send failed"))) << size;
        EXPECT_EQ(independentChecksum(kFile), checksum) << size;
    }
    EXPECT_EQ(0, send(patternOf(1024 + 4)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Raw send failed")));
    EXPECT_EQ(1U, received().size());
}

TEST_F(SendPatternTest, EverythingButTheWorstIsToldInTheServiceLog) {
    logUpTo(Valen::Log::SeverityLevel::SERVICE);
    EXPECT_EQ(1, send(patternOf(1024)));
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_EQ(0, send(""));
    EXPECT_EQ(1U, syslog.lines().size());
    logUpTo(Valen::Log::SeverityLevel::INFO);
    EXPECT_EQ(0, send(""));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

}  // namespace
