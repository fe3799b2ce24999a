#include "Vl/HAL/Board/Thermals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <string>

#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Common/Strings/NumberParsing.h"
#include "Vl/Common/Strings/SimpleString.h"
#include "Vl/HAL/Board/CPInterface.h"

namespace Valen {
namespace {

constexpr int kUnknown = 0x7FFFFFFF;
constexpr std::size_t kLongestText = 7;

}  // namespace

std::optional<int> parseTemperature(std::string_view text) {
    const auto [found, number] = stringToLong(std::string(text).c_str(), 10);
    if (!found || number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
        return std::nullopt;
    }
    return static_cast<int>(number);
}

bool CPInterface::openTherm(const therm_entry* entries, int* fds, int n) {
    for (int i = 0; i < n; ++i) {
        const auto path = SimpleString::FormatWithParams("/sys/class/hwmon/hwmon%d/device/temp%d_input",
                                                         entries[i].hwmon, entries[i].sensor);
        fds[i] = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);  // NOLINT: variadic
    }
    return true;
}

bool CPInterface::gettemp(int& value, int fd) {
    if (fd < 1) {
        return false;
    }
    std::array<char, kLongestText> text;
    lseek(fd, 0, SEEK_SET);
    const ssize_t size = readExact(fd, std::as_writable_bytes(std::span(text)));
    if (size <= 1) {
        VL_LOG(CPCardInterface, DEBUG, "cannot read for: %d", fd);
        return false;
    }
    const auto temperature = parseTemperature({text.data(), static_cast<std::size_t>(size)});
    value = temperature.value_or(kUnknown);
    return temperature.has_value();
}

}  // namespace Valen
