// Test patterns in places where something is missing or breaks while they are sent.
#include <cerrno>
#include <filesystem>

#include "Tests/HAL/Board/PatternWorld.h"

namespace {

using support::PrivateNetwork;
using testing::ElementsAre;
using testing::IsEmpty;

class SendPatternFaultTest : public PatternWorld {
protected:
    /// Does something once, in the sleep with this number.
    template <typename Action>
    void inSleep(std::size_t number, Action action) {
        files.onSleep = [this, number, action] {
            if (files.sleeps.size() == number) {
                action();
            }
        };
    }

    static support::LogLine lost(unsigned long bytes, unsigned long total, unsigned long before,
                                 unsigned long after) {
        return service("Lost " + std::to_string(bytes) + " Pattern bytes of " + std::to_string(total) +
                       " bytes total (previously sent bytes: " + std::to_string(before) +
                       " after sending: " + std::to_string(after) + ")!");
    }
};

TEST_F(SendPatternFaultTest, WithoutTheInterfaceThereIsNoSendBuffer) {
    PrivateNetwork::ip("link del pattern");
    EXPECT_EQ(-7, send(patternOf(1024)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Unable to set send buffer size")));
    EXPECT_EQ(0, files.readCount());
}

TEST_F(SendPatternFaultTest, AMissingFileIsNamed) {
    EXPECT_EQ(-8, link.sendPattern("/tmp/no such file", checksum, false));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("File not found: /tmp/no such file")));
}

TEST_F(SendPatternFaultTest, TheInterfaceIsLookedForBeforeTheFile) {
    PrivateNetwork::ip("link del pattern");
    EXPECT_EQ(-7, link.sendPattern("/tmp/no such file", checksum, false));
    syslog.lines();
}

TEST_F(SendPatternFaultTest, AnInterfaceThatIsDownTakesNoFrame) {
    PrivateNetwork::ip("link set pattern down");
    EXPECT_EQ(0, send(patternOf(4096)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Raw send failed")));
    EXPECT_EQ(256U, checksum.count);
}

TEST_F(SendPatternFaultTest, AnInterfaceThatGoesDownMeanwhileTakesNoMoreFrames) {
    inSleep(2, [] { PrivateNetwork::ip("link set pattern down"); });
    EXPECT_EQ(0, send(patternOf(4096)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Raw send failed")));
    EXPECT_EQ(2U, received().size());
    EXPECT_EQ(768U, checksum.count);
}

TEST_F(SendPatternFaultTest, WithTheFarEndDownAllBytesAreLost) {
    EXPECT_EQ(1, send(patternOf(100)));
    PrivateNetwork::ip("link set wire down");
    syslog.lines();
    EXPECT_EQ(0, send(patternOf(2048)));
    EXPECT_THAT(syslog.lines(), ElementsAre(sent(2048), lost(2048, 2048, 100, 100)));
}

TEST_F(SendPatternFaultTest, WhenTheFarEndGoesDownMeanwhileTheRestIsLost) {
    inSleep(1, [] { PrivateNetwork::ip("link set wire down"); });
    EXPECT_EQ(0, send(patternOf(2048)));
    EXPECT_THAT(syslog.lines(), ElementsAre(sent(2048), lost(1024, 2048, 0, 1024)));
}

TEST_F(SendPatternFaultTest, OtherTrafficMeanwhileLooksLikeLostBytes) {
    sendOther(60);
    inSleep(2, [] { sendOther(100); });
    EXPECT_EQ(0, send(patternOf(3000)));
    // As many as there were too many: the difference is taken without a sign.
    EXPECT_THAT(syslog.lines(), ElementsAre(sent(3000), lost(-100UL, 3000, 60, 3160)));
}

TEST_F(SendPatternFaultTest, OtherTrafficBeforeAndAfterwardsDoesNotMatter) {
    sendOther(60);
    EXPECT_EQ(1, send(patternOf(3000)));
    sendOther(60);
    EXPECT_EQ(1, send(patternOf(3000)));
}

TEST_F(SendPatternFaultTest, AFileThatIsRemovedMeanwhileIsSentToItsEnd) {
    inSleep(1, [] { std::filesystem::remove(kFile); });
    const std::string bytes = patternOf(4096);
    EXPECT_EQ(1, send(bytes));
    EXPECT_EQ(framesOf(bytes), received());
}

TEST_F(SendPatternFaultTest, AFileThatIsCutOffMeanwhileIsASizeMismatch) {
    inSleep(2, [] { std::filesystem::resize_file(kFile, 2048); });
    EXPECT_EQ(0, send(patternOf(4096)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Bytes read do not match expected: 2036 != 4084")));
    EXPECT_EQ(2U, received().size());
}

TEST_F(SendPatternFaultTest, AFileThatCannotBeReadOnEndsThere) {
    files.reads = {1024, -EIO};
    EXPECT_EQ(0, send(patternOf(4096)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Bytes read do not match expected: 1012 != 4084")));
}

TEST_F(SendPatternFaultTest, ADirectoryIsAnEmptyFile) {
    EXPECT_EQ(0, link.sendPattern("/tmp", checksum, false));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("Bytes read do not match expected: -12 != 0")));
}

TEST_F(SendPatternFaultTest, ShortReadsStillMakeWholeFrames) {
    files.reads = {5, -EINTR, 1000, 19, 300, 724};
    const std::string bytes = patternOf(2048);
    EXPECT_EQ(1, send(bytes));
    EXPECT_EQ(framesOf(bytes), received());
}

TEST_F(SendPatternFaultTest, WithoutACounterAtTheEndAllBytesAreLost) {
    sendOther(60);
    inSleep(3, [] { PrivateNetwork::ip("link del pattern"); });  // the last
    EXPECT_EQ(0, send(patternOf(2048)));
    EXPECT_THAT(syslog.lines(), ElementsAre(sent(2048), lost(2108, 2048, 60, 0)));
}

}  // namespace
