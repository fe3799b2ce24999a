#include "Vl/Common/Streams/Bitfields.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "Vl/Common/Streams/InputStream.h"
#include "Vl/Common/Streams/OutputStream.h"

namespace Valen::Bitfields {
namespace {

constexpr std::size_t kWordBits = 64;

constexpr std::size_t wordsFor(int bits) {
    return (static_cast<std::size_t>(std::max(bits, 0)) + kWordBits - 1) / kWordBits;
}

}  // namespace

void pack(const unsigned long* words, int bits, OutputStream& stream) {
    const std::span set(words, wordsFor(bits));
    stream.ensureBufferSpace(static_cast<unsigned int>(set.size_bytes()));
    for (const unsigned long word : set) {
        stream.unsafePutUInt64(word);
    }
}

void unpack(unsigned long* words, int bits, InputStream& stream) {
    for (unsigned long& word : std::span(words, wordsFor(bits))) {
        word = stream.getUInt64();
    }
}

std::string toString(const unsigned long* words, int bits) {
    std::string text(static_cast<std::size_t>(std::max(bits, 0)), '0');
    for (std::size_t bit = 0; bit < text.size(); ++bit) {
        if ((words[bit / kWordBits] >> (bit % kWordBits) & 1) != 0) {
            text[bit] = '1';
        }
    }
    return text;
}

void DynamicProvider::resize(int bits) {
    bits_ = std::clamp(bits, 0, kMostBits);
    words_.resize(std::max(words_.size(), wordsFor(bits_)));
}

void DynamicProvider::pack(OutputStream& stream) const {
    stream.putUInt16(static_cast<std::uint16_t>(bits_));
    Bitfields::pack(words(), bits_, stream);
}

void DynamicProvider::unpack(InputStream& stream) {
    resize(stream.getUInt16());
    Bitfields::unpack(words(), bits_, stream);
}

}  // namespace Valen::Bitfields
