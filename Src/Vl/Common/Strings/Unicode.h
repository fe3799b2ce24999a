#pragma once

#include <string>

namespace Valen {

// Text conversions. A null pointer and a length of 0 or less are no text. Any thread may use these.

/// 8-bit text to UTF-8. The characters above 127 are those of Latin-1 (ISO 8859-1: code points U+0080 to
/// U+00FF), two bytes each in UTF-8. A zero is a character like any other.
std::string ascii2utf8(const unsigned char* text, int length);

/// UTF-16LE, `bytes` bytes at `buffer`, which may be unaligned, to 16-bit characters of the host. A byte
/// order mark (U+FEFF) at the front is dropped, and so is the odd byte at the end. Code units are taken over
/// as they are, unpaired surrogates and zeros too.
std::u16string utf16lebuffer_to_u16_platform_string(const unsigned char* buffer, long bytes);

}  // namespace Valen
