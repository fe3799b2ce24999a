// What an OutputStream writes, an InputStream reads back.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "Vl/Common/Streams/InputStream.h"
#include "Vl/Common/Streams/OutputStream.h"

namespace {

using Valen::InputStream;
using Valen::OutputStream;

using Check = std::function<void(InputStream&)>;

/// Writes a value of one kind and returns what must be read.
Check putAny(OutputStream& out, std::mt19937_64& random) {
    const std::uint64_t value = random();
    switch (random() % 10) {
        case 0:
            out.putUInt8(static_cast<int>(value));
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::uint8_t>(value), in.getUInt8()); };
        case 1:
            out.putUInt8(static_cast<std::int8_t>(value));
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::int8_t>(value), in.getInt8()); };
        case 2:
            out.putUInt16(static_cast<std::uint16_t>(value));
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::uint16_t>(value), in.getUInt16()); };
        case 3:
            out.putUInt16(static_cast<std::uint16_t>(value));
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::int16_t>(value), in.getInt16()); };
        case 4:
            out.putUInt32(static_cast<std::uint32_t>(value));
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::uint32_t>(value), in.getUInt32()); };
        case 5:
            out.putUInt32(static_cast<std::uint32_t>(value));
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::int32_t>(value), in.getInt32()); };
        case 6:
            out.putUInt64(value);
            return [value](InputStream& in) { EXPECT_EQ(value, in.getUInt64()); };
        case 7:
            out.putUInt64(value);
            return [value](InputStream& in) { EXPECT_EQ(static_cast<std::int64_t>(value), in.getInt64()); };
        case 8:
            out.putBool((value & 1) != 0);
            return [value](InputStream& in) { EXPECT_EQ((value & 1) != 0, in.getBool()); };
        default:
            const std::string text(value % 256, static_cast<char>('a' + value % 26));
            out.putString(text.c_str());
            return [text](InputStream& in) { EXPECT_EQ(text, in.getString().c_str()); };
    }
}

TEST(StreamRoundTripTest, MixedValuesComeBackInOrder) {
    std::mt19937_64 random(5);
    for (const int capacity : {0, 1, 7, 15000}) {
        OutputStream out(capacity);
        std::vector<Check> checks;
        for (int i = 0; i < 2000; ++i) {
            checks.push_back(putAny(out, random));
        }
        InputStream in(out);
        for (const Check& check : checks) {
            check(in);
        }
        EXPECT_TRUE(in.eof());
        EXPECT_EQ(0, in.GetRemainingSize());
    }
}

TEST(StreamRoundTripTest, ALongTextComesBackCut) {
    OutputStream out;
    out.putString(std::string(300, 'x').c_str());
    InputStream in(out);
    EXPECT_EQ(std::string(255, 'x'), in.getString().c_str());
    EXPECT_TRUE(in.eof());
}

}  // namespace
