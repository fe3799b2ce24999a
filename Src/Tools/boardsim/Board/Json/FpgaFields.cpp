#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::size_t kLongestName = 64;
constexpr std::size_t kMostAddresses = 256;
constexpr std::size_t kMostCores = 256;
constexpr std::uint64_t kSmallestSpace = 0x1000;  // a page
constexpr std::uint64_t kLargestSpace = 0x1000000;
constexpr int kSpaceDigits = 5;
constexpr std::size_t kMostCpldWords = 0x1000;

/// A path is made of it where the core is an SPI master.
Codec<std::vector<Core>> cores() {
    return listOf(record<Core>(), kMostCores);
}

}  // namespace

Codec<std::string> coreName() {
    return fileName(kLongestName);
}

template <>
const std::vector<Field<Core>>& fieldsOf() {
    static const std::vector<Field<Core>> fields{
        required("name", &Core::name, coreName()),
        required("version", &Core::version, word<std::uint32_t>()),
        required("addresses", &Core::addresses, listOf(word<std::uint32_t>(), kMostAddresses)),
    };
    return fields;
}

template <>
const std::vector<Field<FpgaPart>>& fieldsOf() {
    static const std::vector<Field<FpgaPart>> fields{
        required("bytes", &FpgaPart::bytes,
                 number<std::size_t>({kLargestSpace, kSmallestSpace, kSpaceDigits})),
        required("cores", &FpgaPart::cores, cores()),
        omittable("card_id", &FpgaPart::cardId, arrayOf<std::uint32_t, 3>(word<std::uint32_t>())),
    };
    return fields;
}

template <>
const std::vector<Field<CpldPart>>& fieldsOf() {
    static const std::vector<Field<CpldPart>> fields{
        required("cores", &CpldPart::cores, cores()),
        required("words", &CpldPart::words, listOf(word<std::uint32_t>(), kMostCpldWords)),
    };
    return fields;
}

}  // namespace boardsim
