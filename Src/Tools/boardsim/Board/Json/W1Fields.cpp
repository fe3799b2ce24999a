#include "Tools/boardsim/Board/Json/PartFields.h"
#include "Tools/boardsim/Models/W1Eeprom.h"

namespace boardsim {
namespace {

constexpr NumberForm kSerial{0xFFFFFFFFFFFF, 1, 12};
constexpr std::size_t kChecksumBytes = 2;
constexpr std::size_t kMostSlaves = 64;  // of each kind on a bus
constexpr std::int32_t kColdest = -55 * 16;
constexpr std::int32_t kHottest = 125 * 16;

void checkRecord(const JsonPlace& place, const EepromRecord& record) {
    if (record.offset + kChecksumBytes + record.data.size() > W1Eeprom::kBytes) {
        place.member("data").refuse("the record reaches beyond the memory's " +
                                    std::to_string(W1Eeprom::kBytes) + " bytes");
    }
}

}  // namespace

template <>
const std::vector<Field<EepromRecord>>& fieldsOf() {
    static const std::vector<Field<EepromRecord>> fields{
        required("offset", &EepromRecord::offset, number<std::size_t>({W1Eeprom::kBytes})),
        required("data", &EepromRecord::data, hexBytes(W1Eeprom::kBytes)),
    };
    return fields;
}

template <>
const std::vector<Field<W1EepromPart>>& fieldsOf() {
    static const std::vector<Field<W1EepromPart>> fields{
        required("serial", &W1EepromPart::serial, number<std::uint64_t>(kSerial)),
        required("records", &W1EepromPart::records, listOf(record<EepromRecord>(checkRecord))),
    };
    return fields;
}

template <>
const std::vector<Field<W1SensorPart>>& fieldsOf() {
    static const std::vector<Field<W1SensorPart>> fields{
        required("serial", &W1SensorPart::serial, number<std::uint64_t>(kSerial)),
        required("user_data", &W1SensorPart::userData, number<std::uint16_t>({0xFFFF})),
        required("celsius", &W1SensorPart::temperature, sixteenths(kColdest, kHottest)),
    };
    return fields;
}

template <>
const std::vector<Field<W1BusPart>>& fieldsOf() {
    static const std::vector<Field<W1BusPart>> fields{
        omittable("eeproms", &W1BusPart::eeproms, listOf(record<W1EepromPart>(), kMostSlaves)),
        omittable("sensors", &W1BusPart::sensors, listOf(record<W1SensorPart>(), kMostSlaves)),
    };
    return fields;
}

}  // namespace boardsim
