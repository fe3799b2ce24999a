// Any text as an IPv4 address and as an address with its mask; what was read is what the system reads.
#include <arpa/inet.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Identity/Netmask.h"

using Valen::SimpleIp;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const SimpleIp ip(text.c_str());
    in_addr_t strict = 0;
    require(inet_pton(AF_INET, text.c_str(), &strict) != 1 || ip.networkOrder() == strict);
    require(SimpleIp(SimpleIp::CharString(ip)) == ip);

    SimpleIp address;
    SimpleIp mask;
    if (Valen::separateSwitchIPAndMask(text.c_str(), address, mask)) {
        const int bits = Valen::getNetmaskBitsFromIp(mask);
        require(Valen::getNetmaskString(bits) == SimpleIp::CharString(mask).c_str());
    }
    require(Valen::getNetmaskBitsFromString(text.c_str()) <= 32);
    return 0;
}
