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
using eeprom::Field;

const Field& asField(Bytes bytes) {
    return *reinterpret_cast<const Field*>(bytes.data());
}

void sayEnd(unsigned int type) {
    std::printf("end of flash: %d\n", static_cast<int>(type));
}

/// Takes the first field off `rest`; an empty one when there is none any more.
Bytes takeField(Bytes& rest, bool verbose) {
    if (rest.size() < Field::kHeaderSize || asField(rest).length() == kErasedLength) {
        return {};
    }
    const unsigned int length = asField(rest).length();
    if (length > rest.size()) {
        if (verbose) {
            std::printf("field is too long: %d bytes\n", static_cast<int>(length));
        }
        return {};
    }
    if (length < Field::kHeaderSize) {
        // Nothing could come behind it. Cleared memory ends the data as it should.
        if (verbose && asField(rest).type() == EndOfData) {
            sayEnd(EndOfData);
        }
        return {};
    }
    const Bytes field = rest.first(length);
    rest = rest.subspan(length);
    return field;
}

/// Clears the field's CRC word, without which its CRC is computed. @return whether it was right.
bool checkCrc(Bytes field, bool verbose) {
    const unsigned int saved = field[0] | static_cast<unsigned int>(field[1]) << 8;
    std::fill_n(field.begin(), kCrcSize, std::uint8_t{0});
    const unsigned int calculated = CRC16::CalcCRC(field.data(), static_cast<int>(field.size()), 0);
    if (saved != calculated && verbose) {
        std::printf("Field CRC: saved: %x <-> calc: %x\n", saved, calculated);
    }
    return saved == calculated;
}

/// @return whether the data end here.
bool isEnd(unsigned int type, bool verbose) {
    if (type != EndOfData && type != Erased) {
        return false;
    }
    if (verbose || type == Erased) {  // erased is said in any case: meant
        sayEnd(type);
    }
    return true;
}

template <typename Record>
void call(const Eeprom::Callback<Record>& callback, const Field& field) {
    callback(static_cast<const Record*>(&field));
}

}  // namespace

void Eeprom::read(SafeFileDescriptor& fd, bool verbose, const Callback<eeprom::MacAddresses>& mac,
                  const Callback<eeprom::PcbDescription>& pcb,
                  const Callback<eeprom::DeviceDescription>& device,
                  const Callback<eeprom::SandwichDescription>& sandwich) {
    std::array<std::uint8_t, kLongestImage> image;
    if (lseek(fd.get(), 0, SEEK_SET) != 0) {
        return;
    }
    const ssize_t size = readExact(fd.get(), std::as_writable_bytes(std::span(image)));
    Bytes rest = Bytes(image).first(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    for (Bytes bytes = takeField(rest, verbose); !bytes.empty(); bytes = takeField(rest, verbose)) {
        if (!checkCrc(bytes, verbose)) {
            continue;
        }
        const Field& field = asField(bytes);
        const unsigned int type = field.type();
        if (isEnd(type, verbose)) {
            return;
        }
        switch (type) {
            case Device:
                call(device, field);
                break;
            case Pcb:
                call(pcb, field);
                break;
            case Mac:
                call(mac, field);
                break;
            case Sandwich:
                call(sandwich, field);
                break;
            default:
                std::printf("unknown field of type: %d\n", static_cast<int>(type));
                break;
        }
    }
}

}  // namespace Valen
