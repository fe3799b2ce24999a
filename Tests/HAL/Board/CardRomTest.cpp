#include "Vl/HAL/Board/CardRom.h"

#include <gmock/gmock.h>
#include <stdlib.h>
#include <time.h>

#include <cstring>

#include "Tests/HAL/Board/RomImage.h"

namespace {

using testing::Optional;
using Valen::CardRom;
using Valen::HaldenSerial;
using Valen::Version;

CardRom parse(const RomImage& image) {
    CardRom::Image bytes{};
    std::memcpy(bytes.data(), image.bytes().data(), bytes.size());
    return CardRom::parse(bytes);
}

class CardRomTest : public testing::Test {
protected:
    CardRomTest() {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

TEST_F(CardRomTest, EverythingIsAtItsPlace) {
    const CardRom rom = parse({});
    EXPECT_STREQ("02:00:5E:01:02:03", rom.macs[0].toString().c_str());
    EXPECT_STREQ("02:00:5E:01:02:04", rom.macs[1].toString().c_str());
    EXPECT_EQ((Version{{0x80010203, 0x30B10004, 0}}), rom.version);
    EXPECT_EQ((HaldenSerial{4006381333931, 1, 2}), rom.serial);
    EXPECT_EQ(std::nullopt, rom.fault());
}

TEST_F(CardRomTest, TheLastWordOfAVersionCountsOnlyWithItsTopBit) {
    const std::string words01 = RomImage().version.substr(0, 8);
    EXPECT_EQ(0U, parse({.version = words01 + "\xFF\xFF\xFF\x7F"}).version.words[2]);
    EXPECT_EQ(0x80020001U, parse({.version = words01 + std::string("\x01\x00\x02\x80", 4)}).version.words[2]);
}

struct Fault {
    RomImage image;
    std::string text;
};

TEST_F(CardRomTest, TheFirstFaultIsNamed) {
    const Fault faults[] = {
        {{.firstMac = std::string("\x03\x00\x5E\x01\x02\x03", 6)}, "invalid MAC: 03:00:5E:01:02:03"},
        {{.firstMac = std::string("\x02\x01\x5E\x01\x02\x03", 6)}, "invalid MAC: 02:01:5E:01:02:03"},
        {{.firstMac = std::string("\x02\x00\x5F\x01\x02\x03", 6)}, "invalid MAC: 02:00:5F:01:02:03"},
        {{.version = std::string("\x03\x02\x01\x81\x04\x00\xB1\x30\x00\x00\x00\x00", 12)},
         "invalid version: CT: 0x81 Ver: 0102.03.0004 (17/05/2024)"},
        {{.version = std::string("\x03\x02\x01\x00\x04\x00\xB1\x30\x02\x00\x01\x80", 12)},
         "invalid version: CT: 0x00 Ver: 0102.03.0004 [01.02] (17/05/2024)"},
        {{.serial = std::string("\xAC\xAD\xEF\xCE\xA4\x03\x00\x00\x01\x00\x00\x00\x02\x00\x00\x00", 16)},
         "invalid serial: 4006381333932  Production Date: 01.01.1970 00:00:01  Last Service Date: "
         "01.01.1970 00:00:02"},
        {{.serial = std::string(16, '\0')},
         "invalid serial: 0000000000000  Production Date: 01.01.1970 00:00:00  Last Service Date: "
         "01.01.1970 00:00:00"},
        {{.firstMac = std::string(6, '\xFF'),
          .version = std::string(12, '\0'),
          .serial = std::string(16, '\0')},
         "invalid MAC: FF:FF:FF:FF:FF:FF"},
        {{.version = std::string(12, '\0'), .serial = std::string(16, '\0')},
         "invalid version: CT: 0x00 Ver: 0000.00.0000 (00/00/2000)"},
    };
    for (const auto& [image, text] : faults) {
        EXPECT_THAT(parse(image).fault(), Optional(text));
    }
}

TEST_F(CardRomTest, TheSecondAddressMayBeAnyones) {
    EXPECT_EQ(std::nullopt, parse({.secondMac = std::string(6, '\xFF')}).fault());
}

}  // namespace
