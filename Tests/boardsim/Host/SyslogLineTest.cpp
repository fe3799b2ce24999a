#include "Tools/boardsim/Host/SyslogLine.h"

#include <gtest/gtest.h>

namespace {

using boardsim::readableSyslogLine;

struct Line {
    std::string datagram;
    std::string readable;
};

class SyslogLineTest : public testing::TestWithParam<Line> {};

TEST_P(SyslogLineTest, ReadsAsALine) {
    EXPECT_EQ(GetParam().readable, readableSyslogLine(GetParam().datagram));
}

INSTANTIATE_TEST_SUITE_P(WellFormed, SyslogLineTest,
                         testing::Values(Line{"<134>Nov 21 07:51:00 panelprobe: Logging: text",
                                              "local0.info panelprobe: Logging: text"},
                                         Line{"<139>Nov  1 07:51:00 tool[7]: x", "local1.err tool[7]: x"},
                                         Line{"<0>Jan 31 23:59:59 k: x", "kern.emerg k: x"},
                                         Line{"<191>Jan 31 23:59:59 k: x", "local7.debug k: x"},
                                         Line{"<13>no time stamp", "user.notice no time stamp"},
                                         Line{"<13>", "user.notice "},
                                         Line{"<148>Nov 21 07:51:00 ", "local2.warning "},
                                         Line{"<14>Nov 21 07:51:00 a: b\n\n", "user.info a: b"},
                                         Line{std::string("<14>a: b\0", 9), "user.info a: b"}));

INSTANTIATE_TEST_SUITE_P(WithoutAPriority, SyslogLineTest,
                         testing::Values(Line{"", "user.notice "}, Line{"plain", "user.notice plain"},
                                         Line{"<", "user.notice <"}, Line{"<>x", "user.notice <>x"},
                                         Line{"<14", "user.notice <14"}, Line{"<192>x", "user.notice <192>x"},
                                         Line{"<-1>x", "user.notice <-1>x"},
                                         Line{"<99999999999>x", "user.notice <99999999999>x"},
                                         Line{"<1a>x", "user.notice <1a>x"}));

INSTANTIATE_TEST_SUITE_P(OddBytes, SyslogLineTest,
                         testing::Values(Line{"<14>a\nb\tc", "user.info a#012b#011c"},
                                         Line{"<14>\x1b[31m", "user.info #033[31m"},
                                         Line{"<14>\x7f", "user.info #177"},
                                         Line{std::string("<14>a\0b", 7), "user.info a#000b"},
                                         Line{"<14>\xC3\x28\xFF\x80", "user.info \xC3\x28\xFF\x80"},
                                         Line{"<14>Nov 21 07:51:0x y", "user.info Nov 21 07:51:0x y"}));

}  // namespace
