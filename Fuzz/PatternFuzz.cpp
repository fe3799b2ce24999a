// A pattern file of any content, plain and corrupted: chunks together are the file, one bit aside, and words
// stay within the buffer. The first byte says which.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "Fuzz/MemoryFile.h"
#include "Fuzz/Require.h"
#include "Vl/Common/Identity/JenkinsChecksum.h"
#include "Vl/HAL/Board/PatternFile.h"

namespace {

constexpr std::size_t kChunk = 1024;
constexpr std::size_t kLength = 8;
constexpr std::size_t kFirstData = 12;

std::int64_t announced(const std::vector<std::uint8_t>& bytes) {
    std::uint32_t words = 0;
    std::memcpy(&words, bytes.data() + kLength, sizeof words);
    return std::int64_t{words} * 4;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    static MemoryFile memory;
    const bool corrupt = (data[0] & 1) != 0;
    std::vector<std::uint8_t> bytes(data + 1, data + size);
    memory.write(bytes.data(), bytes.size());

    Valen::PatternFile file(memory.path(), corrupt);
    require(file.isOpen());
    Valen::JenkinsChecksum checksum;
    std::vector<std::uint8_t> read;
    while (file.next()) {
        require(!file.bytes().empty() && file.bytes().size() <= kChunk);
        require(file.words().size() == (file.bytes().size() + 3) / 4);
        checksum.data(file.words().data(), static_cast<int>(file.words().size()));
        const auto* chunk = reinterpret_cast<const std::uint8_t*>(file.bytes().data());
        read.insert(read.end(), chunk, chunk + file.bytes().size());
    }
    require(checksum.count == (bytes.size() + 3) / 4);
    require(file.payloadRead() == static_cast<long>(bytes.size()) - 12);

    std::vector<std::uint8_t> expected = bytes;
    expected.resize(std::max(bytes.size(), kFirstData + 1));
    require(file.payloadExpected() == announced(expected));
    expected[kFirstData] ^= corrupt ? 1 : 0;
    expected.resize(bytes.size());
    require(read == expected);
    return 0;
}
