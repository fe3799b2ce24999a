#include "Tools/boardsim/Host/RegisterTrap/Aarch64/LoadStore.h"

namespace boardsim::Aarch64 {

namespace {

/// Bits `high … low` of an instruction word.
constexpr std::uint32_t bits(std::uint32_t word, unsigned high, unsigned low) noexcept {
    return (word >> low) & ((1U << (high - low + 1)) - 1);
}

constexpr bool bit(std::uint32_t word, unsigned number) noexcept {
    return bits(word, number, number) != 0;
}

constexpr std::int64_t signedBits(std::uint32_t word, unsigned high, unsigned low) noexcept {
    const unsigned unused = 63 - (high - low);
    return static_cast<std::int64_t>(std::uint64_t{bits(word, high, low)} << unused) >> unused;
}

std::uint8_t registerAt(std::uint32_t word, unsigned low) noexcept {
    return static_cast<std::uint8_t>(bits(word, low + 4, low));
}

/// Fills in what size, V and opc say of a single register. @return false when they say something else
bool decodeTransfer(std::uint32_t word, LoadStore& result) noexcept {
    const std::uint32_t size = bits(word, 31, 30);
    const std::uint32_t opc = bits(word, 23, 22);
    result.isVector = bit(word, 26);
    result.registers[0] = registerAt(word, 0);
    result.base = registerAt(word, 5);
    if (result.isVector) {
        const bool isWhole = opc >= 2;  // the 128 bits of a vector
        if (isWhole && size != 0) {
            return false;
        }
        result.isLoad = (opc & 1U) != 0;
        result.width = static_cast<std::uint8_t>(isWhole ? 16 : 1U << size);
        return true;
    }
    result.isLoad = opc != 0;
    result.isSigned = opc >= 2;
    result.extendsTo64Bits = opc == 2;
    result.width = static_cast<std::uint8_t>(1U << size);
    // Eight bytes "signed" is a prefetch, and there is nothing to extend from four to four.
    return !(opc >= 2 && size == 3) && !(opc == 3 && size == 2);
}

std::optional<LoadStore> decodeUnsignedOffset(std::uint32_t word) noexcept {
    LoadStore result;
    if (!decodeTransfer(word, result)) {
        return std::nullopt;
    }
    result.offset = std::int64_t{bits(word, 21, 10)} * result.width;
    return result;
}

std::optional<LoadStore> decodeRegisterOffset(std::uint32_t word) noexcept {
    LoadStore result;
    const std::uint32_t option = bits(word, 15, 13);
    const bool isWord = option == 2 || option == 6;
    if (!decodeTransfer(word, result) || !(option & 2U)) {
        return std::nullopt;
    }
    result.hasIndex = true;
    result.index = registerAt(word, 16);
    result.isIndex32Bits = isWord;
    result.isIndexSigned = option >= 6;
    for (unsigned scaled = bit(word, 12) ? result.width : 1U; scaled > 1; scaled /= 2) {
        ++result.shift;
    }
    return result;
}

std::optional<LoadStore> decodeSignedOffset(std::uint32_t word) noexcept {
    constexpr Indexing kIndexing[] = {Indexing::Offset, Indexing::Post, Indexing::Offset, Indexing::Pre};
    LoadStore result;
    if (!decodeTransfer(word, result)) {
        return std::nullopt;
    }
    result.indexing = kIndexing[bits(word, 11, 10)];
    result.offset = signedBits(word, 20, 12);
    return result;
}

std::optional<LoadStore> decodePair(std::uint32_t word) noexcept {
    constexpr Indexing kIndexing[] = {Indexing::Offset, Indexing::Post, Indexing::Offset, Indexing::Pre};
    LoadStore result;
    const std::uint32_t opc = bits(word, 31, 30);
    result.isVector = bit(word, 26);
    result.isLoad = bit(word, 22);
    result.isSigned = !result.isVector && opc == 1;
    result.extendsTo64Bits = result.isSigned;
    if (opc == 3 || (result.isSigned && !result.isLoad)) {
        return std::nullopt;
    }
    result.width = static_cast<std::uint8_t>(result.isVector ? 4U << opc : (opc == 2 ? 8U : 4U));
    result.count = 2;
    result.registers[0] = registerAt(word, 0);
    result.registers[1] = registerAt(word, 10);
    result.base = registerAt(word, 5);
    result.indexing = kIndexing[bits(word, 24, 23)];
    result.offset = signedBits(word, 21, 15) * result.width;
    return result;
}

/// LDAR and STLR and their narrow forms. The trap's lock orders accesses more strictly than they ask for.
std::optional<LoadStore> decodeOrdered(std::uint32_t word) noexcept {
    LoadStore result;
    result.isLoad = bit(word, 22);
    result.width = static_cast<std::uint8_t>(1U << bits(word, 31, 30));
    result.registers[0] = registerAt(word, 0);
    result.base = registerAt(word, 5);
    return result;
}

/// The groups of the encoding, each known by some fixed bits.
struct Group {
    std::uint32_t mask;
    std::uint32_t value;
    std::optional<LoadStore> (*decode)(std::uint32_t word) noexcept;
};
constexpr Group kGroups[] = {
    {0x3B000000, 0x39000000, decodeUnsignedOffset}, {0x3B200000, 0x38000000, decodeSignedOffset},
    {0x3B200C00, 0x38200800, decodeRegisterOffset}, {0x3A000000, 0x28000000, decodePair},
    {0x3FA08000, 0x08808000, decodeOrdered},
};

}  // namespace

std::optional<LoadStore> decode(std::uint32_t word) noexcept {
    for (const Group& group : kGroups) {
        if ((word & group.mask) == group.value) {
            return group.decode(word);
        }
    }
    return std::nullopt;
}

}  // namespace boardsim::Aarch64
