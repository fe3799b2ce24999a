#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>

/// Turns video overlay pixels (the words of a YUVPixelBuffer) into run lengths, the form in which the overlay
/// hardware takes whole pictures.
///
/// A pixel is reduced to a code of 18 bits: bits 0-4 (Cr + 8) >> 4, bits 5-9 (Cb + 8) >> 4, bits 10-14
/// (Y + 16) >> 5, bits 15-17 the coverage level. Meant: a sum that needs a sixth bit loses it, so the very
/// largest Cr, Cb and Y come out as 0. The flag in bit 31 plays no part.
///
/// Equal codes in succession make a run, written as one big-endian word: the code and, above it, the run's
/// length of 1 to 16,383 in bits 18-31. A longer run is several words, all but the last of the full length.
/// A word of zero is the end. Not thread-safe.
class RunLengths {
public:
    /// Takes finished words, as they go into the file; false when they cannot be kept.
    using Take = std::function<bool(std::span<const uint32_t>)>;

    explicit RunLengths(Take take) : take_(std::move(take)) {}

    /// Codes the next pixels. A run goes on from one call to the next.
    /// @return false once words could not be kept; nothing more is handed on then.
    bool add(std::span<const uint32_t> pixels);

    /// Ends the last run and writes the end word: once, after all pixels. No pixels at all give the end word
    /// alone.
    /// @return false once words could not be kept.
    bool finish();

private:
    static constexpr size_t kChunk = 4096;  // words that are handed on at once

    void addBlock(const uint32_t* pixels, uint64_t changes, int count);
    void addBusyBlock(const uint32_t* pixels);
    void addChanges(const uint32_t* pixels, uint64_t changes);
    void begin(uint32_t code, int at);
    void put(uint32_t word);
    void makeRoom();
    void flush();

    Take take_;
    uint32_t code_ = 0;   // of the run that goes on
    int64_t length_ = 0;  // of that run, up to the block at hand; 0 before the first pixel
    bool busy_ = false;   // the last block was all runs of one pixel
    bool lost_ = false;
    size_t used_ = 0;
    std::array<uint32_t, kChunk> words_;
};
