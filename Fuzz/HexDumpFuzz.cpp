// Bytes of any content and number, dumped in every way; the fast ways must agree with the plain loop.
#include <cstddef>
#include <cstdint>
#include <span>
#include <sstream>
#include <string>

#include "Fuzz/Require.h"
#include "Tests/Common/Strings/PlainHexDump.h"
#include "Vl/Common/Strings/HexDump.h"

namespace {

constexpr const char* kByteFormats[] = {"%02X ", "%02x", " %d ", "%700X", ""};

/// Long lines have a number of their own: 1659 is the last that fits the line buffer with any address.
constexpr int kPerLines[] = {-1, 0, 1, 7, 16, 32, 1659, 1666, 5000, 0x7FFFFFFF};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const bool withoutAddress = (*data & 1) != 0;
    const int perLine = kPerLines[*data / 2 % std::size(kPerLines)];
    const std::span<const unsigned char> bytes(data + 1, size - 1);
    const auto length = static_cast<int>(bytes.size());

    for (const char* byteFormat : kByteFormats) {
        std::string out;
        Valen::BinaryToXXXString(bytes.data(), length, out, withoutAddress, true, perLine, byteFormat);
        require(out == (perLine > 0 ? plainHexDump(bytes, withoutAddress, perLine, byteFormat) : ""));
    }
    require(Valen::BinaryToHexSimple(bytes.data(), length).size() == 2 * bytes.size());
    std::stringstream stream;
    Valen::toHexString(stream, bytes.data(), length);
    return 0;
}
