#include "Tools/boardsim/Host/ControlChannel.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <array>
#include <system_error>

namespace {

using boardsim::ControlChannel;
using boardsim::ControlKind;
using boardsim::ControlMessage;

class ControlChannelTest : public testing::Test {
protected:
    ControlChannelTest() : ControlChannelTest(ControlChannel::makePair()) {}
    explicit ControlChannelTest(std::pair<ControlChannel, ControlChannel> pair)
        : here(std::move(pair.first)), there(std::move(pair.second)) {}

    ControlChannel here;
    ControlChannel there;
};

TEST_F(ControlChannelTest, MessagesArriveWholeAndInOrder) {
    here.send(ControlKind::Signal, 15);
    here.send(ControlKind::Failed, 0, "two\nlines");
    here.send(ControlKind::Ended, -1);
    const auto first = there.receive();
    const auto second = there.receive();
    const auto third = there.receive();
    ASSERT_TRUE(first && second && third);
    EXPECT_EQ(ControlKind::Signal, first->kind);
    EXPECT_EQ(15, first->value);
    EXPECT_EQ("two\nlines", second->text);
    EXPECT_FALSE(second->descriptor);
    EXPECT_EQ(-1, third->value);
}

TEST_F(ControlChannelTest, ADescriptorArrivesOpenAndCloseOnExec) {
    std::array<int, 2> pipeEnds{};
    ASSERT_EQ(0, pipe2(pipeEnds.data(), O_CLOEXEC));
    const boardsim::Descriptor reading(pipeEnds[0]);
    boardsim::Descriptor writing(pipeEnds[1]);
    here.send(ControlKind::LogSocket, 0, {}, writing.get());
    writing.reset();

    const auto message = there.receive();
    ASSERT_TRUE(message && message->descriptor);
    EXPECT_EQ(FD_CLOEXEC, fcntl(message->descriptor.get(), F_GETFD));
    EXPECT_EQ(1, write(message->descriptor.get(), "x", 1));
    char byte = 0;
    EXPECT_EQ(1, read(reading.get(), &byte, 1));
    EXPECT_EQ('x', byte);
}

TEST_F(ControlChannelTest, ReportsTheOtherSidesEnd) {
    here.close();
    EXPECT_FALSE(there.receive());
}

TEST_F(ControlChannelTest, SendingToNobodyThrowsAndRaisesNoSignal) {
    there.close();
    EXPECT_THROW(here.send(ControlKind::Signal, 15), std::system_error);
}

TEST_F(ControlChannelTest, LongTextsAreCut) {
    here.send(ControlKind::Failed, 0, std::string(10'000, 'x'));
    const auto message = there.receive();
    ASSERT_TRUE(message);
    EXPECT_EQ(std::string(4000, 'x'), message->text);
}

}  // namespace
