#include "Tools/boardsim/Board/EepromImage.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using boardsim::EepromField;
using boardsim::EepromFieldType;
using boardsim::encodeEeprom;

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
        text += static_cast<char>(value);
    }
    return text;
}

// Checksums by Python's binascii.crc_hqx(field, 0).

TEST(EepromImageTest, EndsWithAnEndField) {
    EXPECT_EQ(bytes({0xA6, 0xAA, 0, 0, 6, 0}), encodeEeprom({}));
}

TEST(EepromImageTest, AFieldHasChecksumTypeAndLengthInFront) {
    const std::array fields{EepromField{EepromFieldType::Pcb, "abc"}};
    EXPECT_EQ(bytes({0x49, 0x55, 2, 0, 9, 0, 'a', 'b', 'c'}), encodeEeprom(fields).substr(0, 9));
}

}  // namespace
