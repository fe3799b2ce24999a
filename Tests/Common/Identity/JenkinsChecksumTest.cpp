#include "Vl/Common/Identity/JenkinsChecksum.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

using Valen::JenkinsChecksum;

/// The mixing step in arithmetic modulo 2^32, without a 32-bit operation.
std::uint64_t plainStep(std::uint64_t state, std::uint64_t word) {
    constexpr std::uint64_t kModulus = 1ULL << 32;
    const std::uint64_t sum = (word + state + state * 1024) % kModulus;
    const std::uint64_t inverted = kModulus - 1 - state / 64;
    return sum ^ inverted;
}

unsigned int calculate(const std::vector<unsigned int>& words, unsigned int seed) {
    return JenkinsChecksum::calculate(words.data(), static_cast<int>(words.size()), seed);
}

TEST(JenkinsChecksumTest, OfAnEmptyBlockIsTheSeed) {
    EXPECT_EQ(0U, JenkinsChecksum::calculate(nullptr, 0, 0));
    EXPECT_EQ(0xDEADBEEFU, JenkinsChecksum::calculate(nullptr, 0, 0xDEADBEEF));
}

TEST(JenkinsChecksumTest, ANegativeNumberOfWordsReadsNothing) {
    EXPECT_EQ(7U, JenkinsChecksum::calculate(nullptr, -1, 7));
    JenkinsChecksum checksum;
    checksum.data(nullptr, -5);
    EXPECT_EQ(0U, checksum.hash);
    EXPECT_EQ(0U, checksum.count);
}

TEST(JenkinsChecksumTest, OneWordIsMixedByHand) {
    // 0 + 0 + 0, XOR NOT 0
    EXPECT_EQ(0xFFFFFFFFU, calculate({0}, 0));
    // 1 + 0 + 0, XOR NOT 0
    EXPECT_EQ(0xFFFFFFFEU, calculate({1}, 0));
    // 2 + 0x40 + 0x10000, XOR NOT 1
    EXPECT_EQ(0xFFFEFFBCU, calculate({2}, 0x40));
}

TEST(JenkinsChecksumTest, ShiftsThePreviousStateByADistanceOfSixAndNotTheSum) {
    // The sum, 0x40, shifted by 6 would be 1.
    EXPECT_EQ(0xFFFFFFBFU, calculate({0x40}, 0));
}

TEST(JenkinsChecksumTest, WrapsAtThirtyTwoBits) {
    // 0xFFFFFFFF + 0xFFFFFFFF + 0xFFFFFC00, XOR NOT 0x03FFFFFF
    EXPECT_EQ(0xFFFFFBFEU ^ 0xFC000000U, calculate({0xFFFFFFFF}, 0xFFFFFFFF));
}

TEST(JenkinsChecksumTest, AgreesWithTheStepInPlainArithmetic) {
    std::mt19937 random(1);
    for (int block = 0; block < 100; ++block) {
        const auto seed = static_cast<unsigned int>(random());
        std::vector<unsigned int> words(random() % 300);
        std::uint64_t expected = seed;
        for (unsigned int& word : words) {
            word = static_cast<unsigned int>(random());
            expected = plainStep(expected, word);
        }
        ASSERT_EQ(expected, calculate(words, seed));
    }
}

TEST(JenkinsChecksumTest, ARunningChecksumBeginsAtZeroAndCountsItsWords) {
    const std::vector<unsigned int> words{3, 1, 4, 1, 5, 9, 2, 6};
    JenkinsChecksum checksum;
    EXPECT_EQ(0U, checksum.hash);
    EXPECT_EQ(0U, checksum.count);
    checksum.data(words.data(), 3);
    checksum.data(words.data(), 0);
    checksum.data(words.data() + 3, 5);
    EXPECT_EQ(calculate(words, 0), checksum.hash);
    EXPECT_EQ(8U, checksum.count);
}

TEST(JenkinsChecksumTest, TheOrderOfWordsMatters) {
    EXPECT_NE(calculate({1, 2}, 0), calculate({2, 1}, 0));
}

}  // namespace
