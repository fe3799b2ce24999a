#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace boardsim {

enum class EepromFieldType : std::uint16_t { End = 0, Device = 1, Pcb = 2, MacAddresses = 3, Sandwich = 4 };

/// A field of a board's identity memory, without its header.
struct EepromField {
    EepromFieldType type = EepromFieldType::End;
    std::string body;
};

/// The contents of an identity memory: the fields, each behind a header of three little-endian words: the
/// CRC-16 of the whole field with this word as 0 (polynomial 0x1021, start 0, highest bit first), the type,
/// and the length with the header; and an end field behind them.
std::string encodeEeprom(std::span<const EepromField> fields);

}  // namespace boardsim
