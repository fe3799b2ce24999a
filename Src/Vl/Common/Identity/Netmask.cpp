#include "Vl/Common/Identity/Netmask.h"

#include <arpa/inet.h>

#include <bit>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace Valen {
namespace {

constexpr unsigned int kMostBits = 32;

SimpleIp maskOf(int bits) {
    return SimpleIp::fromHostOrder(bits == 0 ? 0 : getNetmaskIntMask(bits));
}

/// Strict, other than SimpleIp: four decimal numbers and nothing else.
std::optional<SimpleIp> readAddress(const char* text) {
    std::uint32_t address = 0;
    if (text == nullptr || inet_pton(AF_INET, text, &address) != 1) {
        return std::nullopt;
    }
    return SimpleIp::fromNetworkOrder(address);
}

/// "24" or "255.255.255.0"; -1 for anything else.
int readBits(const char* text) {
    const std::string_view digits = text;
    unsigned int bits = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), bits);
    if (error != std::errc() || end != digits.end()) {
        return getNetmaskBitsFromString(text);
    }
    return bits <= kMostBits ? static_cast<int>(bits) : -1;
}

}  // namespace

int getNetmaskBitsFromIp(SimpleIp mask) {
    return std::countl_one(mask.hostOrder());
}

std::uint32_t getNetmaskIntMask(int bits) {
    return 0xFFFFFFFF << ((0U - static_cast<unsigned int>(bits)) % kMostBits);
}

int getNetmaskBitsFromString(const char* text) {
    const std::optional<SimpleIp> mask = readAddress(text);
    if (!mask) {
        return -1;
    }
    const int bits = getNetmaskBitsFromIp(*mask);
    return *mask == maskOf(bits) ? bits : -1;
}

SimpleString getNetmaskString(int bits) {
    const bool isLength = static_cast<unsigned int>(bits) <= kMostBits;
    return isLength ? SimpleString(SimpleIp::CharString(maskOf(bits)).c_str()) : SimpleString();
}

bool separateSwitchIPAndMask(const char* text, SimpleIp& ip, SimpleIp& mask) {
    const std::string_view whole = text != nullptr ? text : "";
    const std::size_t slash = whole.find('/');
    if (slash == std::string_view::npos) {
        return false;
    }
    const std::optional<SimpleIp> address = readAddress(std::string(whole.substr(0, slash)).c_str());
    const int bits = readBits(whole.data() + slash + 1);
    if (!address || bits < 0) {
        return false;
    }
    ip = *address;
    mask = maskOf(bits);
    return true;
}

}  // namespace Valen
