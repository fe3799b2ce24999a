#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "Tests/Support/TemporaryDirectory.h"

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<FILE, CloseFile>;

inline std::string bytesOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A new file that is open for writing, in a directory of its own.
class OverlayFile {
public:
    operator FILE*() const { return file_.get(); }

    /// What the file system holds: what still waits in the FILE is not seen.
    std::string bytes() const { return bytesOfFile(path_); }

private:
    support::TemporaryDirectory directory_;
    std::string path_ = directory_.file("overlay");
    OpenFile file_{std::fopen(path_.c_str(), "wb")};
};

/// Eight digits a word, eight words a line; lines of zeros that follow one another are one "*".
inline std::string hexOf(std::string_view bytes) {
    std::string text;
    const std::string zeros = "00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000\n";
    for (size_t at = 0; at < bytes.size(); at += 32) {
        std::string line;
        for (size_t i = at; i < std::min(at + 32, bytes.size()); ++i) {
            constexpr std::string_view digits = "0123456789abcdef";
            const auto byte = static_cast<unsigned char>(bytes[i]);
            line += digits[byte / 16];
            line += digits[byte % 16];
            line += (i + 1) % 4 == 0 && i % 32 != 31 && i + 1 != bytes.size() ? " " : "";
        }
        line += '\n';
        if (line != zeros) {
            text += line;
        } else if (!text.ends_with("*\n")) {
            text += "*\n";
        }
    }
    return text;
}
