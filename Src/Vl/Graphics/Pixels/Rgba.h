#pragma once

#include <cstdint>

/// A colour with coverage, passed by value. Bits 0-7 red, 8-15 green, 16-23 blue, 24-31 coverage.
///
/// Coverage runs from 0 (transparent) to 128 (opaque), not to 255: opaque black is 0x80000000, opaque
/// white 0x80ffffff. Values above 128 are carried but have no meaning of their own.
struct rgba {
    uint32_t value = 0;

    constexpr rgba() = default;
    /// Implicit on purpose: colours are written as hexadecimal words wherever something is drawn.
    constexpr rgba(uint32_t word) : value(word) {}

    static constexpr rgba of(uint8_t red, uint8_t green, uint8_t blue, uint8_t coverage) {
        return uint32_t{red} | uint32_t{green} << 8 | uint32_t{blue} << 16 | uint32_t{coverage} << 24;
    }

    constexpr uint8_t r() const { return static_cast<uint8_t>(value); }
    constexpr uint8_t g() const { return static_cast<uint8_t>(value >> 8); }
    constexpr uint8_t b() const { return static_cast<uint8_t>(value >> 16); }
    constexpr uint8_t a() const { return static_cast<uint8_t>(value >> 24); }

    /// The same red, green and blue with another coverage.
    constexpr rgba withAlpha(uint8_t coverage) const {
        return (value & 0x00ffffffU) | uint32_t{coverage} << 24;
    }

    friend constexpr bool operator==(rgba, rgba) = default;
};

static_assert(sizeof(rgba) == sizeof(uint32_t));

/// The coverage of an opaque colour.
inline constexpr uint8_t kOpaque = 128;
