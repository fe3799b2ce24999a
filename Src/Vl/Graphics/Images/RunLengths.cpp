#include "Vl/Graphics/Images/RunLengths.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "Vl/Graphics/Images/BigEndian.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

constexpr int kBlock = 64;  // pixels whose changes fit one mask
constexpr int kLengthShift = 18;
constexpr int64_t kLongestRun = 0x3fff;

/// A pixel's code. All three fields are rounded by one addition: their top bits stay out of it, so that no
/// carry reaches the neighbour, and join by exclusive or. For one word and for a vector of words.
template <typename Word>
Word codeOf(Word pixel) {
    constexpr uint32_t kTopBits = 1U << 27 | 1U << 17 | 1U << 8;
    constexpr uint32_t kHalves = 16U << 18 | 8U << 9 | 8U;
    const Word rounded = ((pixel & ~kTopBits) + kHalves) ^ (pixel & kTopBits);
    return (rounded >> 4 & 0x1fU) | (rounded >> 8 & 0x3e0U) | (rounded >> 13 & 0x3fc00U);
}

using Words = uint32_t __attribute__((vector_size(16)));
constexpr size_t kLanes = sizeof(Words) / sizeof(uint32_t);

Words load(const uint32_t* words) {
    Words lanes;
    std::memcpy(&lanes, words, sizeof lanes);
    return lanes;
}

void store(uint32_t* words, Words lanes) {
    std::memcpy(words, &lanes, sizeof lanes);
}

Words bigEndian(Words words) {
    if constexpr (std::endian::native == std::endian::big) {
        return words;
    }
    words = (words >> 8 & 0x00ff00ffU) | (words & 0x00ff00ffU) << 8;
    return words >> 16 | words << 16;
}

/// Bit i tells whether words[i] differs from the word before it, words[-1] included, for `kBlock` words.
#ifdef __SSE2__
uint64_t changesIn(const uint32_t* words) {
    const auto sameInFour = [words](int at) {
        __m128i here, before;
        std::memcpy(&here, words + at, sizeof here);
        std::memcpy(&before, words + at - 1, sizeof before);
        return _mm_cmpeq_epi32(here, before);
    };
    uint64_t same = 0;
    for (int at = 0; at < kBlock; at += 16) {
        const __m128i low = _mm_packs_epi32(sameInFour(at), sameInFour(at + 4));
        const __m128i high = _mm_packs_epi32(sameInFour(at + 8), sameInFour(at + 12));
        const auto bits = static_cast<uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
        same |= uint64_t{bits} << at;
    }
    return ~same;
}
#else
uint64_t changesIn(const uint32_t* words) {
    uint64_t changes = 0;
    if (std::memcmp(words, words - 1, kBlock * sizeof *words) == 0) {
        return changes;
    }
    for (int i = 0; i < kBlock; ++i) {
        changes |= uint64_t{words[i] != words[i - 1]} << i;
    }
    return changes;
}
#endif

}  // namespace

bool RunLengths::add(std::span<const uint32_t> pixels) {
    if (pixels.empty()) {
        return !lost_;
    }
    // The first pixel's predecessor may lie elsewhere, so its code is compared instead.
    addBlock(pixels.data(), 1, 1);
    const uint32_t* next = pixels.data() + 1;
    const uint32_t* const end = pixels.data() + pixels.size();
    for (; end - next >= kBlock; next += kBlock) {
        addBlock(next, changesIn(next), kBlock);
    }
    const auto rest = static_cast<int>(end - next);
    if (rest > 0 && pixels.size() > kBlock) {  // one more mask, whose low bits are done already
        addBlock(next, changesIn(end - kBlock) >> (kBlock - rest), rest);
    } else {
        addBlock(next, (uint64_t{1} << rest) - 1, rest);
    }
    return !lost_;
}

bool RunLengths::finish() {
    if (length_ > 0) {
        begin(0, 0);
    }
    put(0);  // the end word
    flush();
    return !lost_;
}

/// Goes through the pixels that may begin a run: equal words have equal codes, others mostly not.
void RunLengths::addBlock(const uint32_t* pixels, uint64_t changes, int count) {
    if (changes == ~uint64_t{0}) {
        return addBusyBlock(pixels);
    }
    for (; changes != 0; changes &= changes - 1) {
        const int at = std::countr_zero(changes);
        const uint32_t code = codeOf(pixels[at]);
        if (code != code_ || length_ + at == 0) {
            begin(code, at);
        }
    }
    length_ += count;
}

/// Noise: every word differs from the one before, so most runs are one pixel long.
void RunLengths::addBusyBlock(const uint32_t* pixels) {
    std::array<uint32_t, 1 + kBlock> codes;
    codes[0] = code_;
    for (size_t i = 0; i < kBlock; i += kLanes) {
        store(&codes[1 + i], codeOf(load(pixels + i)));
    }
    uint64_t changes = changesIn(&codes[1]);
    if (changes == ~uint64_t{0}) {
        begin(codes[1], 0);
        addSingles(&codes[1]);
        return;
    }
    for (; changes != 0; changes &= changes - 1) {
        const int at = std::countr_zero(changes);
        begin(codes[static_cast<size_t>(1 + at)], at);
    }
    length_ += kBlock;
}

/// Writes `kBlock` runs of one pixel each; the last of them goes on, so its word does not count yet.
void RunLengths::addSingles(const uint32_t* codes) {
    if (kChunk - used_ < kBlock) {
        flush();
    }
    for (size_t i = 0; i < kBlock; i += kLanes) {
        store(&words_[used_ + i], bigEndian(load(codes + i) | 1U << kLengthShift));
    }
    used_ += kBlock - 1;
    code_ = codes[kBlock - 1];
    length_ = 1;
}

/// Writes the run that ends before pixel `at` of the block at hand, and begins one of `code` there.
void RunLengths::begin(uint32_t code, int at) {
    int64_t length = length_ + at;
    for (; length > kLongestRun; length -= kLongestRun) {
        put(code_ | static_cast<uint32_t>(kLongestRun) << kLengthShift);
    }
    if (length > 0) {
        put(code_ | static_cast<uint32_t>(length) << kLengthShift);
    }
    code_ = code;
    length_ = -at;
}

void RunLengths::put(uint32_t word) {
    if (used_ == kChunk) {
        flush();
    }
    words_[used_++] = bigEndian(word);
}

void RunLengths::flush() {
    lost_ = lost_ || !take_({words_.data(), used_});
    used_ = 0;
}
