#include "Vl/Common/Threads/Mutex.h"

namespace Valen {

Mutex::Mutex(bool /*unused*/, int kind) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, kind);
    pthread_mutex_init(&mutex_, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

Mutex::~Mutex() {
    pthread_mutex_destroy(&mutex_);
}

void Mutex::lock() {
    pthread_mutex_lock(&mutex_);
}

void Mutex::unlock() {
    pthread_mutex_unlock(&mutex_);
}

bool Mutex::trylock() {
    return pthread_mutex_trylock(&mutex_) == 0;
}

}  // namespace Valen
