#include "Vl/Common/Identity/MACAddress.h"

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstring>
#include <string_view>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Strings/NumberParsing.h"

namespace Valen {
namespace {

/// "02:00:5e:01:02:03".
bool readSeparated(const char* text, MACAddress::Bytes& bytes) {
    try {
        for (unsigned char& byte : bytes) {
            const bool isLast = &byte == &bytes.back();
            byte = static_cast<unsigned char>(stringToLong(&text, isLast ? '\0' : ':', 16));
        }
        return true;
    } catch (int) {
        return false;
    }
}

/// "02005E010203".
bool readJoined(const char* text, MACAddress::Bytes& bytes) {
    std::array<unsigned int, MACAddress::kSize> numbers{};
    if (std::sscanf(text, "%02X%02X%02X%02X%02X%02X", &numbers[0], &numbers[1], &numbers[2], &numbers[3],
                    &numbers[4], &numbers[5]) != static_cast<int>(numbers.size())) {
        return false;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bytes[i] = static_cast<unsigned char>(numbers[i]);
    }
    return true;
}

}  // namespace

MACAddress::MACAddress(const char* text) {
    fromString(text);
}

bool MACAddress::fromString(const char* text) {
    if (text != nullptr && (readSeparated(text, bytes_) || readJoined(text, bytes_))) {
        return true;
    }
    bytes_ = {};
    return false;
}

MACAddress MACAddress::fromInterface(const char* ifname) {
    ifreq request{};
    // A name that does not fit names no interface; its beginning might name another one.
    const std::string_view name = ifname != nullptr ? ifname : "";
    if (name.size() >= sizeof request.ifr_name) {
        return {};
    }
    name.copy(request.ifr_name, name.size());
    const Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (ioctl(socket.get(), SIOCGIFHWADDR, &request) != 0) {
        return {};
    }
    MACAddress address;
    std::memcpy(address.bytes_.data(), request.ifr_hwaddr.sa_data, kSize);
    return address;
}

MACAddress::CharString MACAddress::toString(int separator) const {
    return {bytes_.data(), separator};
}

MACAddress::CharString::CharString(const unsigned char* bytes, int separator) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    char* out = text_.data();
    for (std::size_t i = 0; i < kSize; ++i) {
        if (i > 0 && separator > 0) {
            *out++ = static_cast<char>(separator);
        }
        *out++ = kDigits[bytes[i] >> 4];
        *out++ = kDigits[bytes[i] & 0xF];
    }
}

}  // namespace Valen
