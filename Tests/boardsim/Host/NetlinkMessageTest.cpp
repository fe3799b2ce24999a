#include "Tools/boardsim/Host/NetlinkMessage.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using boardsim::NetlinkMessage;

std::string hex(NetlinkMessage message) {
    std::string text;
    for (const std::byte each : message.bytes()) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        const auto byte = static_cast<unsigned>(each);
        text.append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 0xF]);
    }
    return text;
}

// Numbers are in the order of the machine, and the machines that boards are simulated on begin with the low
// byte.

TEST(NetlinkMessageTest, AMessageIsAHeaderThatWantsAnAnswer) {
    EXPECT_EQ("10000000100005000000000000000000", hex(NetlinkMessage(16, 0)));
    EXPECT_EQ("10000000110005060000000000000000", hex(NetlinkMessage(17, 0x600)));
}

TEST(NetlinkMessageTest, TextsEndWithAZeroAndArePadded) {
    NetlinkMessage message(16, 0);
    message.addText(3, "eth0");
    EXPECT_EQ(
        "1c000000100005000000000000000000"
        "09000300"
        "6574683000000000",
        hex(std::move(message)));
}

TEST(NetlinkMessageTest, AttributesHoldAttributes) {
    NetlinkMessage message(16, 0);
    const std::size_t outer = message.begin(18);
    const std::size_t inner = message.begin(2);
    message.addNumber(28, 0x11223344);
    message.end(inner);
    message.end(outer);
    EXPECT_EQ(
        "20000000100005000000000000000000"
        "10001200"
        "0c000200"
        "08001c00"
        "44332211",
        hex(std::move(message)));
}

}  // namespace
