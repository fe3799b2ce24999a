#include "Tools/boardsim/Board/IdentityMemory.h"

#include <gtest/gtest.h>

#include <array>

#include "Tools/boardsim/Board/EepromImage.h"

namespace {

using boardsim::EepromField;
using boardsim::EepromFieldType;
using boardsim::encodeEeprom;
using boardsim::encodeIdentity;
using boardsim::IdentityMemory;

/// The byte at a place of the field that begins at the memory's first byte.
unsigned at(const std::string& memory, std::size_t place) {
    return static_cast<unsigned char>(memory.at(place));
}

TEST(IdentityMemoryTest, WithoutAnythingHasOnlyItsEnd) {
    EXPECT_EQ(encodeEeprom({}), encodeIdentity({}));
}

TEST(IdentityMemoryTest, TheDevicesDigitsArePackedFromByteSix) {
    IdentityMemory memory;
    memory.device = {2100000012345, 0xA17C3, {0x0102030405060708, 42}};
    const std::string bytes = encodeIdentity(memory);
    const unsigned expected[] = {0x21, 0x00, 0x00, 0x00, 0x12, 0x34, 0x5A, 0x17, 0xC3};
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(expected[i], at(bytes, 6 + i)) << i;
    }
    EXPECT_EQ(1U, at(bytes, 2)) << "type";
    EXPECT_EQ(8U, at(bytes, 24));
    EXPECT_EQ(1U, at(bytes, 31));
    EXPECT_EQ(42U, at(bytes, 32));
    EXPECT_EQ(40U, at(bytes, 4)) << "length";
}

TEST(IdentityMemoryTest, TheCircuitBoardsVersionIsAtByte40) {
    IdentityMemory memory;
    memory.pcb = {0x0102, 0x0304, "01a"};
    const std::string bytes = encodeIdentity(memory);
    EXPECT_EQ(2U, at(bytes, 2)) << "type";
    EXPECT_EQ(0x02U, at(bytes, 40));
    EXPECT_EQ(0x01U, at(bytes, 41));
    EXPECT_EQ(0x04U, at(bytes, 42));
    EXPECT_EQ(0x03U, at(bytes, 43));
    EXPECT_EQ("01a", bytes.substr(44, 3));
}

TEST(IdentityMemoryTest, AddressesAndSandwichAreFieldsBehindThem) {
    IdentityMemory memory;
    memory.macs = {{2, 0, 0x5E, 1, 2, 3}, {2, 0, 0x5E, 1, 2, 4}};
    memory.sandwich = "bread";
    using namespace std::string_literals;
    const std::array fields{
        EepromField{EepromFieldType::MacAddresses, "\x02\x00\x5E\x01\x02\x03\x02\x00\x5E\x01\x02\x04"s},
        EepromField{EepromFieldType::Sandwich, "bread"}};
    EXPECT_EQ(encodeEeprom(fields), encodeIdentity(memory));
}

}  // namespace
