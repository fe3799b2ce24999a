#pragma once

#include <pthread.h>

namespace Valen {

/// A POSIX mutex of a given kind (pthread_mutexattr_settype(3)). Works with std::lock_guard. Any thread may
/// use it; it must be unlocked when it is destroyed.
class Mutex {
public:
    /// `kind` is PTHREAD_MUTEX_NORMAL, _RECURSIVE, _ERRORCHECK or _DEFAULT. The first argument belongs to the
    /// interface and has no effect.
    explicit Mutex(bool unused = false, int kind = PTHREAD_MUTEX_DEFAULT);
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;
    ~Mutex();

    /// Blocks until the lock is taken.
    void lock();
    void unlock();
    /// @return true when the lock was taken; never blocks.
    bool trylock();

    /// For pthread_cond_wait and the like.
    pthread_mutex_t* native() { return &mutex_; }

private:
    pthread_mutex_t mutex_;
};

}  // namespace Valen
