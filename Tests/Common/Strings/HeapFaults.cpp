#include "Tests/Common/Strings/HeapFaults.h"

#include <cerrno>
#include <cstdarg>

// The linker sends calls of NAME to __wrap_NAME and calls of __real_NAME to NAME.
extern "C" {

void* __real_malloc(size_t size);
void* __wrap_malloc(size_t size);
void* __wrap_malloc(size_t size) {
    if (heapFaults.exhausted) {
        errno = ENOMEM;
        return nullptr;
    }
    ++heapFaults.allocations;
    heapFaults.lastSize = size;
    return __real_malloc(size);
}

void __real_free(void* block);
void __wrap_free(void* block);
void __wrap_free(void* block) {
    heapFaults.frees += block != nullptr ? 1 : 0;
    __real_free(block);
}

int __real_vasprintf(char** text, const char* format, va_list arguments);
int __wrap_vasprintf(char** text, const char* format, va_list arguments);
int __wrap_vasprintf(char** text, const char* format, va_list arguments) {
    if (heapFaults.exhausted) {
        errno = ENOMEM;
        return -1;
    }
    return __real_vasprintf(text, format, arguments);
}

}  // extern "C"
