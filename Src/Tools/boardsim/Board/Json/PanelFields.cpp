#include <algorithm>

#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::uint64_t kMostPixels = 1024;
constexpr std::size_t kLongestLabel = 64;
constexpr std::uint64_t kMostLines = 256;
constexpr std::uint64_t kLastBase = 0xFFFF;

/// Bus and chip select: "1.0".
Codec<std::string> spiDevice() {
    constexpr std::size_t kLongest = 8;
    const Codec<std::string> name = text(kLongest);
    return {[name](const JsonPlace& place) {
                std::string device = name.read(place);
                const std::size_t point = device.find('.');
                const auto isOther = [](char each) { return (each < '0' || each > '9') && each != '.'; };
                if (point == 0 || point == std::string::npos || point != device.rfind('.') ||
                    point + 1 >= device.size() || std::any_of(device.begin(), device.end(), isOther)) {
                    place.refuse("want bus and chip select, as 1.0");
                }
                return device;
            },
            name.write};
}

}  // namespace

template <>
const std::vector<Field<PanelGeometry>>& fieldsOf() {
    static const std::vector<Field<PanelGeometry>> fields{
        required("width", &PanelGeometry::width, number<std::size_t>({kMostPixels, 1})),
        required("height", &PanelGeometry::height, number<std::size_t>({kMostPixels, 1})),
    };
    return fields;
}

template <>
const std::vector<Field<SpiPlace>>& fieldsOf() {
    static const std::vector<Field<SpiPlace>> fields{
        required("core", &SpiPlace::core, coreName()),
        required("device", &SpiPlace::device, spiDevice()),
    };
    return fields;
}

template <>
const std::vector<Field<PanelPart>>& fieldsOf() {
    static const std::vector<Field<PanelPart>> fields{
        omittable("geometry", &PanelPart::geometry, record<PanelGeometry>()),
        optional("screen", &PanelPart::screen, record<SpiPlace>()),
        omittable("register_core", &PanelPart::registerCore, coreName()),
    };
    return fields;
}

template <>
const std::vector<Field<GpioChip>>& fieldsOf() {
    static const std::vector<Field<GpioChip>> fields{
        required("label", &GpioChip::label, fileName(kLongestLabel)),
        required("base", &GpioChip::base, number<unsigned>({kLastBase})),
        required("count", &GpioChip::count, number<unsigned>({kMostLines, 1})),
    };
    return fields;
}

}  // namespace boardsim
