#include "Tests/HAL/LayoutBytes.h"

namespace {

std::string bigEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) {
        text += static_cast<char>(value >> shift);
    }
    return text;
}

}  // namespace

std::string core(std::string_view name, const std::vector<std::uint32_t>& words) {
    return coreClaiming(static_cast<std::uint16_t>(words.size()), name, words);
}

std::string coreClaiming(std::uint16_t words, std::string_view name,
                         const std::vector<std::uint32_t>& given) {
    std::string record(name);
    record += '\0' + bigEndian(words, 2);
    for (const std::uint32_t word : given) {
        record += bigEndian(word, 4);
    }
    return record;
}
