// Any text as an Ethernet address; an address that was read must read the same from both forms it is written
// in.
#include <cstddef>
#include <cstdint>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Identity/MACAddress.h"

using Valen::MACAddress;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    MACAddress address("02:00:5e:01:02:03");
    require(address.fromString(text.c_str()) || address == MACAddress());
    for (const int separator : {int{':'}, 0}) {
        MACAddress again;
        require(again.fromString(address.toString(separator)) && again == address);
    }
    return 0;
}
