#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::size_t kMostPorts = 64;
constexpr std::int32_t kLongestFibre = 1'000'000'000;
constexpr std::uint64_t kMostLanes = 1024;

}  // namespace

template <>
const std::vector<Field<InbandPart>>& fieldsOf() {
    static const std::vector<Field<InbandPart>> fields{
        omittable("carrier", &InbandPart::hasCarrier, truth()),
        omittable("slave", &InbandPart::slave, interfaceName()),
        omittable("fibre_lengths", &InbandPart::fibreLengths, listOf(integer(0, kLongestFibre), kMostPorts)),
    };
    return fields;
}

template <>
const std::vector<Field<PatternPart>>& fieldsOf() {
    static const std::vector<Field<PatternPart>> fields{
        omittable("carrier", &PatternPart::hasCarrier, truth()),
        required("lanes", &PatternPart::lanes, number<std::uint32_t>({kMostLanes})),
    };
    return fields;
}

}  // namespace boardsim
