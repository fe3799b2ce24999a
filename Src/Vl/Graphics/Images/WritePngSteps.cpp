#include "Vl/Graphics/Images/WritePngSteps.h"

#include <png.h>
#include <zlib.h>

#include <cstdlib>

namespace {

/// The version that libpng compares itself with; it must agree in its first two numbers.
constexpr char kLibraryVersion[] = "1.6.37";
constexpr int kCompressionLevel = 9;
constexpr int kNotRecoverable = 99;

[[noreturn]] void tellAndJumpBack(png_structp png, png_const_charp message) {
    std::fprintf(stderr, "writepng libpng error: %s\n", message);
    auto* const output = static_cast<PngOutput*>(png_get_error_ptr(png));
    if (output == nullptr) {
        std::fputs("writepng severe error:  jmpbuf not recoverable; terminating.\n", stderr);
        std::exit(kNotRecoverable);
    }
    std::longjmp(output->failure, 1);
}

// In place of libpng's own, which use the file without a look at whether there is one.

void writeBytes(png_structp png, png_bytep bytes, size_t count) {
    auto* const file = static_cast<FILE*>(png_get_io_ptr(png));
    if (file == nullptr || std::fwrite(bytes, 1, count, file) != count) {
        png_error(png, "Write Error");
    }
}

void flushBytes(png_structp png) {
    auto* const file = static_cast<FILE*>(png_get_io_ptr(png));
    if (file == nullptr || std::fflush(file) != 0) {
        png_error(png, "Write Error");
    }
}

void setHeader(const PngOutput& output) {
    png_set_compression_level(output.png, kCompressionLevel);
    png_set_IHDR(output.png, output.info, static_cast<png_uint_32>(output.width),
                 static_cast<png_uint_32>(output.height), output.sampleDepth, PNG_COLOR_TYPE_RGB_ALPHA,
                 output.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
}

void setOptionalChunks(const PngOutput& output) {
    if (output.gamma > 0.0) {
        png_set_gAMA(output.png, output.info, output.gamma);
    }
    if (output.background) {
        png_color_16 colour{};
        colour.red = output.background->r();
        colour.green = output.background->g();
        colour.blue = output.background->b();
        png_set_bKGD(output.png, output.info, &colour);
    }
    if (output.modified) {
        png_time time{};
        png_convert_from_time_t(&time, *output.modified);
        png_set_tIME(output.png, output.info, &time);
    }
    for (const PngOutput::Text& text : output.texts) {
        png_text entry{};
        entry.compression = PNG_TEXT_COMPRESSION_NONE;
        entry.key = const_cast<png_charp>(text.keyword);  // libpng copies both
        entry.text = const_cast<png_charp>(text.text);
        png_set_text(output.png, output.info, &entry, 1);
    }
}

}  // namespace

void writepng_version_info() {
    std::fprintf(stderr, "   Compiled with libpng %s; using libpng %s.\n", PNG_LIBPNG_VER_STRING,
                 png_get_libpng_ver(nullptr));
    std::fprintf(stderr, "   Compiled with zlib %s; using zlib %s.\n", ZLIB_VERSION, zlibVersion());
}

// libpng leaves a failing call by longjmp, which runs no destructors: no step holds anything that has one.

int writepng_init(PngOutput& output) {
    if (setjmp(output.failure)) {
        return WritePngLibraryError;
    }
    output.png = png_create_write_struct(kLibraryVersion, &output, tellAndJumpBack, nullptr);
    if (output.png == nullptr) {
        return WritePngNoMemory;
    }
    output.info = png_create_info_struct(output.png);
    if (output.info == nullptr) {
        return WritePngNoMemory;
    }
    if (output.pnmType != PngOutput::kRgbaPnm) {
        return WritePngBadType;
    }
    png_set_write_fn(output.png, output.file, writeBytes, flushBytes);
    setHeader(output);
    setOptionalChunks(output);
    png_write_info(output.png, output.info);
    png_set_packing(output.png);
    return WritePngOk;
}

int writepng_encode_image(PngOutput& output, const uint8_t* const* rows) {
    if (setjmp(output.failure)) {
        return WritePngLibraryError;
    }
    png_write_image(output.png, const_cast<png_bytepp>(rows));  // which only reads them
    return WritePngOk;
}

int writepng_encode_row(PngOutput& output, const uint8_t* row) {
    if (setjmp(output.failure)) {
        return WritePngLibraryError;
    }
    png_write_row(output.png, row);
    return WritePngOk;
}

int writepng_encode_finish(PngOutput& output) {
    if (setjmp(output.failure)) {
        return WritePngLibraryError;
    }
    png_write_end(output.png, nullptr);
    flushBytes(output.png);
    return WritePngOk;
}

void writepng_cleanup(PngOutput& output) {
    png_destroy_write_struct(&output.png, &output.info);
}
