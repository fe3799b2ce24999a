#pragma once

#include <sstream>
#include <string>

namespace Valen {

// Hex dumps of `size` bytes at `data`. A null pointer and a size of 0 or less are no bytes: the result is
// empty. `out` is replaced. Any thread may use these.

/// Lines of `perLine` bytes, each byte printed with `byteFormat`, a printf format such as "%02X " for one
/// unsigned int. Unless `withoutAddress` a line begins with the memory address of its first byte ("%08lX  ").
/// White space at both ends of the result is removed. A line is cut at 4999 characters. Nothing is dumped
/// when `perLine` is 0 or less. `padLastLine` asks for three blanks in place of each byte that a short last
/// line lacks; they are white space at the end of the result, so they are removed again, which is meant.
void BinaryToXXXString(const void* data, int size, std::string& out, bool withoutAddress, bool padLastLine,
                       int perLine, const char* byteFormat);

/// The same with "%02X " for every byte.
void BinaryToHexString(const void* data, int size, std::string& out, bool withoutAddress, bool padLastLine,
                       int perLine);

/// The same with addresses, padding, and 16 bytes on a line.
void BinaryToHexString(const void* data, int size, std::string& out);

/// Two upper-case digits for each byte and nothing else: "0A1BFF".
std::string BinaryToHexSimple(const void* data, int size);

/// Appends lines of 32 bytes to `stream`, each beginning with the offset of its first byte in eight digits; a
/// blank stands before every fourth byte. Digits are lower-case. A byte from '0' to 'z' is shown as '<' and
/// the character itself, which is meant: "00000000 010203<A". No end of line follows the last byte; the
/// stream's formatting does not matter and is not changed.
void toHexString(std::stringstream& stream, const void* data, int size);

}  // namespace Valen
