#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <vector>

/// The four functions of an enumeration, whatever its type is called.
struct Enumeration {
    const char* name;
    const char* (*textOf)(int);
    int (*typeOf)(const char*);
    bool (*isValid)(long);
    int (*size)();
};

template <auto GetText, auto GetType, auto IsValidNum, auto Size>
constexpr Enumeration enumerationOf(const char* name) {
    using Value = decltype(GetType(""));
    return {name, [](int value) { return GetText(static_cast<Value>(value)); },
            [](const char* text) { return static_cast<int>(GetType(text)); }, IsValidNum, Size};
}

/// The functions of Enums::NAME.
#define ENUMERATION(NAME)                                                                                  \
    enumerationOf<Enums::NAME::GetText, Enums::NAME::GetType, Enums::NAME::IsValidNum, Enums::NAME::Size>( \
        #NAME)

/// Beyond every value that any enumeration has.
inline constexpr int kBeyondAll = 20000;

/// Numbers of which none belongs to any enumeration; some would when their upper half was lost.
inline const std::vector<long> kStrangeNumbers = {LONG_MIN, LONG_MIN + 1, INT_MIN,        -1,      kBeyondAll,
                                                  INT_MAX,  1L << 32,     (1L << 32) + 1, LONG_MAX};

/// Expects the texts, no other number valid, and each text to lead back to its number.
inline void expectExactly(const Enumeration& enumeration, const std::map<int, std::string>& texts) {
    for (const auto& [number, text] : texts) {
        EXPECT_EQ(text, enumeration.textOf(number)) << number;
        EXPECT_EQ(number, enumeration.typeOf(text.c_str())) << text;
    }
    for (int number = -1000; number < kBeyondAll; ++number) {
        EXPECT_EQ(texts.contains(number), enumeration.isValid(number)) << number;
    }
    for (const long number : kStrangeNumbers) {
        EXPECT_FALSE(enumeration.isValid(number)) << number;
    }
}

/// Expects every number that has no text to read "unknown".
inline void expectOthersUnknown(const Enumeration& enumeration, const std::map<int, std::string>& texts) {
    for (int number = -1000; number < kBeyondAll; ++number) {
        if (!texts.contains(number)) {
            EXPECT_STREQ("unknown", enumeration.textOf(number)) << number;
        }
    }
    EXPECT_STREQ("unknown", enumeration.textOf(INT_MIN));
    EXPECT_STREQ("unknown", enumeration.textOf(INT_MAX));
}
