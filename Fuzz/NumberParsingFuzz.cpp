// Text of any content, read from front to back by the cursor parsers as version strings and addresses are.
#include <cstddef>
#include <cstdint>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Strings/NumberParsing.h"

namespace {

/// Reads numbers until the text ends or is not as expected.
void readNumbers(const std::string& text, int terminator, int base) {
    const char* const end = text.c_str() + text.size();
    const char* cursor = text.c_str();
    const char* before = cursor;
    try {
        while (cursor <= end) {
            before = cursor;
            Valen::stringToLong(&cursor, terminator, base);
            require(cursor > before + 1 && cursor <= end + 1);
        }
    } catch (int thrown) {
        require(thrown == 0 && cursor == before);
    }
}

/// `expected` is taken exactly when the text begins with it.
void comparePart(const std::string& text, const std::string& expected) {
    const char* cursor = text.c_str();
    bool taken = true;
    try {
        Valen::CmpPartialString(&cursor, expected.c_str());
    } catch (int) {
        taken = false;
    }
    require(taken == text.starts_with(expected));
    require(cursor == text.c_str() + (taken ? expected.size() : 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const auto terminator = static_cast<signed char>(data[0]);
    const int base = data[1] % 40;
    // A text as the parsers see it ends with its first zero.
    const std::string text = std::string(reinterpret_cast<const char*>(data) + 2, size - 2).c_str();

    readNumbers(text, terminator, base);
    comparePart(text, text.substr(0, text.size() / 2));
    comparePart(text, text.substr(text.size() / 2));
    const auto [read, value] = Valen::stringToLong(text.c_str(), base);
    require(read || value == 0);
    const auto [readUnsigned, unsignedValue] = Valen::stringToULong(text.c_str());
    require(readUnsigned || unsignedValue == 0);
    return 0;
}
