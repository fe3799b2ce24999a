#pragma once

#include <cstdint>
#include <cstdio>
#include <span>

/// The file around what the overlay hardware reads: 0xFFFFFFFF, an identifier and the body's length in words,
/// four bytes each and most significant byte first, then the body. The file belongs to the caller.
namespace Overlay {

/// What YUVBitmap's writers return; all operations here end at the first failure.
enum Result : int {
    Ok = 0,
    SeekFailed = -1,
    WriteFailed = -2,
    NoFile = -3,
    TooLarge = -4,
};

inline constexpr int kBodyOffset = 12;

/// Hands over to the system what was written so far, so that its loss is not taken for a failed seek, and
/// goes to `offset` from the file's start.
Result seek(FILE* file, int64_t offset);

/// Writes all bytes where the file stands.
Result write(FILE* file, std::span<const uint8_t> bytes);

/// Hands over to the system what was written.
Result flush(FILE* file);

/// Goes to where the body begins. NoFile when the file is null.
Result beginBody(FILE* file);

/// Pads a body of `bodyBytes`, at whose end the file stands, with zero bytes to a multiple of 128, then
/// writes the header and hands all to the system. TooLarge when the header's length cannot tell its size.
Result finish(FILE* file, unsigned long id, int64_t bodyBytes);

/// The same for a body that is all that the file holds from offset 12.
Result finishAtEnd(FILE* file, unsigned long id);

}  // namespace Overlay
