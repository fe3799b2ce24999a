// A message of any content, read by any sequence of operations: the first byte says how many bytes of the
// input are operations, the rest is the message.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ios>
#include <span>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Streams/InputStream.h"

namespace {

using Valen::InputStream;

/// Sizes and offsets of all kinds, the absurd ones too.
long numberFrom(std::uint8_t operation) {
    constexpr std::array<long, 16> kNumbers = {0,  1,  -1,  2,   3,     7,     8,         -8,
                                               63, 64, 255, 256, -1000, 70000, INT64_MAX, INT64_MIN};
    return kNumbers[operation >> 4];
}

void getLine(InputStream& stream, std::uint8_t operation) {
    std::array<char, 64> line;
    const long size = std::min<long>(numberFrom(operation), line.size());
    if (stream.getline(line.data(), size, 'a')) {
        require(std::strlen(line.data()) < line.size());
    }
}

void readBytes(InputStream& stream, std::uint8_t operation) {
    std::array<char, 64> bytes;
    const long wanted = std::min<long>(numberFrom(operation), bytes.size());
    require(stream.read(bytes.data(), wanted) <= std::max(wanted, 0L));
}

void findByte(InputStream& stream, std::uint8_t operation) {
    const auto wanted = static_cast<char>(operation);
    const long distance = stream.find(wanted);
    require(distance < 0 || stream.GetRemainingData()[distance] == wanted);
}

void show(InputStream& stream, std::uint8_t operation) {
    std::string text;
    stream.StreamToHumanString(text, operation > 127);
    std::stringstream dump;
    stream.toHexString(dump, operation);
}

void fill(InputStream& stream, std::uint8_t operation) {
    const auto size = static_cast<int>(std::clamp<long>(numberFrom(operation), -1000, 70000));
    std::fill_n(stream.getBuffer(size), std::max(size, 0), 'f');
}

using Operation = void (*)(InputStream& stream, std::uint8_t operation);

constexpr Operation kOperations[] = {
    [](InputStream& s, std::uint8_t) { s.getUInt8(); },
    [](InputStream& s, std::uint8_t) { s.getUInt16(); },
    [](InputStream& s, std::uint8_t) { s.getInt32(); },
    [](InputStream& s, std::uint8_t) { s.getUInt64(); },
    [](InputStream& s, std::uint8_t) { require(std::strlen(s.getString().c_str()) <= 255); },
    getLine,
    [](InputStream& s, std::uint8_t) {
        std::string line;
        require(s.getline(line) || line.empty());
    },
    readBytes,
    findByte,
    [](InputStream& s, std::uint8_t o) { s.seekg(numberFrom(o), std::ios_base::cur); },
    [](InputStream& s, std::uint8_t o) { s.seekg(numberFrom(o), std::ios_base::end); },
    [](InputStream& s, std::uint8_t) { require(s.eof() == (s.peek() == -1)); },
    [](InputStream& s, std::uint8_t) { s.unget(); },
    [](InputStream& s, std::uint8_t o) { s.truncate(numberFrom(o)); },
    show,
    fill,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span input(data, size);
    const std::size_t count = input.empty() ? 0 : std::min<std::size_t>(input[0], size - 1);
    const std::span message = input.subspan(std::min<std::size_t>(1 + count, size));
    InputStream stream(reinterpret_cast<const char*>(message.data()), message.size());
    for (const std::uint8_t operation : input.subspan(std::min<std::size_t>(1, size), count)) {
        kOperations[operation % std::size(kOperations)](stream, operation);
        require(stream.tellg() >= 0 && stream.GetRemainingSize() == stream.getSize() - stream.tellg());
    }
    return 0;
}
