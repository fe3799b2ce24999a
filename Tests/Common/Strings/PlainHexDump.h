#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <span>
#include <string>

/// Lines of bytes by the plainest loop there is: one printf for each part, a line cut at 4999 characters,
/// white space trimmed at both ends.
inline std::string plainHexDump(std::span<const unsigned char> bytes, bool withoutAddress, int perLine,
                                const char* byteFormat) {
    std::array<char, 8000> part;
    std::string text;
    std::string line;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index % static_cast<std::size_t>(perLine) == 0) {
            text += line.substr(0, 4999) + '\n';
            line.clear();
            if (!withoutAddress) {
                std::snprintf(part.data(), part.size(), "%08lX  ",
                              reinterpret_cast<unsigned long>(&bytes[index]));
                line += part.data();
            }
        }
        std::snprintf(part.data(), part.size(), byteFormat, bytes[index]);
        line += part.data();
    }
    text += line.substr(0, 4999);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())) != 0) {
        text.pop_back();
    }
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())) != 0) {
        text.erase(0, 1);
    }
    return text;
}
