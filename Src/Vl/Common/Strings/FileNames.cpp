#include "Vl/Common/Strings/FileNames.h"

#include <string_view>

namespace Valen {

namespace {

struct Shortening {
    std::string_view extension;
    std::string_view letter;
};

constexpr Shortening kShortenings[] = {
    {".cpp", "C"},
    {".h", "H"},
};

}  // namespace

const char* GetTemporaryFilePrefix() {
    return "dummyFile";
}

std::string extractFileName(const char* path, int /*line*/) {
    if (path == nullptr) {
        return {};
    }
    std::string name = path;
    std::size_t separator = name.rfind('/');
    if (separator == std::string::npos) {
        separator = name.rfind('\\');
    }
    // Without any separator this erases nothing, as npos + 1 is 0.
    name.erase(0, separator + 1);
    for (const Shortening& shortening : kShortenings) {
        const std::size_t place = name.find(shortening.extension);
        if (place != std::string::npos) {
            name.replace(place, shortening.extension.size(), shortening.letter);
        }
    }
    return name;
}

void MakePath(const char* directory, const char* name, std::string& out) {
    std::string path = directory;
    path += '/';
    path += name;
    out = std::move(path);
}

}  // namespace Valen
