// A protected record in a file of any content, at any offset: the first byte says how the data are read.
#include <array>
#include <cstddef>
#include <cstdint>

#include "Fuzz/MemoryFile.h"
#include "Fuzz/Require.h"
#include "Vl/Common/Files/ProtectedFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    static MemoryFile file;
    file.write(data + 1, size - 1);
    const long offset = data[0] % 16 - 2;
    const int step = data[0] / 16 + 1;
    Valen::ProtectedFile::In in(file.path(), offset);
    require(!in.isValid() || offset + 2 <= static_cast<long>(size - 1));
    std::array<char, 16> bytes;
    long read = 0;
    for (int count = 0; in.isValid() && (count = in.Read(bytes.data(), step)) > 0;) {
        read += count;
        require(in.position() == read);
    }
    require(!in.isValid() || read == static_cast<long>(size - 1) - offset - 2);
    return 0;
}
