#pragma once

/// The interface of a debug build: a console, a check of every allocation, a report of every failed
/// assertion. This system has none of them, so the hooks have no effect and cost nothing. Any thread may call
/// any of them.
namespace Valen::Log {

/// The text is dropped.
[[gnu::format(printf, 2, 3)]] inline void DbgConsole(int /*key*/, const char* /*format*/, ...) {}

/// Registers an allocation of `size` bytes. @return `p`
inline void* debug_alloc(void* p, int /*size*/, const char* /*where*/) {
    return p;
}
/// Tell of a release; they release nothing.
inline void debug_free(void* /*p*/, int /*size*/) {}
inline void debug_free(void* /*p*/, int /*size*/, const char* /*where*/) {}

inline void debug_dump_assertion(const char* /*kind*/, const char* /*expression*/, const char* /*function*/,
                                 const char* /*file*/, int /*line*/) {}

inline void BacktraceToDbgConsole() {}
inline void VerifyReleaseBuild() {}
inline void LoadFilter() {}

}  // namespace Valen::Log
