// Bit sets out of any bytes, one after the other into the same set, and back into bytes.
#include <cstddef>
#include <cstdint>

#include "Fuzz/Require.h"
#include "Vl/Common/Streams/Bitfields.h"
#include "Vl/Common/Streams/InputStream.h"
#include "Vl/Common/Streams/OutputStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Valen::InputStream stream(reinterpret_cast<const char*>(data), size);
    Valen::Bitfields::DynamicProvider set;
    while (!stream.eof()) {
        set.unpack(stream);
        Valen::OutputStream packed(0);
        set.pack(packed);
        Valen::InputStream again(packed);
        Valen::Bitfields::DynamicProvider copy;
        copy.unpack(again);
        require(copy.toString() == set.toString() && again.eof());
    }
    return 0;
}
