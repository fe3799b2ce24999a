#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Tools/overlayview/Bytes.h"
#include "Tools/overlayview/Findings.h"

namespace overlayview {

/// The three big-endian words at the beginning of an overlay file.
struct Header {
    std::uint32_t marker = 0;
    std::uint32_t identifier = 0;
    std::uint32_t bodyWords = 0;
};

constexpr std::size_t kHeaderBytes = 12;

/// A body is padded with zero bytes to a multiple of this.
constexpr std::size_t kBodyUnit = 128;

/// A file taken apart. The body is whatever follows the header, even where the header tells another length:
/// the bytes are trusted more. Views into the file, which must outlive it.
struct Container {
    Bytes file{};
    std::size_t bodyOffset = 0;      ///< at most the file's size
    std::optional<Header> header{};  ///< nothing in a raw file and in one that is too short for it

    Bytes body() const { return file.subspan(bodyOffset); }
};

/// Takes a file with a header apart; whatever contradicts the format becomes damage.
Container openContainer(Bytes file, Findings& findings);

/// Takes a file without a header whose body begins at `offset`; an offset behind the end is damage.
Container openRaw(Bytes file, std::size_t offset, Findings& findings);

}  // namespace overlayview
