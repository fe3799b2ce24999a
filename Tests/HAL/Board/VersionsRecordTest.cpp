#include "Vl/HAL/Board/VersionsRecord.h"

#include <gmock/gmock.h>

#include <string>

#include "Tests/HAL/Board/EepromFields.h"
#include "Vl/HAL/Board/Eeprom.h"

namespace {

using std::string_literals::operator""s;
using Valen::VersionsRecord;

/// A whole field of 48 zeros, header included, with `bytes` at `position`.
std::string fieldWith(std::size_t position, const std::string& bytes) {
    std::string body(42, '\0');
    body.replace(position - 6, bytes.size(), bytes);
    return field(1, body);
}

template <typename Record>
void takeAs(VersionsRecord& versions, const std::string& bytes) {
    versions.take(*static_cast<const Record*>(reinterpret_cast<const Valen::eeprom::Field*>(bytes.data())));
}

VersionsRecord fromDevice(const std::string& bytes) {
    VersionsRecord versions;
    takeAs<Valen::eeprom::DeviceDescription>(versions, bytes);
    return versions;
}

VersionsRecord fromPcb(const std::string& bytes) {
    VersionsRecord versions;
    takeAs<Valen::eeprom::PcbDescription>(versions, bytes);
    return versions;
}

TEST(VersionsRecord, IsAllZeroAtFirst) {
    const VersionsRecord versions;
    EXPECT_EQ(0u, versions.serial);
    EXPECT_EQ(0u, versions.deviceValue1);
    EXPECT_EQ(0u, versions.deviceValue2);
    EXPECT_EQ(0u, versions.pcbVersion);
    EXPECT_EQ(0u, versions.pcbRevision);
    EXPECT_EQ(0u, versions.reserved);
    EXPECT_EQ("", versions.serialText);
}

TEST(VersionsRecord, TheSerialIsThirteenDigitsFromByteSixOn) {
    EXPECT_EQ(1234567890123u, fromDevice(fieldWith(6, "\x12\x34\x56\x78\x90\x12\x34"s)).serial);
    EXPECT_EQ(9999999999999u, fromDevice(fieldWith(6, "\x99\x99\x99\x99\x99\x99\x90"s)).serial);
    EXPECT_EQ(1u, fromDevice(fieldWith(6, "\x00\x00\x00\x00\x00\x00\x1F"s)).serial);
}

TEST(VersionsRecord, NibblesThatAreNoDigitsCarry) {
    EXPECT_EQ(15u, fromDevice(fieldWith(6, "\x00\x00\x00\x00\x00\x00\xF0"s)).serial);
    EXPECT_EQ(9999999999999u, fromDevice(fieldWith(6, "\x99\x99\x99\x99\x99\x98\xF0"s)).serial + 4);
}

TEST(VersionsRecord, ASerialOfMoreThanThirteenDigitsIsNone) {
    EXPECT_EQ(0u, fromDevice(fieldWith(6, "\xA0\x00\x00\x00\x00\x00\x00"s)).serial);
    EXPECT_EQ(0u, fromDevice(fieldWith(6, "\x99\x99\x99\x99\x99\x99\xA0"s)).serial);
    EXPECT_EQ(0u, fromDevice(fieldWith(6, std::string(7, '\xFF'))).serial);
}

TEST(VersionsRecord, TheSerialsTextIsNineBytesInLowerCaseHexadecimal) {
    EXPECT_EQ("12345678901234abcd",
              fromDevice(fieldWith(6, "\x12\x34\x56\x78\x90\x12\x34\xAB\xCD\xEF"s)).serialText);
    EXPECT_EQ("000000000000000000", fromDevice(fieldWith(6, "")).serialText);
}

TEST(VersionsRecord, TheDeviceValuesAreTheLowHalvesOfTwoWords) {
    const VersionsRecord first = fromDevice(fieldWith(24, "\x01\x02\x03\x84\x05\x06\x07\x08"s));
    EXPECT_EQ(0x84030201u, first.deviceValue1);
    EXPECT_EQ(0u, first.deviceValue2);
    const VersionsRecord second = fromDevice(fieldWith(32, "\x11\x12\x13\x94\x15\x16\x17\x18"s));
    EXPECT_EQ(0u, second.deviceValue1);
    EXPECT_EQ(0x94131211u, second.deviceValue2);
}

TEST(VersionsRecord, TheWordsOfThePcbVersionOverlapOnPurpose) {
    EXPECT_EQ(0x03001234u, fromPcb(fieldWith(40, "\x34\x12"s)).pcbVersion);
    EXPECT_EQ(0x03123400u, fromPcb(fieldWith(42, "\x34\x12"s)).pcbVersion);
    EXPECT_EQ(0x03808F0Fu, fromPcb(fieldWith(40, "\x0F\x0F\x80\x80"s)).pcbVersion);
    EXPECT_EQ(0x03FFFFFFu, fromPcb(fieldWith(40, "\xFF\xFF\xFF\xFF"s)).pcbVersion);
    EXPECT_EQ(0x03000000u, fromPcb(fieldWith(40, "")).pcbVersion);
}

TEST(VersionsRecord, ThePcbRevisionIsThreeHexadecimalDigits) {
    const struct {
        const char* text;
        std::uint32_t revision;
    } rows[] = {
        {"1aF", 0x1AF}, {"000", 0}, {"FFF", 0xFFF}, {"7  ", 7},
        {"12x", 0x12},  {"xyz", 0}, {" 12", 0},     {"-12", 0},
    };
    for (const auto& [text, revision] : rows) {
        EXPECT_EQ(revision, fromPcb(fieldWith(44, text)).pcbRevision) << text;
    }
    EXPECT_EQ(0xBu, fromPcb(fieldWith(44, "B\0F"s)).pcbRevision);
    EXPECT_EQ(0x123u, fromPcb(fieldWith(44, "1234")).pcbRevision);
}

TEST(VersionsRecord, EachFieldTellsItsOwnAndLeavesTheRest) {
    const std::string all = field(1, std::string(42, '\x33'));
    VersionsRecord versions = fromDevice(all);
    EXPECT_EQ(0u, versions.pcbVersion);
    EXPECT_EQ(0u, versions.pcbRevision);
    takeAs<Valen::eeprom::PcbDescription>(versions, all);
    EXPECT_EQ(3333333333333u, versions.serial);
    EXPECT_EQ(0x33333333u, versions.deviceValue1);
    EXPECT_EQ(0x33333333u, versions.deviceValue2);
    EXPECT_EQ(0x03333333u, versions.pcbVersion);
    EXPECT_EQ(0x333u, versions.pcbRevision);
    EXPECT_EQ(0u, versions.reserved);
    EXPECT_EQ("333333333333333333", versions.serialText);
}

TEST(VersionsRecord, AFieldThatEndsBeforeAValueLeavesIt) {
    const struct {
        std::size_t end;  // of the value, from the field's start
        bool (*told)(const VersionsRecord& versions);
    } rows[] = {
        {13, [](const VersionsRecord& versions) { return versions.serial != 0; }},
        {15, [](const VersionsRecord& versions) { return !versions.serialText.empty(); }},
        {32, [](const VersionsRecord& versions) { return versions.deviceValue1 != 0; }},
        {40, [](const VersionsRecord& versions) { return versions.deviceValue2 != 0; }},
        {44, [](const VersionsRecord& versions) { return versions.pcbVersion != 0; }},
        {47, [](const VersionsRecord& versions) { return versions.pcbRevision != 0; }},
    };
    for (std::size_t size = 6; size <= 48; ++size) {
        // Bytes of its own, so that a sanitizer sees who reads past them.
        const std::string bytes = field(1, std::string(size - 6, '\x31'));
        VersionsRecord versions = fromDevice(bytes);
        takeAs<Valen::eeprom::PcbDescription>(versions, bytes);
        for (const auto& row : rows) {
            EXPECT_EQ(size >= row.end, row.told(versions)) << size << " of " << row.end;
        }
    }
}

}  // namespace
