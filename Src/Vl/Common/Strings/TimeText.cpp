#include "Vl/Common/Strings/TimeText.h"

#include <array>

namespace Valen {

namespace {

std::string localTime(std::time_t time, const char* format) {
    tzset();  // unlike localtime, localtime_r need not notice a new TZ
    std::tm fields;
    if (localtime_r(&time, &fields) == nullptr) {
        return {};
    }
    std::array<char, 64> text;
    return {text.data(), std::strftime(text.data(), text.size(), format, &fields)};
}

}  // namespace

std::string GetTimeAsString() {
    return localTime(std::time(nullptr), "%d.%m.%y_%H.%M.%S");
}

std::string GetTimeString() {
    return std::to_string(std::time(nullptr));
}

std::string TimeToString(std::time_t time) {
    return localTime(time, "%d.%m.%Y %H:%M:%S");
}

std::string TimeToStringWithoutDate(std::time_t time) {
    return localTime(time, "%H:%M:%S");
}

}  // namespace Valen
