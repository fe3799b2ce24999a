#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// One core's record of a layout file: its name, the number of its words and the words, version first.
std::string core(std::string_view name, const std::vector<std::uint32_t>& words);

/// A record that claims another number of words than it has.
std::string coreClaiming(std::uint16_t words, std::string_view name, const std::vector<std::uint32_t>& given);
