#include "Vl/Common/Strings/Format.h"

namespace Valen {

Format::Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    ReFormat(format, arguments);
    va_end(arguments);
}

}  // namespace Valen
