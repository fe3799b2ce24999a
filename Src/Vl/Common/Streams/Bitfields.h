#pragma once

#include <string>
#include <vector>

namespace Valen {

class InputStream;
class OutputStream;

/// Bit sets and their form in byte streams. A set of n bits lies in ceil(n / 64) words, bit i in word i / 64,
/// the lowest in the least significant place. A negative n counts as 0. Not thread-safe.
namespace Bitfields {

static_assert(sizeof(unsigned long) == 8);

/// Writes the words that `bits` bits take, lowest word first, each most significant byte first. What lies
/// above the last bit in the last word is written as it is.
void pack(const unsigned long* words, int bits, OutputStream& stream);

/// Reads back what pack() has written. Words behind the stream's end become 0.
void unpack(unsigned long* words, int bits, InputStream& stream);

/// The set as '0' and '1', bit 0 first.
std::string toString(const unsigned long* words, int bits);

/// The size check of a set of fixed size. It does nothing, and that is meant: what stands in the stream is
/// read into the words there are.
inline void FixedProviderResize(int /*bits*/, int /*wantedBits*/) {}

/// A bit set of any size from 0 to 65535 bits, the most that its count in a stream can say; other sizes
/// become the nearest of these. Copies are independent; moving copies. Not thread-safe.
class DynamicProvider {
public:
    static constexpr int kMostBits = 0xFFFF;

    DynamicProvider() = default;
    /// All bits 0.
    explicit DynamicProvider(int bits) { resize(bits); }
    DynamicProvider(const DynamicProvider&) = default;
    DynamicProvider& operator=(const DynamicProvider&) = default;
    ~DynamicProvider() = default;

    /// Changes the number of bits. Bits that stay keep their value; new bits are 0 where the set has never
    /// been as large, else what their word holds.
    void resize(int bits);
    /// The number of bits.
    int size() const { return bits_; }
    /// As many words as the bits need; they stay where they are until the set outgrows them.
    unsigned long* words() { return words_.data(); }
    const unsigned long* words() const { return words_.data(); }

    /// Writes the number of bits in two bytes, most significant first, then the words.
    void pack(OutputStream& stream) const;
    /// Takes over number and words from the stream. Memory is allocated only for more words than the set has
    /// held so far, 8 KiB at most. What a stream that is too short does not say is 0.
    void unpack(InputStream& stream);

    std::string toString() const { return Bitfields::toString(words(), bits_); }

private:
    std::vector<unsigned long> words_;  // never shrinks
    int bits_ = 0;
};

}  // namespace Bitfields
}  // namespace Valen
