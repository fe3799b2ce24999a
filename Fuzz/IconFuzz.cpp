// The size in any PNG file's header: the input as it is, and behind a signature.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "Fuzz/MemoryFile.h"
#include "Vl/Graphics/Images/Icon.h"

namespace {

void readSize(const std::string& bytes) {
    static MemoryFile file;
    file.write(bytes.data(), bytes.size());
    Icon icon;
    icon.Load(file.path());
    icon.LoadDim();
    // Both or none, and never more than libpng lets through.
    const int width = icon.getWidth();
    const int height = icon.getHeight();
    if (width < 0 || width > 1000000 || height < 0 || height > 1000000 || (width == 0) != (height == 0)) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    readSize(input);
    readSize("\x89PNG\r\n\x1a\n" + input);
    return 0;
}
