#include "Vl/Common/Identity/SerialNo.h"

namespace Valen {

SimpleString SerialNo::toString() const {
    return SimpleString::FormatWithParams("%016llX", static_cast<unsigned long long>(number));
}

}  // namespace Valen
