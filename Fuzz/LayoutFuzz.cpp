// A core layout of any content, searched as a stream and in memory with every kind of name pattern. The first
// bytes are a query of its own.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string>

#include "Fuzz/MemoryFile.h"
#include "Fuzz/Require.h"
#include "Vl/HAL/Fpga/CoreLayout.h"

namespace {

struct Query {
    std::string name;
    int firstWord;
    int count;
    int minVersion;
    int maxVersion;
};

constexpr int kMostWords = 16;
using Words = std::array<unsigned int, kMostWords>;
const Words kUntouched = [] {
    Words words;
    words.fill(0xA5A5A5A5);
    return words;
}();

const Query kQueries[] = {
    {"*central_sync", 1, 1, -1, -1},
    {"cardid", 1, 1, -1, -1},
    {"a*c", 0, kMostWords, -1, -1},
    {"*", 0, 1, 1, 5},
    {"", 2, 2, -1, 0},
    {"**", -1, 1, -1, -1},
    {"bus_breakout", 0x7FFFFFFF, 1, 0, -1},
};

/// A query from the first bytes of `data`, which are taken off it.
Query takeQuery(std::span<const std::uint8_t>& data) {
    std::array<std::uint8_t, 16> bytes{};
    const std::size_t size = data.size() < bytes.size() ? data.size() : bytes.size();
    std::copy_n(data.begin(), size, bytes.begin());
    data = data.subspan(size);
    const auto name = reinterpret_cast<const char*>(bytes.data());
    return {std::string(name, strnlen(name, 12)), static_cast<std::int8_t>(bytes[12]),
            bytes[13] % (kMostWords + 1), static_cast<std::int8_t>(bytes[14]),
            static_cast<std::int8_t>(bytes[15])};
}

/// Searches the bytes, and the stream that holds the same.
void search(std::span<const std::uint8_t> bytes, FILE* layout, const Query& query) {
    Words fromMemory = kUntouched;
    Words fromStream = kUntouched;
    const int result =
        Valen::HAL::getPldCoreInfo(std::as_bytes(bytes), query.name.c_str(), fromMemory.data(),
                                   query.firstWord, query.count, query.minVersion, query.maxVersion);
    require(result == 1 || result == -4 || result == -5 || result == -7);
    for (std::size_t i = result == 1 || result == -5 ? static_cast<std::size_t>(query.count) : 0;
         i < kMostWords; ++i) {
        require(fromMemory[i] == kUntouched[i]);
    }
    std::rewind(layout);
    require(result == Valen::HAL::getPldCoreInfo(layout, query.name.c_str(), fromStream.data(),
                                                 query.firstWord, query.count, query.minVersion,
                                                 query.maxVersion));
    require(fromMemory == fromStream);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::span<const std::uint8_t> bytes(data, size);
    const Query own = takeQuery(bytes);
    static MemoryFile file;
    file.write(bytes.data(), bytes.size());
    const std::unique_ptr<FILE, int (*)(FILE*)> layout(std::fopen(file.path(), "r"), &std::fclose);
    require(layout != nullptr);
    search(bytes, layout.get(), own);
    for (const Query& query : kQueries) {
        search(bytes, layout.get(), query);
    }
    return 0;
}
