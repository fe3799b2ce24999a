// A core layout of any content, read with every kind of name pattern.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "Vl/HAL/Fpga/CoreLayout.h"

namespace {

struct Query {
    const char* name;
    int firstWord;
    int count;
    int minVersion;
    int maxVersion;
};

constexpr int kMostWords = 16;

constexpr Query kQueries[] = {
    {"*central_sync", 1, 1, -1, -1},
    {"cardid", 1, 1, -1, -1},
    {"a*c", 0, kMostWords, -1, -1},
    {"*", 0, 1, 1, 5},
    {"", 2, 2, -1, 0},
    {"**", -1, 1, -1, -1},
    {"bus_breakout", 0x7FFFFFFF, 1, 0, -1},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::unique_ptr<FILE, int (*)(FILE*)> layout(fmemopen(const_cast<std::uint8_t*>(data), size, "r"),
                                                       &std::fclose);
    for (const Query& query : kQueries) {
        std::array<unsigned int, kMostWords> words;
        std::rewind(layout.get());
        Valen::HAL::getPldCoreInfo(layout.get(), query.name, words.data(), query.firstWord, query.count,
                                   query.minVersion, query.maxVersion);
    }
    return 0;
}
