#include "Vl/Graphics/Images/PngReader.h"

#include <png.h>
#include <sys/stat.h>

#include <array>

namespace {

constexpr size_t kSignatureBytes = 8;

void jumpBack(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
void ignore(png_structp, png_const_charp) {}

// libpng leaves a failing call by longjmp, which runs no destructors: each of these holds nothing that has
// one.

bool readInfo(png_structp png, png_infop info, FILE* file) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_init_io(png, file);
    png_set_sig_bytes(png, kSignatureBytes);
    png_read_info(png, info);
    return true;
}

bool readRows(png_structp png, png_infop info, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    png_read_image(png, rows);
    return true;
}

}  // namespace

PngReader::PngReader() = default;

PngReader::~PngReader() {
    png_destroy_read_struct(&png_, &info_, nullptr);
}

PngReader::Result PngReader::readHeader(const char* path) {
    file_.reset(path != nullptr ? std::fopen(path, "rbe") : nullptr);
    if (!file_) {
        return CannotOpen;
    }
    std::array<png_byte, kSignatureBytes> signature;
    if (std::fread(signature.data(), 1, signature.size(), file_.get()) != signature.size() ||
        png_sig_cmp(signature.data(), 0, signature.size()) != 0) {
        return NotPng;
    }
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, jumpBack, ignore);
    if (png_ == nullptr) {
        return NoReadStructure;
    }
    info_ = png_create_info_struct(png_);
    if (info_ == nullptr) {
        return NoInfoStructure;
    }
    if (!readInfo(png_, info_, file_.get())) {
        return HeaderError;
    }
    width_ = static_cast<int>(png_get_image_width(png_, info_));
    height_ = static_cast<int>(png_get_image_height(png_, info_));
    channels_ = png_get_channels(png_, info_);
    return Ok;
}

PngReader::Result PngReader::readImage() {
    if (png_get_color_type(png_, info_) == PNG_COLOR_TYPE_PALETTE) {
        return Palette;
    }
    if (png_get_bit_depth(png_, info_) != 8) {
        return BitDepth;
    }
    const size_t rowBytes = png_get_rowbytes(png_, info_);
    const auto rowCount = static_cast<size_t>(height_);
    if (int64_t{width_} * height_ > kMostPixels || !fileCanHold(uint64_t{rowBytes} * rowCount)) {
        return ImageError;
    }
    pixels_.resize(rowBytes * rowCount);
    std::vector<png_bytep> rows(rowCount);
    for (size_t row = 0; row < rowCount; ++row) {
        rows[row] = pixels_.data() + row * rowBytes;
    }
    return readRows(png_, info_, rows.data()) ? Ok : ImageError;
}

bool PngReader::fileCanHold(uint64_t imageBytes) const {
    // Deflate spends at least two bits on 258 bytes, so a file of n bytes can never fill more than 1032 n.
    constexpr uint64_t largestRatio = 1032;
    struct stat status {};
    if (fstat(fileno(file_.get()), &status) != 0 || !S_ISREG(status.st_mode)) {
        return true;  // a pipe has no length to judge by
    }
    return imageBytes / largestRatio <= static_cast<uint64_t>(status.st_size);
}
