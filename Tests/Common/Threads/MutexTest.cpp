#include "Vl/Common/Threads/Mutex.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace {

bool anotherThreadGets(Valen::Mutex& mutex) {
    bool taken = false;
    std::thread([&] {
        taken = mutex.trylock();
        if (taken) {
            mutex.unlock();
        }
    }).join();
    return taken;
}

TEST(MutexTest, OneThreadHoldsItAtATime) {
    Valen::Mutex mutex(false, PTHREAD_MUTEX_NORMAL);
    {
        const std::lock_guard lock(mutex);
        EXPECT_FALSE(anotherThreadGets(mutex));
    }
    EXPECT_TRUE(anotherThreadGets(mutex));
}

TEST(MutexTest, IsUnlockedWhateverTheFirstArgumentSays) {
    Valen::Mutex mutex(true, PTHREAD_MUTEX_NORMAL);
    EXPECT_TRUE(anotherThreadGets(mutex));
}

TEST(MutexTest, ARecursiveOneIsTakenAgainByItsHolder) {
    Valen::Mutex mutex(false, PTHREAD_MUTEX_RECURSIVE);
    mutex.lock();
    EXPECT_TRUE(mutex.trylock());
    mutex.unlock();
    EXPECT_FALSE(anotherThreadGets(mutex));
    mutex.unlock();
    EXPECT_TRUE(anotherThreadGets(mutex));
}

TEST(MutexTest, ANormalOneIsNotTakenTwiceByItsHolder) {
    Valen::Mutex mutex(false, PTHREAD_MUTEX_NORMAL);
    mutex.lock();
    EXPECT_FALSE(mutex.trylock());
    mutex.unlock();
}

}  // namespace
