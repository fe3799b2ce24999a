#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <ostream>
#include <span>
#include <string>

#include "Tests/HAL/LayoutBytes.h"
#include "Vl/HAL/Fpga/CoreLayout.h"

namespace {

struct Pair {
    const char* pattern;
    const char* name;
    bool match;
};

void PrintTo(const Pair& pair, std::ostream* out) {
    *out << '"' << pair.pattern << "\" and \"" << pair.name << '"';
}

class CoreNameTest : public testing::TestWithParam<Pair> {};

TEST_P(CoreNameTest, IsFoundByItsPattern) {
    std::string layout = core(GetParam().name, {7});
    const std::unique_ptr<FILE, int (*)(FILE*)> stream(fmemopen(layout.data(), layout.size(), "r"),
                                                       &std::fclose);
    unsigned int version = 0;
    const int result = Valen::HAL::getPldCoreInfo(stream.get(), GetParam().pattern, &version, 0, 1, -1, -1);
    EXPECT_EQ(GetParam().match ? 1 : -5, result);
    EXPECT_EQ(GetParam().match ? 7U : 0U, version);
    EXPECT_EQ(result, Valen::HAL::getPldCoreInfo(std::as_bytes(std::span(layout)), GetParam().pattern,
                                                 &version, 0, 1, -1, -1));
}

INSTANTIATE_TEST_SUITE_P(WithoutAStarTheNameMustBeEqual, CoreNameTest,
                         testing::Values(Pair{"cardid", "cardid", true}, Pair{"cardid", "cardid2", false},
                                         Pair{"cardid", "cardi", false}, Pair{"cardid", "Cardid", false},
                                         Pair{"", "", true}, Pair{"", "a", false}, Pair{"a", "", false}));

INSTANTIATE_TEST_SUITE_P(ALeadingStarStandsForAnyBeginning, CoreNameTest,
                         testing::Values(Pair{"*central_sync", "central_sync", true},
                                         Pair{"*central_sync", "x_central_sync", true},
                                         Pair{"*central_sync", "central_sync2", false},
                                         Pair{"*central_sync", "sync", false}));

INSTANTIATE_TEST_SUITE_P(ATrailingStarStandsForAnyEnd, CoreNameTest,
                         testing::Values(Pair{"abc*", "abc", true}, Pair{"abc*", "abcd", true},
                                         Pair{"abc*", "ab", false}, Pair{"abc*", "xabc", false}));

INSTANTIATE_TEST_SUITE_P(AStarInBetweenStandsForZeroOrMore, CoreNameTest,
                         testing::Values(Pair{"a*c", "ac", true}, Pair{"a*c", "abc", true},
                                         Pair{"a*c", "ab", false}, Pair{"a*c", "bc", false},
                                         Pair{"a*c", "abcd", false}));

INSTANTIATE_TEST_SUITE_P(BeginningAndEndDoNotOverlap, CoreNameTest,
                         testing::Values(Pair{"ab*bc", "abc", false}, Pair{"ab*bc", "abbc", true},
                                         Pair{"a*a", "a", false}));

INSTANTIATE_TEST_SUITE_P(OnlyTheFirstStarIsOne, CoreNameTest,
                         testing::Values(Pair{"a**", "a*", true}, Pair{"a**", "axyz*", true},
                                         Pair{"a**", "ab", false}, Pair{"*b*", "xb*", true},
                                         Pair{"*b*", "abc", false}));

INSTANTIATE_TEST_SUITE_P(AStarAloneMatchesEverything, CoreNameTest,
                         testing::Values(Pair{"*", "", true}, Pair{"*", "anything", true}));

}  // namespace
