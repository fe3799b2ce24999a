#include "Vl/HAL/Board/Eeprom.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <vector>

#include "Tests/HAL/Board/EepromFields.h"
#include "Tests/HAL/Checksum.h"
#include "Tests/Support/PrivateWorld.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using Valen::Eeprom;
using Valen::SafeFileDescriptor;

class EepromTest : public testing::Test {
protected:
    /// Reads an image. @return what the callbacks were called with, "pcb:body".
    std::vector<std::string> read(const std::string& image, bool verbose = true) {
        support::PrivateWorld::write("/tmp/image", image);
        SafeFileDescriptor file = SafeFileDescriptor::open("/tmp/image", O_RDONLY);
        std::vector<std::string> calls;
        const auto note = [&calls](const char* name) {
            return [&calls, name](const auto* record) {
                EXPECT_EQ(record->length(), 6 + record->body().size());
                calls.push_back(std::string(name) + ":" +
                                std::string(record->body().begin(), record->body().end()));
            };
        };
        lseek(file.get(), 3, SEEK_SET);  // read() begins at the beginning all the same
        CaptureStdout();
        Eeprom::read(file, verbose, note("mac"), note("pcb"), note("device"), note("sandwich"));
        output = GetCapturedStdout();
        return calls;
    }

    support::PrivateWorld world;
    std::string output;
};

TEST_F(EepromTest, CallsBackForEachFieldByItsType) {
    EXPECT_THAT(read(field(1, "one") + field(2, "") + field(3, "t") + field(4, "four") + field(3, "again")),
                ElementsAre("device:one", "pcb:", "mac:t", "sandwich:four", "mac:again"));
    EXPECT_EQ("", output);
}

TEST_F(EepromTest, AnEmptyFileSaysNothing) {
    EXPECT_THAT(read(""), IsEmpty());
    EXPECT_EQ("", output);
}

TEST_F(EepromTest, ErasedMemoryEndsTheImageWithoutAWord) {
    EXPECT_THAT(read(std::string(100, '\xFF')), IsEmpty());
    EXPECT_EQ("", output);
    EXPECT_THAT(read(field(1, "one") + std::string(100, '\xFF') + field(2, "two")),
                ElementsAre("device:one"));
}

TEST_F(EepromTest, AFieldThatReachesPastTheDataEndsThem) {
    const std::string whole = field(1, "one");
    EXPECT_THAT(read(field(2, "two") + whole.substr(0, whole.size() - 1)), ElementsAre("pcb:two"));
    EXPECT_EQ("field is too long: 9 bytes\n", output);
    read(whole.substr(0, whole.size() - 1), false);
    EXPECT_EQ("", output);
}

TEST_F(EepromTest, AFieldWithAWrongCrcIsPassedOver) {
    std::string broken = field(1, "one");
    broken[0] = '\0';
    broken[1] = '\0';
    const unsigned int right = crcOf("\0\0"s + broken.substr(2));
    EXPECT_THAT(read(broken + field(2, "two")), ElementsAre("pcb:two"));
    char expected[64];
    std::snprintf(expected, sizeof expected, "Field CRC: saved: 0 <-> calc: %x\n", right);
    EXPECT_EQ(expected, output);
    EXPECT_THAT(read(broken + field(2, "two"), false), ElementsAre("pcb:two"));
    EXPECT_EQ("", output);
}

TEST_F(EepromTest, EveryFlippedBitOfAFieldIsSeen) {
    const std::string good = field(1, "body");
    for (std::size_t bit = 0; bit < 8 * good.size(); ++bit) {
        std::string image = good;
        image[bit / 8] = static_cast<char>(image[bit / 8] ^ 1 << bit % 8);
        EXPECT_THAT(read(image), IsEmpty()) << bit;
    }
}

TEST_F(EepromTest, TheEndOfDataEndsTheImage) {
    EXPECT_THAT(read(field(0, "") + field(1, "one")), IsEmpty());
    EXPECT_EQ("end of flash: 0\n", output);
    read(field(0, ""), false);
    EXPECT_EQ("", output);
}

TEST_F(EepromTest, AnErasedTypeEndsTheImageAndIsSaidInAnyCaseOnPurpose) {
    EXPECT_THAT(read(field(0xFFFF, "") + field(1, "one"), false), IsEmpty());
    EXPECT_EQ("end of flash: 65535\n", output);
}

TEST_F(EepromTest, AnUnknownTypeIsPassedOverAndSaidInAnyCaseOnPurpose) {
    EXPECT_THAT(read(field(5, "five") + field(0xFFFE, "") + field(1, "one"), false),
                ElementsAre("device:one"));
    EXPECT_EQ("unknown field of type: 5\nunknown field of type: 65534\n", output);
}

TEST_F(EepromTest, AFieldShorterThanItsHeaderEndsTheImage) {
    for (unsigned int length = 0; length < 6; ++length) {
        const std::string image = littleEndian(0) + littleEndian(1) + littleEndian(length) + field(2, "two");
        EXPECT_THAT(read(image), IsEmpty()) << length;
        EXPECT_EQ("", output);
    }
    EXPECT_THAT(read(std::string(100, '\0')), IsEmpty());
    EXPECT_EQ("end of flash: 0\n", output);
}

TEST_F(EepromTest, LessThanAHeaderAtTheEndIsNoField) {
    EXPECT_THAT(read(field(1, "one") + "\1\2\3\4\5"), ElementsAre("device:one"));
    EXPECT_EQ("", output);
}

TEST_F(EepromTest, NoMoreThan1024BytesAreRead) {
    EXPECT_THAT(read(field(1, std::string(1012, 'x')) + field(2, "") + field(3, "three")),
                ElementsAre("device:" + std::string(1012, 'x'), "pcb:"));
    EXPECT_EQ("", output);
    EXPECT_THAT(read(field(1, std::string(1019, 'x'))), IsEmpty());
    EXPECT_EQ("field is too long: 1025 bytes\n", output);
}

TEST_F(EepromTest, WhatCannotBeReadSaysNothing) {
    SafeFileDescriptor none;
    CaptureStdout();
    Eeprom::read(none, true, {}, {}, {}, {});
    EXPECT_EQ("", GetCapturedStdout());
}

TEST_F(EepromTest, AnEmptyCallbackThrowsWhenItsFieldOccurs) {
    support::PrivateWorld::write("/tmp/image", field(2, "two"));
    SafeFileDescriptor file = SafeFileDescriptor::open("/tmp/image", O_RDONLY);
    EXPECT_THROW(Eeprom::read(file, false, {}, {}, {}, {}), std::bad_function_call);
    EXPECT_NO_THROW(Eeprom::read(file, false, {}, [](const Valen::eeprom::PcbDescription*) {}, {}, {}));
}

}  // namespace
