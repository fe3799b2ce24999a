#include <cstdio>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::uint64_t kLastPhy = 31;
constexpr std::size_t kMostPhys = 32;
constexpr std::size_t kLongestInterface = 15;

}  // namespace

Codec<std::string> interfaceName() {
    const Codec<std::string> name = fileName(kLongestInterface);
    return {[name](const JsonPlace& place) {
                std::string interface = name.read(place);
                if (interface.find_first_of(" :") != std::string::npos) {
                    place.refuse("want the name of a network interface");
                }
                return interface;
            },
            name.write};
}

Codec<MacAddress> macAddress() {
    constexpr std::size_t kDigits = 17;
    constexpr std::size_t kStep = 3;
    const Codec<std::string> any = text(kDigits);
    return {[any](const JsonPlace& place) {
                const std::string digits = any.read(place);
                MacAddress mac{};
                for (std::size_t i = 0; i < mac.size(); ++i) {
                    const std::size_t at = i * kStep;
                    const bool isSeparated = at + 2 == digits.size() || digits[at + 2] == ':';
                    const std::optional<std::uint64_t> byte =
                        digits.size() == kDigits ? wholeNumber("0x" + digits.substr(at, 2)) : std::nullopt;
                    if (!byte || !isSeparated) {
                        place.refuse("want a MAC address, as 02:00:5e:10:20:30");
                    }
                    mac[i] = static_cast<std::uint8_t>(*byte);
                }
                return mac;
            },
            [](const MacAddress& mac) {
                std::array<char, kDigits + 1> digits{};
                std::snprintf(digits.data(), digits.size(), "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1],
                              mac[2], mac[3], mac[4], mac[5]);
                return JsonValue{std::string(digits.data())};
            }};
}

template <>
const std::vector<Field<MdioPhy>>& fieldsOf() {
    static const std::vector<Field<MdioPhy>> fields{
        required("address", &MdioPhy::address, number<unsigned>({kLastPhy})),
        required("model", &MdioPhy::model, choice<PhyModel>({"dp83867", "88e1510"})),
    };
    return fields;
}

template <>
const std::vector<Field<MdioPart>>& fieldsOf() {
    static const std::vector<Field<MdioPart>> fields{
        required("core", &MdioPart::core, coreName()),
        required("phys", &MdioPart::phys, listOf(record<MdioPhy>(), kMostPhys)),
    };
    return fields;
}

template <>
const std::vector<Field<MiiPart>>& fieldsOf() {
    static const std::vector<Field<MiiPart>> fields{
        required("interface", &MiiPart::interface, interfaceName()),
        required("phy", &MiiPart::phy, record<MdioPhy>()),
        omittable("carrier", &MiiPart::hasCarrier, truth()),
    };
    return fields;
}

}  // namespace boardsim
