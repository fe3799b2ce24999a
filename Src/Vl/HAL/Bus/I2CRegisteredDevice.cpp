#include "Vl/HAL/Bus/I2CRegisteredDevice.h"

#include <unistd.h>

#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <system_error>

namespace Valen {
namespace {

constexpr std::string_view kRegistry = "/tmp/i2c/";
constexpr int kNoBus = -1;

std::string linkOf(const char* name) {
    return std::string(kRegistry) += name;
}

/// Where a link of the registry leads; empty when there is none or its target may not be whole.
class Target {
public:
    explicit Target(const char* name) {
        const ssize_t length = ::readlink(linkOf(name).c_str(), buffer_.data(), buffer_.size());
        if (length > 0 && static_cast<std::size_t>(length) < buffer_.size()) {
            length_ = static_cast<std::size_t>(length);
        }
    }

    std::string_view text() const { return {buffer_.data(), length_}; }

private:
    std::array<char, 128> buffer_;
    std::size_t length_ = 0;
};

}  // namespace

int I2CRegisteredDevice::getBusOf(const char* name) {
    const Target target(name);
    const std::string_view text = target.text();
    if (text.empty()) {
        return kNoBus;
    }
    const std::size_t hyphen = text.rfind('-');
    if (hyphen == std::string_view::npos) {
        return 0;  // meant: what tells no number is the first bus
    }
    int bus = kNoBus;
    std::from_chars(text.data() + hyphen + 1, text.data() + text.size(), bus);
    return bus;
}

I2CAddress I2CRegisteredDevice::getAddressOf(const char* name) {
    const Target target(name);
    std::string_view text = target.text();
    text = text.substr(0, text.find_last_not_of('/') + 1);
    I2CAddress place;
    const std::size_t slash = text.rfind('/');
    if (slash == std::string_view::npos) {
        return place;
    }
    place.bus = 0;
    place.parse(text.substr(slash + 1));
    return place;
}

std::filesystem::path I2CRegisteredDevice::getPath(const char* name) {
    return linkOf(name);
}

}  // namespace Valen
