#include "Vl/Common/Identity/EAN13.h"

namespace Valen::EAN13 {

bool calculateChecksum(unsigned long value, int* checkDigit) {
    constexpr int kDigits = 13;
    unsigned long sum = 0;
    unsigned long rest = value;
    for (int place = 0; place < kDigits; ++place) {
        const unsigned long weight = place % 2 == 0 ? 1 : 3;
        sum += weight * (rest % 10);
        rest /= 10;
    }
    if (checkDigit != nullptr) {
        *checkDigit = static_cast<int>((10 - sum % 10 + value % 10) % 10);
    }
    return value != 0 && sum % 10 == 0;
}

}  // namespace Valen::EAN13
