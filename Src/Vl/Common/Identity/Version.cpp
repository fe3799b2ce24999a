#include "Vl/Common/Identity/Version.h"

#include "Vl/Common/Strings/NumberParsing.h"

namespace Valen {
namespace {

constexpr std::uint32_t kFurtherNumbers = 1U << 31;
constexpr std::uint32_t kLocalChanges = 1U << 30;
constexpr int kAnyTerminator = -1;

/// The low `bits` bits of `number`, at their place in a word.
std::uint32_t field(std::uint32_t number, int bits, int place) {
    return (number & ((1U << bits) - 1)) << place;
}

std::uint32_t dateFields(std::uint32_t year, std::uint32_t month, std::uint32_t day) {
    return ((year - 2000) << 9 | month << 5 | day) << 16;
}

// Like the cursor parsers, the readers below move the cursor on and throw an int at a text that is wrong.

std::uint32_t readNumber(const char** cursor, int terminator, int base) {
    return static_cast<std::uint32_t>(stringToLong(cursor, terminator, base));
}

/// "0102.03.0004" and the character behind it.
void readNumbers(const char** cursor, int terminator, std::uint32_t cardType, Version& version) {
    const std::uint32_t majorNumber = readNumber(cursor, '.', 16);
    const std::uint32_t minorNumber = readNumber(cursor, '.', 16);
    const std::uint32_t build = readNumber(cursor, terminator, 16);
    version.words = {cardType << 24 | majorNumber << 8 | minorNumber, field(build, 16, 0), 0};
}

/// "2024-05-17" and the character behind it.
std::uint32_t readDate(const char** cursor, int terminator) {
    const std::uint32_t year = readNumber(cursor, '-', 10);
    const std::uint32_t month = readNumber(cursor, '-', 10);
    const std::uint32_t day = readNumber(cursor, terminator, 10);
    return dateFields(year, month, day);
}

/// What stands behind the last number of a file text: its end, or an underscore and word 2.
void readWord2(const char* cursor, Version& version) {
    const char consumed = cursor[-1];
    if (consumed == '\0') {
        return;
    }
    if (consumed != '_') {
        throw 0;
    }
    const std::uint32_t word = readNumber(&cursor, kAnyTerminator, 16);
    version.words[2] = (word & kFurtherNumbers) != 0 ? word : 0;
}

void readCardFileText(const char* cursor, Version& version) {
    CmpPartialString(&cursor, "v");
    const std::uint32_t cardType = readNumber(&cursor, '_', 16);
    readNumbers(&cursor, kAnyTerminator, cardType, version);
    readWord2(cursor, version);
}

void readDateFileText(const char* cursor, Version& version) {
    CmpPartialString(&cursor, "v");
    version.words = {0, readDate(&cursor, kAnyTerminator), 0};
    readWord2(cursor, version);
}

void readDateAlone(const char* cursor, Version& version) {
    version.words[1] = readDate(&cursor, '\0') | version.build();
}

/// "[01.02] (", of which only the parenthesis must be there.
void readFurtherNumbers(const char** cursor, Version& version) {
    if (**cursor == '[') {
        ++*cursor;
        const std::uint32_t first = readNumber(cursor, '.', 10);
        const std::uint32_t second = readNumber(cursor, ']', 10);
        CmpPartialString(cursor, " ");
        version.words[2] = kFurtherNumbers | field(first, 12, 16) | field(second, 16, 0);
    }
    CmpPartialString(cursor, "(");
}

/// The end of the text, or " [00abcde]" resp. " [00abcde-dirty]" before it where word 2 is free.
void readRevision(const char* cursor, Version& version) {
    if (*cursor == '\0') {
        return;
    }
    if (version.hasFurtherNumbers()) {
        throw 0;
    }
    CmpPartialString(&cursor, " [");
    version.words[2] = field(readNumber(&cursor, kAnyTerminator, 16), 30, 0);
    if (cursor[-1] == '-') {
        CmpPartialString(&cursor, "dirty]");
        version.words[2] |= kLocalChanges;
    }
    if (cursor[-1] != ']' || *cursor != '\0') {
        throw 0;
    }
}

void readDisplayText(const char* cursor, Version& version) {
    CmpPartialString(&cursor, "CT: ");
    const std::uint32_t cardType = readNumber(&cursor, ' ', 16);
    CmpPartialString(&cursor, "Ver: ");
    readNumbers(&cursor, ' ', cardType, version);
    readFurtherNumbers(&cursor, version);
    const std::uint32_t day = readNumber(&cursor, '/', 10);
    const std::uint32_t month = readNumber(&cursor, '/', 10);
    version.words[1] |= dateFields(readNumber(&cursor, ')', 10), month, day);
    readRevision(cursor, version);
}

/// Reads into a copy, so that a text that turns out wrong halfway changes nothing.
bool read(const char* text, void (*reader)(const char*, Version&), Version& version) {
    if (text == nullptr) {
        return false;
    }
    try {
        Version parsed = version;
        reader(text, parsed);
        version = parsed;
        return true;
    } catch (int) {
        return false;
    }
}

}  // namespace

SimpleString Version::toString() const {
    const SimpleString numbers = SimpleString::FormatWithParams("CT: 0x%02X Ver: %04X.%02X.%04X", cardType(),
                                                                majorVersion(), minorVersion(), build());
    const SimpleString date = SimpleString::FormatWithParams("(%02u/%02u/%4u)", day(), month(), year());
    if (words[2] == 0) {
        return SimpleString::FormatWithParams("%s %s", numbers.c_str(), date.c_str());
    }
    if (hasFurtherNumbers()) {
        return SimpleString::FormatWithParams("%s [%02u.%02u] %s", numbers.c_str(), firstFurtherNumber(),
                                              secondFurtherNumber(), date.c_str());
    }
    return SimpleString::FormatWithParams("%s %s [%07x%s]", numbers.c_str(), date.c_str(), revision(),
                                          hasLocalChanges() ? "-dirty" : "");
}

SimpleString Version::toFileString() const {
    if (words[0] == 0) {
        return SimpleString::FormatWithParams("v%04u-%02u-%02u", year(), month(), day());
    }
    return SimpleString::FormatWithParams("v%02X_%04X.%02X.%04X", cardType(), majorVersion(), minorVersion(),
                                          build());
}

bool Version::FromFileString(const char* text) {
    return read(text, readCardFileText, *this) || read(text, readDateFileText, *this);
}

bool Version::ParseDate(const char* text) {
    return read(text, readDateAlone, *this);
}

bool Version::Set(const char* text) {
    return FromFileString(text) || read(text, readDisplayText, *this);
}

}  // namespace Valen
