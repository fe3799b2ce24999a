#pragma once

#include <cstddef>

/// The heap as the strings under test see it. The test program is linked so that their calls of malloc, free
/// and vasprintf pass through HeapFaults.cpp.
struct HeapFaults {
    bool exhausted = false;  ///< nothing can be allocated

    int allocations = 0;  ///< counts malloc
    int frees = 0;        ///< counts free, but for null pointers
    std::size_t lastSize = 0;
};

inline HeapFaults heapFaults;

/// Counts from zero; restores a faultless heap at the end of a test.
class WatchedHeap {
public:
    WatchedHeap() { heapFaults = {}; }
    ~WatchedHeap() { heapFaults = {}; }
    WatchedHeap(const WatchedHeap&) = delete;
    WatchedHeap& operator=(const WatchedHeap&) = delete;

    HeapFaults* operator->() { return &heapFaults; }
};
