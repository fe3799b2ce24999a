#pragma once

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <optional>
#include <span>

#include "Vl/Graphics/Pixels/Rgba.h"

struct png_struct_def;
struct png_info_def;

/// One PNG file on its way to the disk: what is to be written, and libpng's state between the steps below.
/// Everything that is pointed to is borrowed and must outlive the last step. Not thread-safe, not to be
/// copied or moved once writepng_init has seen it.
struct PngOutput {
    struct Text {
        const char* keyword;  ///< 1 to 79 Latin-1 characters, such as "Title"
        const char* text;
    };

    /// By the digit of the PNM family's magic number; the one kind of pixels that is written is RGBA (PAM,
    /// P7).
    static constexpr int kRgbaPnm = 7;

    FILE* file = nullptr;  ///< null is as good as a full disk: the first step that writes fails
    int width = 0;         ///< in pixels, as the height; libpng takes 1 to 1,000,000
    int height = 0;
    int sampleDepth = 8;
    int pnmType = kRgbaPnm;
    bool interlaced = false;
    double gamma = 0.0;  ///< of the samples; not above 0: not written
    std::optional<rgba> background{};
    std::optional<std::time_t> modified{};
    std::span<const Text> texts{};

    // The steps' own.
    png_struct_def* png = nullptr;
    png_info_def* info = nullptr;
    std::jmp_buf failure{};
};

/// What a step results in. The failing one has told libpng's reason on standard error, as
/// "writepng libpng error: %s\n".
enum WritePngStatus : int {
    WritePngOk = 0,
    WritePngLibraryError = 2,  ///< libpng gave up, or the file did not take the bytes
    WritePngNoMemory = 4,      ///< libpng's structures cannot be created
    WritePngBadType = 11,      ///< a `pnmType` other than RGBA
};

/// Prints which libpng and zlib this was compiled with and which it runs with on standard error.
void writepng_version_info();

// The steps, in this order; each blocks while the file takes its bytes. An error that libpng raises outside
// of them has nowhere to go: it prints "writepng severe error:  jmpbuf not recoverable; terminating.\n" and
// ends the process with status 99.

/// Creates libpng's structures and writes everything before the pixels, at compression level 9.
/// @return any WritePngStatus
int writepng_init(PngOutput& output);

/// Writes all rows, `rows[0]` the topmost, each width × 4 bytes red, green, blue, alpha (0-255). The way to
/// write an interlaced image. @return WritePngOk or WritePngLibraryError
int writepng_encode_image(PngOutput& output, const uint8_t* const* rows);

/// Writes the next row of an image that is not interlaced. @return WritePngOk or WritePngLibraryError
int writepng_encode_row(PngOutput& output, const uint8_t* row);

/// After the last row: ends the file and hands its last bytes to the system, so that a full disk is noticed.
/// @return WritePngOk or WritePngLibraryError
int writepng_encode_finish(PngOutput& output);

/// Frees libpng's structures, whatever the steps came to; the file stays open.
void writepng_cleanup(PngOutput& output);
