#pragma once

#include <utility>

namespace Valen {

// Numbers are read by the rules of strtol(3): white space, then a sign, may come first; too large a value
// becomes the largest there is, with errno ERANGE. A base that strtol refuses reads nothing. Texts and
// cursors are never null. Any thread may use these.

/// @return {true, value}; {false, 0} when no digit was read. What follows the number does not matter.
std::pair<bool, long> stringToLong(const char* text, int base);

/// The same for an unsigned number: decimal, hexadecimal after 0x, or octal after 0.
std::pair<bool, unsigned long> stringToULong(const char* text);

// Cursor parsers for structured text such as version strings. They throw the int 0, leaving the cursor alone,
// when the text at the cursor is not as expected; the caller catches it to reject the whole text.

/// Reads the number at `*cursor`, which the character `terminator` must follow (-1: any character, '\0': the
/// end of the text), and moves the cursor over both. At the end of the text the cursor then stands behind the
/// text's terminator, where nothing may be read.
/// @return the number.
long stringToLong(const char** cursor, int terminator, int base);

/// Moves the cursor over `expected`, with which the text at `*cursor` must begin. @return 0.
int CmpPartialString(const char** cursor, const char* expected);

}  // namespace Valen
