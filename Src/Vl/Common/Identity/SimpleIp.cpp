#include "Vl/Common/Identity/SimpleIp.h"

#include <arpa/inet.h>

#include <bit>
#include <cstdio>

namespace Valen {

SimpleIp::SimpleIp(const char* text) {
    std::array<unsigned char, sizeof networkOrder_> octets{};
    // Not inet_pton: the leniency that the header describes is meant.
    if (text != nullptr && std::sscanf(text, "%hhu.%hhu.%hhu.%hhu", &octets[0], &octets[1], &octets[2],
                                       &octets[3]) == static_cast<int>(octets.size())) {
        networkOrder_ = std::bit_cast<std::uint32_t>(octets);
    }
}

SimpleIp SimpleIp::fromNetworkOrder(std::uint32_t address) {
    SimpleIp ip;
    ip.networkOrder_ = address;
    return ip;
}

SimpleIp::CharString::CharString(SimpleIp ip) {
    const std::uint32_t address = ip.networkOrder();
    inet_ntop(AF_INET, &address, text_.data(), static_cast<socklen_t>(text_.size()));
}

}  // namespace Valen
