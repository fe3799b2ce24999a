#include "Tools/overlayview/RunLengths.h"

#include <algorithm>
#include <optional>
#include <string>

#include "Tools/overlayview/Colour.h"
#include "Tools/overlayview/Container.h"

namespace overlayview {
namespace {

constexpr unsigned kCodeBits = 18;
constexpr std::uint32_t kFullRun = 16383;

constexpr std::uint32_t codeOf(std::uint32_t word) {
    return word & ((1U << kCodeBits) - 1);
}

constexpr std::uint32_t lengthOf(std::uint32_t word) {
    return word >> kCodeBits;
}

/// Row by row into a picture whose rows may be stored in another order.
class RowFiller {
public:
    RowFiller(std::vector<std::uint32_t>& codes, Size size, RowOrder order)
        : codes_(codes), size_(size), order_(order) {}

    bool full() const { return row_ == size_.height; }

    void fill(std::uint32_t code, std::uint32_t count) {
        while (count > 0 && !full()) {
            const std::uint32_t now = std::min(count, size_.width - column_);
            const std::size_t start =
                std::size_t{pictureRow(row_, size_.height, order_)} * size_.width + column_;
            std::fill_n(codes_.begin() + static_cast<std::ptrdiff_t>(start), now, code);
            count -= now;
            column_ += now;
            if (column_ == size_.width) {
                column_ = 0;
                ++row_;
            }
        }
    }

private:
    std::vector<std::uint32_t>& codes_;
    Size size_;
    RowOrder order_;
    std::uint32_t row_ = 0;
    std::uint32_t column_ = 0;
};

/// A pixel at an even index stores Cb only, one at an odd index Cr only, unless both were filled: what is
/// missing stands in the other pixel of the pair, else perhaps on the other side.
RunCode withNeighbours(const std::uint32_t* row, std::uint32_t x, std::uint32_t width, bool evenIndex) {
    RunCode pixel = RunCode::from(row[x]);
    const std::uint32_t left = x > 0 ? x - 1 : x;
    const std::uint32_t right = x + 1 < width ? x + 1 : x;
    for (const std::uint32_t near : {evenIndex ? right : left, evenIndex ? left : right}) {
        const RunCode neighbour = RunCode::from(row[near]);
        pixel.cb = pixel.cb != 0 ? pixel.cb : neighbour.cb;
        pixel.cr = pixel.cr != 0 ? pixel.cr : neighbour.cr;
    }
    return pixel;
}

void say(std::vector<std::string>& list, std::size_t count, const std::string& what) {
    if (count > 0) {
        list.push_back(std::to_string(count) + " " + what);
    }
}

}  // namespace

RunLengths::RunLengths(Bytes body) : body_(body) {
    std::vector<bool> seen(std::size_t{1} << kCodeBits);
    std::optional<std::uint32_t> before;
    std::uint64_t run = 0;
    std::size_t at = 0;
    for (; at + kWordBytes <= body.size(); at += kWordBytes) {
        const std::uint32_t word = wordAt(body, at);
        if (word == 0) {
            facts_.ended = true;
            break;
        }
        count(word);
        if (lengthOf(word) == 0) {
            continue;
        }
        const std::uint32_t code = codeOf(word);
        const bool goesOn = before && codeOf(*before) == code;
        facts_.runs += goesOn ? 0 : 1;
        facts_.splitRuns += goesOn && lengthOf(*before) != kFullRun ? 1 : 0;
        run = lengthOf(word) + (goesOn ? run : 0);
        facts_.longest = std::max(facts_.longest, run);
        facts_.colours += seen[code] ? 0 : 1;
        seen[code] = true;
        before = word;
    }
    dataBytes_ = at;
    if (facts_.ended) {
        scanTail(at + kWordBytes);
    }
}

void RunLengths::count(std::uint32_t word) {
    const unsigned level = RunCode::from(codeOf(word)).level;
    ++facts_.words;
    facts_.pixels += lengthOf(word);
    facts_.covered += level != 0 ? lengthOf(word) : 0;
    facts_.emptyRuns += lengthOf(word) == 0 ? 1 : 0;
    facts_.badLevels += level > kOpaqueLevel ? 1 : 0;
}

void RunLengths::scanTail(std::size_t firstByte) {
    for (std::size_t at = firstByte; at + kWordBytes <= body_.size(); at += kWordBytes) {
        ++(wordAt(body_, at) == 0 ? facts_.paddingWords : facts_.lateWords);
    }
}

bool RunLengths::plausible() const {
    return facts_.emptyRuns == 0 && facts_.splitRuns == 0 && facts_.badLevels == 0 && facts_.lateWords == 0 &&
           facts_.paddingWords < kBodyUnit / kWordBytes;
}

bool RunLengths::sound() const {
    return plausible() && facts_.ended;
}

void RunLengths::report(Findings& findings) const {
    if (!facts_.ended) {
        findings.damage.emplace_back("the runs have no end word");
    }
    say(findings.damage, facts_.emptyRuns, "run words have a length of 0");
    say(findings.damage, facts_.badLevels, "run words have a coverage above 4");
    say(findings.damage, facts_.lateWords, "words that are not zero stand behind the end word");
    if (facts_.paddingWords >= kBodyUnit / kWordBytes) {
        findings.damage.push_back(std::to_string(facts_.paddingWords) +
                                  " zero words stand behind the end word; at most 31 pad a body");
    }
    say(findings.notes, facts_.splitRuns, "run words go on with a colour whose word before was not full");
}

std::vector<std::uint32_t> RunLengths::codes(Size size, RowOrder order) const {
    std::vector<std::uint32_t> codes(size.pixels());
    if (codes.empty()) {
        return codes;
    }
    RowFiller filler(codes, size, order);
    for (std::size_t at = 0; at < dataBytes_ && !filler.full(); at += kWordBytes) {
        const std::uint32_t word = wordAt(body_, at);
        filler.fill(codeOf(word), lengthOf(word));
    }
    return codes;
}

Picture RunLengths::picture(Size size, RowOrder order) const {
    const std::vector<std::uint32_t> codes = this->codes(size, order);
    Picture picture{size};
    picture.pixels.reserve(codes.size());
    for (std::size_t start = 0; start < codes.size(); start += size.width) {
        for (std::uint32_t x = 0; x < size.width; ++x) {
            const bool evenIndex = (start + x) % 2 == 0;
            picture.pixels.push_back(colourOf(withNeighbours(&codes[start], x, size.width, evenIndex)));
        }
    }
    return picture;
}

}  // namespace overlayview
