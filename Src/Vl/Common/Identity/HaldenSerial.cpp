#include "Vl/Common/Identity/HaldenSerial.h"

#include "Vl/Common/Identity/EAN13.h"
#include "Vl/Common/Strings/TimeText.h"

namespace Valen {

bool HaldenSerial::IsValid() const {
    return EAN13::calculateChecksum(number);
}

unsigned int HaldenSerial::checkDigit() const {
    int digit = 0;
    EAN13::calculateChecksum(number, &digit);
    return static_cast<unsigned int>(digit);
}

SimpleString HaldenSerial::toString() const {
    return SimpleString::FormatWithParams(
        "%013llu  Production Date: %s  Last Service Date: %s", static_cast<unsigned long long>(number),
        TimeToString(productionDate).c_str(), TimeToString(lastServiceDate).c_str());
}

void HaldenSerial::PD_ToString(std::string& text) const {
    text = TimeToString(productionDate);
}

void HaldenSerial::SD_ToString(std::string& text) const {
    text = TimeToString(lastServiceDate);
}

}  // namespace Valen
