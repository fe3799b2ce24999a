// A GPIO controller with any label and base, and any label that is looked for: three texts with zero bytes
// between them. The linker leads what is done below "/sys/class/gpio/" here.
#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Fuzz/MemoryFile.h"
#include "Fuzz/Require.h"
#include "Vl/HAL/Bus/GPIO.h"

namespace {

constexpr std::string_view kControllers = "/sys/class/gpio/";
constexpr std::string_view kController = "gpiochip448";

/// The one controller's directory entry, and whether it has been listed.
struct Listing {
    dirent entry{};
    bool isDone = false;
};
Listing listing;

DIR* asDirectory() {
    return reinterpret_cast<DIR*>(&listing);
}

MemoryFile& labelFile() {
    static MemoryFile file;
    return file;
}

MemoryFile& baseFile() {
    static MemoryFile file;
    return file;
}

std::string_view takeText(std::string_view& rest) {
    const std::string_view text = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(rest.size(), text.size() + 1));
    return text;
}

/// The decimal number with which the first 31 bytes of `text` begin, -1 for none or one that is no int.
long numberOf(std::string_view text) {
    text = text.substr(0, 31);
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative ? 1 : 0);
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    long number = 0;
    for (const char digit : text.substr(0, digits)) {
        number = std::min(10 * number + (digit - '0'), 10L * INT_MAX);
    }
    number = isNegative ? -number : number;
    return digits == 0 || number > INT_MAX || number < INT_MIN ? -1 : number;
}

}  // namespace

extern "C" {

DIR* __real_opendir(const char* path);
dirent* __real_readdir(DIR* directory);
int __real_closedir(DIR* directory);
int __real_open(const char* path, int flags, ...);

DIR* __wrap_opendir(const char* path) {
    if (path != kControllers) {
        return __real_opendir(path);
    }
    listing.isDone = false;
    kController.copy(listing.entry.d_name, sizeof listing.entry.d_name - 1);
    return asDirectory();
}

dirent* __wrap_readdir(DIR* directory) {
    if (directory != asDirectory()) {
        return __real_readdir(directory);
    }
    return std::exchange(listing.isDone, true) ? nullptr : &listing.entry;
}

int __wrap_closedir(DIR* directory) {
    return directory == asDirectory() ? 0 : __real_closedir(directory);
}

int __wrap_open(const char* path, int flags, ...) {
    const std::string_view name(path);
    if (name.starts_with(kControllers)) {
        const std::string controller = std::string(kControllers) += kController;
        require(name == controller + "/label" || name == controller + "/base");
        return __real_open((name.ends_with("label") ? labelFile() : baseFile()).path(), flags);
    }
    va_list list;
    va_start(list, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : mode_t{0};
    va_end(list);
    return __real_open(path, flags, mode);
}

}  // extern "C"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const std::string wanted(takeText(rest));
    const std::string_view label = takeText(rest);
    labelFile().write(label.data(), label.size());
    baseFile().write(rest.data(), rest.size());
    const bool isLabelled = label.size() > wanted.size() && label.starts_with(wanted);
    require(Valen::HAL::GPIO::getBase(wanted.c_str()) == (isLabelled ? numberOf(rest) : -1));
    return 0;
}
