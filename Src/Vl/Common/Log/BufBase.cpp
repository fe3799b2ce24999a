#include "Vl/Common/Log/BufBase.h"

namespace Valen::Log {

char* BufBase::put(char* at, const char* text) {
    while (*text != '\0' && at < last()) {
        *at++ = *text++;
    }
    *at = '\0';
    return at;
}

}  // namespace Valen::Log
