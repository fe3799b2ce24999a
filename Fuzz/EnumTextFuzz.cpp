// Any number and any text, looked up in enumerations of every shape and compared with a plain search of the
// rows.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Enums/EventDefs.h"
#include "Vl/Common/Enums/OriginKey.h"
#include "Vl/Common/Enums/ParameterID.h"
#include "Vl/Common/Enums/UpdatePackage.h"

namespace {

template <const auto& Rows>
void lookUp(long number, const std::string& text) {
    using Table = Enums::TextTable<Rows>;
    int valueOfText = -1;
    bool isDefined = false;
    const char* textOfNumber = "unknown";
    const int value = static_cast<int>(number);
    for (const Enums::TextRow& row : Rows) {
        isDefined = isDefined || row.value == number;
        if (row.text != nullptr && row.value == value) {
            textOfNumber = row.text;
        }
        if (row.text != nullptr && text == row.text) {
            valueOfText = row.value;
        }
    }
    require(Table::valueOf(text.c_str()) == valueOfText);
    require(Table::contains(number) == isDefined);
    require(std::strcmp(Table::textOf(value), textOfNumber) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    long number = 0;
    if (size < sizeof number) {
        return 0;
    }
    std::memcpy(&number, data, sizeof number);
    const std::string text(reinterpret_cast<const char*>(data) + sizeof number, size - sizeof number);
    const std::string upToNul = text.c_str();
    lookUp<Enums::EventDefs::kRows>(number, upToNul);
    lookUp<Enums::OriginKey::kRows>(number, upToNul);
    lookUp<Enums::ParameterID::kRows>(number, upToNul);
    lookUp<Enums::UpdatePackage::kRows>(number, upToNul);
    return 0;
}
