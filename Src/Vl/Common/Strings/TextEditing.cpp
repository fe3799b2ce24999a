#include "Vl/Common/Strings/TextEditing.h"

#include <algorithm>
#include <cctype>

namespace Valen {

namespace {

// The functions of <cctype> want the character's unsigned value.
bool isSpace(char character) {
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}
char toLower(char character) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

}  // namespace

std::string& ToLower(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), toLower);
    return text;
}

std::string ToLower(const char* text) {
    std::string lower = text;
    ToLower(lower);
    return lower;
}

void TrimWhiteSpaces(std::string& text) {
    const auto end = std::find_if_not(text.rbegin(), text.rend(), isSpace).base();
    text.erase(end, text.end());
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isSpace));
}

void ReplaceAllSubstrings(std::string& text, const std::string& from, const std::string& to) {
    if (from.empty()) {
        return;
    }
    std::string replaced;
    std::size_t done = 0;
    for (std::size_t place = text.find(from); place != std::string::npos; place = text.find(from, done)) {
        replaced.append(text, done, place - done);
        replaced += to;
        done = place + from.size();
    }
    replaced.append(text, done);
    text = std::move(replaced);
}

void str_rev(char* first, char* last) {
    if (first < last) {
        std::reverse(first, last + 1);
    }
}

}  // namespace Valen
