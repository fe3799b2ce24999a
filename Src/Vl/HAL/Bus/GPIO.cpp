#include "Vl/HAL/Bus/GPIO.h"

#include <fcntl.h>
#include <sys/ioctl.h>

#include <charconv>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "Vl/Common/Files/DirectoryReader.h"
#include "Vl/Common/Files/ExactIO.h"

namespace Valen::HAL {
namespace {

/// Request codes of the board's GPIO driver, which takes its argument by value.
enum Request : unsigned long {
    SetPin = 0x7D03,
    SetDirection = 0x7D04,
    GetPin = 0x7D05,
    RequestPin = 0x7D06,
    FreePin = 0x7D07,
};

constexpr unsigned long kHigh = 1UL << 16;        // of SetPin
constexpr unsigned long kDirectionA = 1UL << 24;  // of SetDirection
constexpr unsigned long kDirectionB = 1UL << 16;

constexpr const char* kControllers = "/sys/class/gpio/";
constexpr std::size_t kLongestBase = 31;

constexpr unsigned long pinBits(int pin) {
    return static_cast<unsigned long>(pin) & 0xFFFF;
}

/// At most `size` bytes from the file's start; nothing when it cannot be read.
std::string readStart(const std::string& path, std::size_t size) {
    const Descriptor file = Descriptor::open(path.c_str(), O_RDONLY);
    std::string bytes(size, '\0');
    const ssize_t count = readExact(file.get(), std::as_writable_bytes(std::span(bytes)));
    bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return bytes;
}

/// Only the label's own characters are compared, so that a longer label beginning with it matches too: meant.
bool hasLabel(const std::string& controller, std::string_view label) {
    const std::size_t withNewline = label.size() + 1;
    const std::string text = readStart(controller + "/label", withNewline);
    return text.size() == withNewline && text.starts_with(label);
}

std::optional<int> readBase(const std::string& controller) {
    const std::string text = readStart(controller + "/base", kLongestBase);
    int base = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), base);
    return error == std::errc() ? std::optional(base) : std::nullopt;
}

}  // namespace

GPIO::GPIO() : device_(Descriptor::open("/dev/gpio", O_RDONLY)) {}

int GPIO::request(int pin) {
    return call(RequestPin, pinBits(pin));
}

int GPIO::free(int pin) {
    return call(FreePin, pinBits(pin));
}

int GPIO::setdir(int pin, bool a, bool b) {
    return call(SetDirection, pinBits(pin) | (a ? kDirectionA : 0) | (b ? kDirectionB : 0));
}

int GPIO::setPin(int pin, int value) {
    return call(SetPin, pinBits(pin) | (value != 0 ? kHigh : 0));
}

bool GPIO::getPin(int pin) {
    return call(GetPin, pinBits(pin)) > 0;
}

int GPIO::getBase(const char* label) {
    DirectoryReader entries(kControllers);
    while (const char* name = entries.next()) {
        const std::string controller = std::string(kControllers) + name;
        if (!std::string_view(name).starts_with("gpiochip") || !hasLabel(controller, label)) {
            continue;
        }
        if (const std::optional<int> base = readBase(controller)) {
            return *base;
        }
    }
    return -1;
}

int GPIO::call(unsigned long code, unsigned long argument) {
    return ioctl(device_.get(), code, argument);
}

}  // namespace Valen::HAL
