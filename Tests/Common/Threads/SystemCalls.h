#pragma once

#include <atomic>
#include <ctime>

/// What no test can make the system do in time. The test program is linked so that the library's calls named
/// here pass through SystemCalls.cpp.
struct SystemCalls {
    std::atomic<time_t> monotonicSeconds{0};  ///< unless 0, the monotonic clock stands there
    int createError = 0;                      ///< what pthread_create answers instead of making a thread
    int joinError = 0;                        ///< what pthread_join answers after it has joined
};

inline SystemCalls systemCalls;

/// Restores the system's own answers at the end of a test.
class ChangedSystemCalls {
public:
    ChangedSystemCalls() = default;
    ChangedSystemCalls(const ChangedSystemCalls&) = delete;
    ChangedSystemCalls& operator=(const ChangedSystemCalls&) = delete;
    ~ChangedSystemCalls() {
        systemCalls.monotonicSeconds = 0;
        systemCalls.createError = 0;
        systemCalls.joinError = 0;
    }

    SystemCalls* operator->() { return &systemCalls; }
};
