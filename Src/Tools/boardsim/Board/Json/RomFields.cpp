#include <limits>

#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::int32_t kLastSecond = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kColdest = -273150;
constexpr std::int32_t kHottest = 999999;
constexpr std::uint64_t kLastNumber = 15;

/// Exactly as many bytes as there are.
template <std::size_t N>
Codec<std::array<std::uint8_t, N>> hexArray() {
    const Codec<std::vector<std::uint8_t>> any = hexBytes(N);
    return {[any](const JsonPlace& place) {
                const std::vector<std::uint8_t> bytes = any.read(place);
                if (bytes.size() != N) {
                    place.refuse("want " + std::to_string(N) + " bytes");
                }
                std::array<std::uint8_t, N> taken{};
                std::copy(bytes.begin(), bytes.end(), taken.begin());
                return taken;
            },
            [any](const std::array<std::uint8_t, N>& bytes) {
                return any.write({bytes.begin(), bytes.end()});
            }};
}

}  // namespace

template <>
const std::vector<Field<CardSerial>>& fieldsOf() {
    static const std::vector<Field<CardSerial>> fields{
        required("number", &CardSerial::number,
                 number<std::uint64_t>({std::numeric_limits<std::uint64_t>::max()})),
        required("produced", &CardSerial::produced, integer(-kLastSecond - 1, kLastSecond)),
        required("serviced", &CardSerial::serviced, integer(-kLastSecond - 1, kLastSecond)),
    };
    return fields;
}

template <>
const std::vector<Field<RomPart>>& fieldsOf() {
    static const std::vector<Field<RomPart>> fields{
        omittable("start", &RomPart::start, hexArray<16>()),
        required("macs", &RomPart::macs, arrayOf<MacAddress, 2>(macAddress())),
        required("version", &RomPart::version, arrayOf<std::uint32_t, 3>(word<std::uint32_t>())),
        required("serial", &RomPart::serial, record<CardSerial>()),
    };
    return fields;
}

template <>
const std::vector<Field<HwmonSensor>>& fieldsOf() {
    static const std::vector<Field<HwmonSensor>> fields{
        required("device", &HwmonSensor::device, number<unsigned>({kLastNumber})),
        required("sensor", &HwmonSensor::sensor, number<unsigned>({kLastNumber})),
        required("millidegrees", &HwmonSensor::millidegrees, integer(kColdest, kHottest)),
    };
    return fields;
}

}  // namespace boardsim
