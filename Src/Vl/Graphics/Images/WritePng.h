#pragma once

#include <cstdint>

struct PngOutput;

// Whole PNG files. Every failure prints its message on standard error and ends the process through exit(),
// leaving what was written so far. Both block while the file takes its bytes.

/// Writes width × height pixels of four bytes each (red, green, blue, alpha 0-255), the top row first, to
/// `path`: not interlaced, without any optional chunk. A path that cannot be opened (or is null) is not
/// tested for; it comes out as status 2 when libpng writes its first bytes, and so does a size that libpng
/// refuses, such as 0 × 0. The environment's SCREEN_GAMMA is read and has no effect, which is meant.
void write_png(const uint8_t* pixels, int width, int height, const char* path);

/// Runs all steps of writing `output`, whose file is open and stays so. The statuses and their messages:
///
/// 4 "wpng:  insufficient memory", 2 "wpng:  libpng initialization problem (longjmp)",
/// 11 "wpng:  internal logic error (unexpected PNM type)", any other of writepng_init
/// "wpng:  unknown writepng_init() error";
/// 4 "wpng:  insufficient memory for image data" (the row pointers of an interlaced image);
/// 2 "wpng:  libpng problem (longjmp) while writing image data" (an interlaced image),
/// 2 "wpng:  libpng problem (longjmp) while writing row %ld" (how many are not yet written, with this one),
/// 2 "wpng:  error on final libpng call".
void write_png(const uint8_t* pixels, PngOutput& output);

/// Ends the process because there is no memory for the pixels: the message above, status 4.
[[noreturn]] void endForLackOfImageMemory();
