#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Tools/overlayview/Bytes.h"
#include "Tools/overlayview/Findings.h"
#include "Tools/overlayview/Picture.h"
#include "Tools/overlayview/RowOrder.h"

namespace overlayview {

/// What is in a body of runs. A run is as long as its colour lasts, in however many words it is written.
struct RunFacts {
    std::size_t words = 0;  ///< of runs, without the end word
    std::uint64_t runs = 0;
    std::uint64_t longest = 0;  ///< pixels
    std::uint64_t pixels = 0;
    std::uint64_t covered = 0;     ///< pixels that are not transparent
    std::size_t colours = 0;       ///< different codes
    bool ended = false;            ///< there is an end word
    std::size_t paddingWords = 0;  ///< zero words behind the end word
    std::size_t lateWords = 0;     ///< others behind the end word
    std::size_t emptyRuns = 0;     ///< words with a code and a length of 0
    std::size_t splitRuns = 0;     ///< words that go on with the colour of a word that was not full
    std::size_t badLevels = 0;     ///< words with a coverage above 4
};

/// A body of run-length words: bits 0-17 the code, 18-31 the number of pixels, zero at the end. Runs go on
/// across rows. A view of the body, which must outlive it; scanning takes no memory that grows with the
/// pixels.
class RunLengths {
public:
    /// Scans the body; bytes behind the last whole word are left out.
    explicit RunLengths(Bytes body);

    const RunFacts& facts() const { return facts_; }

    /// Whether every word could come from a writer of runs; an end word is not asked for.
    bool plausible() const;

    /// Whether it is plausible, ended and padded to less than 32 words.
    bool sound() const;

    /// Says what is wrong.
    void report(Findings& findings) const;

    /// The codes by picture row; what the runs do not reach is transparent (0), what is too much is left out.
    /// @param size at most kMostPixels.
    std::vector<std::uint32_t> codes(Size size, RowOrder order) const;

    /// The picture for human eyes. Where a pixel stores one chroma sample, the other comes from its
    /// neighbour.
    Picture picture(Size size, RowOrder order) const;

private:
    void count(std::uint32_t word);
    void scanTail(std::size_t firstByte);

    Bytes body_;
    std::size_t dataBytes_ = 0;  ///< up to the end word
    RunFacts facts_{};
};

}  // namespace overlayview
