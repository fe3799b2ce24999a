#include "Tools/boardsim/Host/DatagramReader.h"

#include <gmock/gmock.h>
#include <sys/socket.h>

#include <array>

namespace {

using boardsim::DatagramReader;
using boardsim::Descriptor;
using testing::ElementsAre;

class DatagramReaderTest : public testing::Test {
protected:
    DatagramReaderTest() {
        std::array<int, 2> ends{};
        EXPECT_EQ(0, socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends.data()));
        sender = Descriptor(ends[0]);
        receiver = Descriptor(ends[1]);
    }
    void send(const std::string& text) const {
        EXPECT_EQ(static_cast<ssize_t>(text.size()), ::send(sender.get(), text.data(), text.size(), 0));
    }

    Descriptor sender;
    Descriptor receiver;
    std::vector<std::string> taken;
};

TEST_F(DatagramReaderTest, HandsOverAllThatWaitsInOrderAndDoesNotBlock) {
    DatagramReader reader(std::move(receiver), [&](std::string_view text) { taken.emplace_back(text); });
    reader.drain();
    EXPECT_TRUE(taken.empty());
    send("one");
    send("");
    send("three");
    EXPECT_FALSE(reader.drain());
    EXPECT_THAT(taken, ElementsAre("one", "", "three"));
}

TEST_F(DatagramReaderTest, ASenderThatNeverStopsIsLeftInTheEnd) {
    std::size_t count = 0;
    DatagramReader reader(std::move(receiver), [&](std::string_view text) {
        ++count;
        send(std::string(text));
    });
    send("again");
    EXPECT_TRUE(reader.drain());
    EXPECT_GT(count, 512U);
}

TEST_F(DatagramReaderTest, LongDatagramsArriveWhole) {
    DatagramReader reader(std::move(receiver), [&](std::string_view text) { taken.emplace_back(text); });
    const std::string text(100'000, 'x');
    send(text);
    reader.drain();
    EXPECT_THAT(taken, ElementsAre(text));
}

}  // namespace
