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
constexpr uint64_t kAllChange = ~uint64_t{0};

// The fields of a pixel are rounded by one addition: their top bits stay out of it, so that no carry reaches
// the neighbour, and join by exclusive or.
constexpr uint32_t kTopBits = 1U << 27 | 1U << 17 | 1U << 8;
constexpr uint32_t kHalves = 16U << 18 | 8U << 9 | 8U;

uint32_t codeOf(uint32_t pixel) {
    const uint32_t rounded = ((pixel & ~kTopBits) + kHalves) ^ (pixel & kTopBits);
    return (rounded >> 4 & 0x1f) | (rounded >> 8 & 0x3e0) | (rounded >> 13 & 0x3fc00);
}

uint32_t runWord(uint32_t code, int64_t length) {
    return bigEndian(code | static_cast<uint32_t>(length) << kLengthShift);
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

/// runWord(codeOf(pixel), 1) of four pixels: every field goes straight to its place in the swapped word. Bit
/// 31, the flag, is made 1 and becomes the length.
Words singleRuns(Words pixels) {
    static_assert(std::endian::native == std::endian::little, "the places are those of a swapped word");
    constexpr uint32_t one = 1U << 31;
    const Words rounded = ((pixels & ~(kTopBits | one)) + (kHalves | one)) ^ (pixels & kTopBits);
    return (rounded << 20 & 0x1f000000U) | (rounded << 16 & 0xe0000000U) | (rounded & 0x00030000U) |
           (rounded >> 5 & 0x00fc0000U) | (rounded >> 21 & 0x00000700U);
}

// Two things that the compilers make too much of where there is no single instruction for them:
//   predecessors  the four words before those of `here`: the last of `before`, the first three of `here`
//   changesIn     bit i tells whether words[i] differs from the word before it, words[-1] included, for
//                 `kBlock` words
#ifdef __SSE2__
Words predecessors(Words before, Words here) {
    const auto first = std::bit_cast<__m128>(before);
    const auto second = std::bit_cast<__m128>(here);
    const __m128 seam = _mm_shuffle_ps(first, second, _MM_SHUFFLE(0, 0, 3, 3));
    return std::bit_cast<Words>(_mm_shuffle_ps(seam, second, _MM_SHUFFLE(2, 1, 2, 0)));
}

uint64_t changesIn(const uint32_t* words) {
    const auto sameInFour = [words](int at) {
        return std::bit_cast<__m128i>(load(words + at) == load(words + at - 1));
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
Words predecessors(Words before, Words here) {
    return __builtin_shufflevector(before, here, 3, 4, 5, 6);
}

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
        addBlock(next, busy_ ? kAllChange : changesIn(next), kBlock);
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

/// Equal words have equal codes, so only pixels that differ from the one before may begin a run.
void RunLengths::addBlock(const uint32_t* pixels, uint64_t changes, int count) {
    if (changes == kAllChange) {
        return addBusyBlock(pixels);
    }
    if (changes != 0) {
        addChanges(pixels, changes);
    }
    length_ += count;
}

/// Noise, or a picture drawn pixel by pixel: every word differs, so most runs are one pixel long. Their words
/// are made right where they belong; that they may stay there shows afterwards.
void RunLengths::addBusyBlock(const uint32_t* pixels) {
    makeRoom();
    uint32_t* const words = &words_[used_];
    words[0] = runWord(code_, 1);
    Words last = {0, 0, 0, words[0]};
    Words same = {};
    for (size_t i = 0; i < kBlock; i += kLanes) {
        const Words here = singleRuns(load(pixels + i));
        store(words + 1 + i, here);
        same |= std::bit_cast<Words>(here == predecessors(last, here));
        last = here;
    }
    busy_ = (same[0] | same[1] | same[2] | same[3]) == 0;
    if (busy_ && length_ <= kLongestRun) {
        words[0] = runWord(code_, length_);
        used_ += kBlock;
        code_ = codeOf(pixels[kBlock - 1]);
        length_ = 1;
        return;
    }
    addChanges(pixels, changesIn(words + 1));
    length_ += kBlock;
}

/// Begins a run at each of these pixels whose code is another than that of the run before.
void RunLengths::addChanges(const uint32_t* pixels, uint64_t changes) {
    // The run that came into the block may be long, or none at all; the others fit one word each.
    for (bool same = true; same && changes != 0; changes &= changes - 1) {
        const int at = std::countr_zero(changes);
        const uint32_t code = codeOf(pixels[at]);
        same = code == code_ && length_ + at != 0;
        if (!same) {
            begin(code, at);
        }
    }
    makeRoom();
    uint32_t* next = &words_[used_];
    int64_t start = -length_;
    for (; changes != 0; changes &= changes - 1) {
        const int at = std::countr_zero(changes);
        const uint32_t code = codeOf(pixels[at]);
        if (code != code_) {
            *next++ = runWord(code_, at - start);
            code_ = code;
            start = at;
        }
    }
    used_ = static_cast<size_t>(next - words_.data());
    length_ = -start;
}

/// Writes the run that ends before pixel `at` of the block at hand, and begins one of `code` there.
void RunLengths::begin(uint32_t code, int at) {
    int64_t length = length_ + at;
    for (; length > kLongestRun; length -= kLongestRun) {
        put(runWord(code_, kLongestRun));
    }
    if (length > 0) {
        put(runWord(code_, length));
    }
    code_ = code;
    length_ = -at;
}

void RunLengths::put(uint32_t word) {
    if (used_ == kChunk) {
        flush();
    }
    words_[used_++] = word;
}

/// For the words of a block and of the run that came into it.
void RunLengths::makeRoom() {
    if (kChunk - used_ <= kBlock) {
        flush();
    }
}

void RunLengths::flush() {
    lost_ = lost_ || !take_({words_.data(), used_});
    used_ = 0;
}
