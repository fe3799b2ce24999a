#pragma once

#include <bit>
#include <concepts>
#include <cstdint>

namespace Valen {

static_assert(std::endian::native == std::endian::little);

/// A signed or unsigned number of 64 bits.
template <typename Number>
concept Integral64 = std::integral<Number> && sizeof(Number) == sizeof(std::uint64_t);

/// A number of 64 bits from host order to network order, most significant byte first.
template <Integral64 Number>
constexpr Number htonll(Number host) {
    return static_cast<Number>(__builtin_bswap64(static_cast<std::uint64_t>(host)));
}

/// A number of 64 bits from network order to host order.
template <Integral64 Number>
constexpr Number ntohll(Number network) {
    return htonll(network);
}

}  // namespace Valen
