#include "Vl/Graphics/Images/WritePng.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include "Vl/Graphics/Images/WritePngSteps.h"

namespace {

constexpr int64_t kChannels = 4;

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};

struct Message {
    int status;
    const char* text;
};

constexpr Message kInitMessages[] = {
    {WritePngNoMemory, "wpng:  insufficient memory\n"},
    {WritePngLibraryError, "wpng:  libpng initialization problem (longjmp)\n"},
    {WritePngBadType, "wpng:  internal logic error (unexpected PNM type)\n"},
};

[[noreturn]] void end(const Message& message) {
    std::fputs(message.text, stderr);
    std::exit(message.status);
}

[[noreturn]] void endForInit(int status) {
    const auto* const known = std::ranges::find(kInitMessages, status, &Message::status);
    end({status, known != std::end(kInitMessages) ? known->text : "wpng:  unknown writepng_init() error\n"});
}

[[noreturn]] void endForRow(long rowsLeft) {
    std::fprintf(stderr, "wpng:  libpng problem (longjmp) while writing row %ld\n", rowsLeft);
    std::exit(WritePngLibraryError);
}

void writeRows(const uint8_t* pixels, PngOutput& output) {
    const uint8_t* row = pixels;
    for (int left = output.height; left > 0; --left, row += kChannels * output.width) {
        if (writepng_encode_row(output, row) != WritePngOk) {
            endForRow(left);
        }
    }
}

void writeImage(const uint8_t* pixels, PngOutput& output) try {
    const auto rows = std::make_unique<const uint8_t*[]>(static_cast<size_t>(output.height));
    for (int64_t row = 0; row < output.height; ++row) {
        rows[static_cast<size_t>(row)] = pixels + row * kChannels * output.width;
    }
    if (writepng_encode_image(output, rows.get()) != WritePngOk) {
        end({WritePngLibraryError, "wpng:  libpng problem (longjmp) while writing image data\n"});
    }
} catch (const std::bad_alloc&) {
    endForLackOfImageMemory();
}

/// Meant: the display's gamma is read and forgotten. A file that is written carries no gamma.
void readScreenGamma() {
    if (const char* text = std::getenv("SCREEN_GAMMA"); text != nullptr) {
        [[maybe_unused]] const double ignored = std::strtod(text, nullptr);
    }
}

}  // namespace

void endForLackOfImageMemory() {
    end({WritePngNoMemory, "wpng:  insufficient memory for image data\n"});
}

void write_png(const uint8_t* pixels, PngOutput& output) {
    if (const int status = writepng_init(output); status != WritePngOk) {
        endForInit(status);
    }
    if (output.interlaced) {
        writeImage(pixels, output);
    } else {
        writeRows(pixels, output);
    }
    if (writepng_encode_finish(output) != WritePngOk) {
        end({WritePngLibraryError, "wpng:  error on final libpng call\n"});
    }
    writepng_cleanup(output);
}

void write_png(const uint8_t* pixels, int width, int height, const char* path) {
    readScreenGamma();
    const std::unique_ptr<FILE, CloseFile> file(path != nullptr ? std::fopen(path, "wbe") : nullptr);
    PngOutput output;
    output.file = file.get();
    output.width = width;
    output.height = height;
    write_png(pixels, output);
}
