#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/Json/JsonPlace.h"

namespace boardsim {

/// How a value is written in a description and read again: what write() gives, read() takes for the same.
/// read() refuses what is no such value with a JsonError.
template <typename T>
struct Codec {
    std::function<T(const JsonPlace&)> read;
    std::function<JsonValue(const T&)> write;
};

/// Which numbers are wanted, and how they are written.
struct NumberForm {
    std::uint64_t most;
    std::uint64_t least = 0;
    int hexDigits = 0;  ///< as text "0x003e" of so many digits; as a number when 0
};

/// The number at a place, written as a number or as text, decimal or hexadecimal with "0x".
std::uint64_t readNumberAt(const JsonPlace& place, const NumberForm& form);
JsonValue writeNumber(std::uint64_t value, const NumberForm& form);

template <std::unsigned_integral T>
Codec<T> number(NumberForm form) {
    return {[form](const JsonPlace& place) { return static_cast<T>(readNumberAt(place, form)); },
            [form](const T& value) { return writeNumber(value, form); }};
}

/// All numbers of a type, in hexadecimal with all their digits.
template <std::unsigned_integral T>
Codec<T> word() {
    return number<T>({std::numeric_limits<T>::max(), 0, static_cast<int>(2 * sizeof(T))});
}

/// true or false.
Codec<bool> truth();

/// A number with a sign.
Codec<std::int32_t> integer(std::int32_t least, std::int32_t most);

/// Sixteenths of a unit, written as a fraction: 29.25.
Codec<std::int32_t> sixteenths(std::int32_t least, std::int32_t most);

/// Text of 1 to `longest` bytes without control characters.
Codec<std::string> text(std::size_t longest);
/// Text that can be the name of a file, too.
Codec<std::string> fileName(std::size_t longest);

/// Bytes as pairs of hexadecimal digits without anything between them.
Codec<std::vector<std::uint8_t>> hexBytes(std::size_t most);
/// The same kept as text.
Codec<std::string> hexText(std::size_t most);

/// One of some words, each standing for the value of its place in the enumeration.
template <typename Enumeration>
Codec<Enumeration> choice(std::initializer_list<const char*> words) {
    const std::vector<std::string> known(words.begin(), words.end());
    return {
        [known](const JsonPlace& place) {
            std::string names;
            for (std::size_t i = 0; i < known.size(); ++i) {
                const auto* const given = std::get_if<std::string>(&place.value().value);
                if (given != nullptr && *given == known[i]) {
                    return static_cast<Enumeration>(i);
                }
                names += (i == 0 ? "" : ", ") + known[i];
            }
            place.refuse("want one of " + names);
        },
        [known](const Enumeration& value) { return JsonValue{known.at(static_cast<std::size_t>(value))}; }};
}

inline constexpr std::size_t kMostElements = 4096;

template <typename T>
Codec<std::vector<T>> listOf(Codec<T> one, std::size_t most = kMostElements) {
    return {[one, most](const JsonPlace& place) {
                const std::size_t count = place.list().size();
                if (count > most) {
                    place.refuse("want at most " + std::to_string(most) + " elements");
                }
                std::vector<T> values;
                for (std::size_t i = 0; i < count; ++i) {
                    values.push_back(one.read(place.element(i)));
                }
                return values;
            },
            [one](const std::vector<T>& values) {
                JsonList list;
                for (const T& value : values) {
                    list.push_back(one.write(value));
                }
                return JsonValue{std::move(list)};
            }};
}

/// A list of exactly so many.
template <typename T, std::size_t N>
Codec<std::array<T, N>> arrayOf(Codec<T> one) {
    return {[one](const JsonPlace& place) {
                if (place.list().size() != N) {
                    place.refuse("want " + std::to_string(N) + " elements");
                }
                std::array<T, N> values{};
                for (std::size_t i = 0; i < N; ++i) {
                    values[i] = one.read(place.element(i));
                }
                return values;
            },
            [one](const std::array<T, N>& values) {
                JsonList list;
                for (const T& value : values) {
                    list.push_back(one.write(value));
                }
                return JsonValue{std::move(list)};
            }};
}

}  // namespace boardsim
