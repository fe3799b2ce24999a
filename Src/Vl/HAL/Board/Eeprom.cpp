#include "Vl/HAL/Board/Eeprom.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>

#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Identity/CRC16.h"

namespace Valen {
namespace {

constexpr std::size_t kLongestImage = 1024;
constexpr std::size_t kCrcSize = 2;

enum FieldType : unsigned int {
    EndOfData = 0,
    Device = 1,
    Pcb = 2,
    Mac = 3,
    Sandwich = 4,
    Erased = 0xFFFF,
};

constexpr unsigned int kErasedLength = 0xFFFF;

using Bytes = std::span<std::uint8_t>;

/// Takes the stored CRC out of the field, as its own is computed without.
unsigned int takeCrc(Bytes field) {
    const unsigned int crc = field[0] | static_cast<unsigned int>(field[1]) << 8;
    std::fill_n(field.begin(), kCrcSize, std::uint8_t{0});
    return crc;
}

void sayEnd(unsigned int type) {
    std::printf("end of flash: %d\n", static_cast<int>(type));
}

}  // namespace

void Eeprom::read(SafeFileDescriptor& fd, bool verbose, const Callback<eeprom::MacAddresses>& mac,
                  const Callback<eeprom::PcbDescription>& pcb,
                  const Callback<eeprom::DeviceDescription>& device,
                  const Callback<eeprom::SandwichDescription>& sandwich) {
    std::array<std::uint8_t, kLongestImage> image;
    lseek(fd.get(), 0, SEEK_SET);
    const ssize_t size = readExact(fd.get(), std::as_writable_bytes(std::span(image)));
    Bytes rest = Bytes(image).first(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    while (rest.size() >= eeprom::Field::kHeaderSize) {
        const auto* header = reinterpret_cast<const eeprom::Field*>(rest.data());
        const unsigned int length = header->length();
        if (length == kErasedLength) {
            return;
        }
        if (length > rest.size()) {
            if (verbose) {
                std::printf("field is too long: %d bytes\n", static_cast<int>(length));
            }
            return;
        }
        if (length < eeprom::Field::kHeaderSize) {
            // Nothing could come behind it. Cleared memory ends the data as it should.
            if (verbose && header->type() == EndOfData) {
                sayEnd(EndOfData);
            }
            return;
        }
        const Bytes field = rest.first(length);
        rest = rest.subspan(length);
        const unsigned int saved = takeCrc(field);
        const unsigned int calculated = CRC16::CalcCRC(field.data(), static_cast<int>(length), 0);
        if (saved != calculated) {
            if (verbose) {
                std::printf("Field CRC: saved: %x <-> calc: %x\n", saved, calculated);
            }
            continue;
        }
        switch (header->type()) {
            case Device:
                device(static_cast<const eeprom::DeviceDescription*>(header));
                break;
            case Pcb:
                pcb(static_cast<const eeprom::PcbDescription*>(header));
                break;
            case Mac:
                mac(static_cast<const eeprom::MacAddresses*>(header));
                break;
            case Sandwich:
                sandwich(static_cast<const eeprom::SandwichDescription*>(header));
                break;
            case EndOfData:
                if (verbose) {
                    sayEnd(EndOfData);
                }
                return;
            case Erased:
                sayEnd(Erased);  // said even when not verbose: meant
                return;
            default:
                std::printf("unknown field of type: %d\n", static_cast<int>(header->type()));
                break;
        }
    }
}

}  // namespace Valen
