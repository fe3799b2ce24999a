#include "Vl/Common/Streams/ErrorResult.h"

#include <cstdarg>
#include <cstdlib>

#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {
namespace {

// An error stays an error even when there is no text for it. Never written to, never freed.
char outOfMemory[] = "out of memory";

}  // namespace

ErrorResult::ErrorResult(const char* format, ...) {
    if (format == nullptr) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    SimpleString::NoCopyBuffer text(format, arguments);
    va_end(arguments);
    text_.reset(text.isValid() ? text.release() : outOfMemory);
}

void ErrorResult::Free::operator()(char* text) const {
    if (text != outOfMemory) {
        std::free(text);
    }
}

}  // namespace Valen
