#include "Tests/Graphics/LibraryFaults.h"

#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

#include <ft2build.h>
#include <png.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdint>
#include <new>

#include "Vl/Graphics/Images/WritePngSteps.h"

namespace {

/// The same picture, its rows stored the other way round.
void turnBottomUp(FT_Bitmap& bitmap) {
    const auto pitch = static_cast<size_t>(bitmap.pitch);
    for (size_t row = 0; row < bitmap.rows / 2; ++row) {
        uint8_t* upper = bitmap.buffer + row * pitch;
        std::swap_ranges(upper, upper + pitch, bitmap.buffer + (bitmap.rows - 1 - row) * pitch);
    }
    bitmap.pitch = -bitmap.pitch;
}

}  // namespace

// The linker sends calls of NAME to __wrap_NAME and calls of __real_NAME to NAME.
extern "C" {

void* __real__Znam(size_t size);
void* __wrap__Znam(size_t size);
void* __wrap__Znam(size_t size) {
    if (libraryFaults.arraysLeft == 0) {
        throw std::bad_alloc();
    }
    if (libraryFaults.arraysLeft > 0) {
        --libraryFaults.arraysLeft;
    }
    return __real__Znam(size);
}

FT_Error __real_FT_Init_FreeType(FT_Library* library);
FT_Error __wrap_FT_Init_FreeType(FT_Library* library);
FT_Error __wrap_FT_Init_FreeType(FT_Library* library) {
    return libraryFaults.initFreeType ? FT_Err_Out_Of_Memory : __real_FT_Init_FreeType(library);
}

FT_Error __real_FT_Load_Glyph(FT_Face face, FT_UInt index, FT_Int32 flags);
FT_Error __wrap_FT_Load_Glyph(FT_Face face, FT_UInt index, FT_Int32 flags);
FT_Error __wrap_FT_Load_Glyph(FT_Face face, FT_UInt index, FT_Int32 flags) {
    ++libraryFaults.glyphLoads;
    const FT_Error error = __real_FT_Load_Glyph(face, index, flags);
    return libraryFaults.loadGlyph ? FT_Err_Invalid_Outline : error;
}

FT_Error __real_FT_Render_Glyph(FT_GlyphSlot slot, FT_Render_Mode mode);
FT_Error __wrap_FT_Render_Glyph(FT_GlyphSlot slot, FT_Render_Mode mode);
FT_Error __wrap_FT_Render_Glyph(FT_GlyphSlot slot, FT_Render_Mode mode) {
    ++libraryFaults.glyphRenders;
    const FT_Error error = libraryFaults.renderGlyph ? static_cast<FT_Error>(FT_Err_Raster_Overflow)
                                                     : __real_FT_Render_Glyph(slot, mode);
    if (error == 0 && libraryFaults.bottomUp) {
        turnBottomUp(slot->bitmap);
    }
    return error;
}

png_structp __real_png_create_read_struct(png_const_charp version, png_voidp context, png_error_ptr error,
                                          png_error_ptr warning);
png_structp __wrap_png_create_read_struct(png_const_charp version, png_voidp context, png_error_ptr error,
                                          png_error_ptr warning);
png_structp __wrap_png_create_read_struct(png_const_charp version, png_voidp context, png_error_ptr error,
                                          png_error_ptr warning) {
    if (libraryFaults.createReadStruct) {
        return nullptr;
    }
    return __real_png_create_read_struct(version, context, error, warning);
}

png_infop __real_png_create_info_struct(png_const_structrp png);
png_infop __wrap_png_create_info_struct(png_const_structrp png);
png_infop __wrap_png_create_info_struct(png_const_structrp png) {
    return libraryFaults.createInfoStruct ? nullptr : __real_png_create_info_struct(png);
}

png_structp __real_png_create_write_struct(png_const_charp version, png_voidp context, png_error_ptr error,
                                           png_error_ptr warning);
png_structp __wrap_png_create_write_struct(png_const_charp version, png_voidp context, png_error_ptr error,
                                           png_error_ptr warning);
png_structp __wrap_png_create_write_struct(png_const_charp version, png_voidp context, png_error_ptr error,
                                           png_error_ptr warning) {
    if (libraryFaults.createWriteStruct) {
        return nullptr;
    }
    return __real_png_create_write_struct(version, libraryFaults.noWriteContext ? nullptr : context, error,
                                          warning);
}

int __real__Z13writepng_initR9PngOutput(PngOutput& output);
int __wrap__Z13writepng_initR9PngOutput(PngOutput& output);
int __wrap__Z13writepng_initR9PngOutput(PngOutput& output) {
    const int status = __real__Z13writepng_initR9PngOutput(output);
    return libraryFaults.writeInitStatus != -1 ? libraryFaults.writeInitStatus : status;
}

int __real_jpeg_read_header(j_decompress_ptr jpeg, boolean requireImage);
int __wrap_jpeg_read_header(j_decompress_ptr jpeg, boolean requireImage);
int __wrap_jpeg_read_header(j_decompress_ptr jpeg, boolean requireImage) {
    const int result = __real_jpeg_read_header(jpeg, requireImage);
    if (libraryFaults.jpegStaysYcc) {
        jpeg->out_color_space = JCS_YCbCr;
    }
    return result;
}

JDIMENSION __real_jpeg_read_scanlines(j_decompress_ptr jpeg, JSAMPARRAY rows, JDIMENSION count);
JDIMENSION __wrap_jpeg_read_scanlines(j_decompress_ptr jpeg, JSAMPARRAY rows, JDIMENSION count);
JDIMENSION __wrap_jpeg_read_scanlines(j_decompress_ptr jpeg, JSAMPARRAY rows, JDIMENSION count) {
    if (libraryFaults.jpegRowsLeft == 0) {
        jpeg->err->error_exit(reinterpret_cast<j_common_ptr>(jpeg));
    }
    if (libraryFaults.jpegRowsLeft > 0) {
        --libraryFaults.jpegRowsLeft;
    }
    return __real_jpeg_read_scanlines(jpeg, rows, count);
}

}  // extern "C"
