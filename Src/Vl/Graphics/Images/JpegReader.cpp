#include "Vl/Graphics/Images/JpegReader.h"

// libjpeg's header does without the includes that it needs.
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

#include <csetjmp>

namespace {

constexpr int kComponents = 3;

}  // namespace

/// libjpeg's structures, and the place to which its hooks jump back. libjpeg leaves a failing call by
/// longjmp, which runs no destructors: the operations that set the place hold nothing that has one.
struct JpegReader::Decompressor {
    Decompressor() {
        library.err = jpeg_std_error(&errors);
        library.client_data = this;
        errors.error_exit = tellAndJumpBack;
        progress.progress_monitor = limitScans;
    }
    ~Decompressor() {
        jpeg_destroy_decompress(&library);
        if (file != nullptr) {
            std::fclose(file);
        }
    }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    bool readHeader() {
        if (setjmp(failure)) {
            return false;
        }
        jpeg_create_decompress(&library);
        library.progress = &progress;
        jpeg_stdio_src(&library, file);
        jpeg_read_header(&library, TRUE);
        jpeg_calc_output_dimensions(&library);
        return true;
    }

    bool start() {
        if (setjmp(failure)) {
            return false;
        }
        library.out_color_space = JCS_EXT_RGBA;
        return jpeg_start_decompress(&library) != FALSE;
    }

    bool readRow(uint8_t* samples) {
        if (setjmp(failure)) {
            return false;
        }
        return jpeg_read_scanlines(&library, &samples, 1) == 1;
    }

    static Decompressor& of(j_common_ptr library) {
        return *static_cast<Decompressor*>(library->client_data);
    }

    [[noreturn]] static void tellAndJumpBack(j_common_ptr library) {
        library->err->output_message(library);
        std::longjmp(of(library).failure, 1);
    }

    static void limitScans(j_common_ptr library) {
        if (of(library).library.input_scan_number > kMostScans) {
            std::fputs("too many scans\n", stderr);
            std::longjmp(of(library).failure, 1);
        }
    }

    FILE* file = nullptr;
    jpeg_decompress_struct library{};
    jpeg_error_mgr errors{};
    jpeg_progress_mgr progress{};
    std::jmp_buf failure{};
};

JpegReader::JpegReader() : jpeg_(std::make_unique<Decompressor>()) {}

JpegReader::~JpegReader() = default;

JpegReader::Result JpegReader::open(const char* path) {
    jpeg_->file = path != nullptr ? std::fopen(path, "rbe") : nullptr;
    if (jpeg_->file == nullptr) {
        std::fprintf(stderr, "can't open %s\n", path != nullptr ? path : "(null)");
        return CannotOpen;
    }
    if (!jpeg_->readHeader()) {
        return LibraryError;
    }
    if (jpeg_->library.output_components != kComponents) {
        std::fputs("invalid number of components\n", stderr);
        return NotThreeComponents;
    }
    if (jpeg_->library.out_color_space != JCS_RGB) {
        std::fputs("invalid color space\n", stderr);
        return NotRgb;
    }
    if (int64_t{width()} * height() > kMostPixels) {
        std::fputs("too many pixels\n", stderr);
        return LibraryError;
    }
    return jpeg_->start() ? Ok : LibraryError;
}

JpegReader::Result JpegReader::readRow(uint8_t* samples) {
    return jpeg_->readRow(samples) ? Ok : LibraryError;
}

int JpegReader::width() const {
    return static_cast<int>(jpeg_->library.output_width);
}

int JpegReader::height() const {
    return static_cast<int>(jpeg_->library.output_height);
}
