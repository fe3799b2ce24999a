#include "Tests/Common/Threads/SystemCalls.h"

#include <pthread.h>

#include <cerrno>

namespace {

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define JOINS_ARE_TAKEN_AS_DONE
#endif
#elif defined(__SANITIZE_THREAD__)
#define JOINS_ARE_TAKEN_AS_DONE
#endif

/// ThreadSanitizer takes every join as done, also one that is refused, and then knows the thread no more.
bool isRefusedHere([[maybe_unused]] pthread_t thread) {
#ifdef JOINS_ARE_TAKEN_AS_DONE
    return pthread_equal(thread, pthread_self()) != 0;
#else
    return false;
#endif
}

}  // namespace

// The linker sends the library's calls to __wrap_…, and ours to __real_… to the system.
extern "C" {

int __real_clock_gettime(clockid_t clock, timespec* time);
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*function)(void*),
                          void* argument);
int __real_pthread_join(pthread_t thread, void** result);

int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    const time_t seconds = systemCalls.monotonicSeconds;
    if (clock == CLOCK_MONOTONIC && seconds != 0) {
        *time = {seconds, 0};
        return 0;
    }
    return __real_clock_gettime(clock, time);
}

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*function)(void*),
                          void* argument) {
    return systemCalls.createError != 0 ? systemCalls.createError
                                        : __real_pthread_create(thread, attributes, function, argument);
}

int __wrap_pthread_join(pthread_t thread, void** result) {
    if (isRefusedHere(thread)) {
        return EDEADLK;
    }
    const int error = __real_pthread_join(thread, result);
    return systemCalls.joinError != 0 ? systemCalls.joinError : error;
}

}  // extern "C"
