#pragma once

namespace registertrap {

/// Accesses that C++ code makes through volatile pointers. VolatileAccesses.cpp is compiled twice, without
/// optimisation and with it.
struct VolatileAccesses {
    /// Runs the code on a window of at least 0x1000 bytes that starts with zeros.
    /// @return whether the code has read what it should
    bool (*run)(void* base);
};

extern const VolatileAccesses kUnoptimisedAccesses;
extern const VolatileAccesses kOptimisedAccesses;

}  // namespace registertrap
