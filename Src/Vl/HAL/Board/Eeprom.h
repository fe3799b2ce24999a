#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen {

using SafeFileDescriptor = Descriptor;

/// What a field-structured EEPROM image is made of.
///
/// A field as it lies in the image, without alignment; only its header is known here:
///
///     0   2            CRC-16 over the whole field with this word 0 (see CRC16, start value 0)
///     2   2            type
///     4   2            length in bytes, this header included
///     6   length - 6   body
///
/// All three are little-endian. What the body of each type holds is agreed between who writes the EEPROM and
/// who is called with the field. The type 0 ends the data; 0xFFFF, as type or as length, is erased memory.
namespace eeprom {

class Field {
public:
    static constexpr unsigned int kHeaderSize = 6;

    unsigned int type() const { return word(type_); }
    /// In bytes, header included.
    unsigned int length() const { return word(length_); }
    std::span<const std::uint8_t> body() const {
        return {reinterpret_cast<const std::uint8_t*>(this) + kHeaderSize, length() - kHeaderSize};
    }

private:
    using Word = std::array<std::uint8_t, 2>;
    static unsigned int word(Word bytes) { return bytes[0] | static_cast<unsigned int>(bytes[1]) << 8; }

    [[maybe_unused]] Word crc_;
    Word type_;
    Word length_;
};
static_assert(sizeof(Field) == Field::kHeaderSize && alignof(Field) == 1);

struct DeviceDescription : Field {};    ///< type 1
struct PcbDescription : Field {};       ///< type 2
struct MacAddresses : Field {};         ///< type 3
struct SandwichDescription : Field {};  ///< type 4

}  // namespace eeprom

/// Reads field-structured EEPROM images. No state; any thread may use it.
class Eeprom {
public:
    template <typename Record>
    using Callback = std::function<void(const Record*)>;

    /// Reads up to 1024 bytes from the beginning of `fd` and calls back for every field of a known type whose
    /// CRC is right, in the order of the image. Fields are valid during the call, their CRC word is 0. It
    /// ends at the end of the data, at erased memory, and at a field that is shorter than its header or
    /// reaches beyond what was read.
    /// @param verbose says on standard output (not in the log: meant) where and why it ends and which fields
    ///                have a wrong CRC. Unknown types, and an erased type, are said there in any case.
    /// @throws std::bad_function_call for a field whose callback is empty.
    static void read(SafeFileDescriptor& fd, bool verbose, const Callback<eeprom::MacAddresses>& mac,
                     const Callback<eeprom::PcbDescription>& pcb,
                     const Callback<eeprom::DeviceDescription>& device,
                     const Callback<eeprom::SandwichDescription>& sandwich);
};

}  // namespace Valen
