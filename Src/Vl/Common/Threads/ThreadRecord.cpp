#include "Vl/Common/Threads/ThreadRecord.h"

namespace Valen {
namespace {

pthread_key_t makeKey() {
    pthread_key_t key = 0;
    pthread_key_create(&key, nullptr);
    pthread_setspecific(key, nullptr);
    return key;
}

}  // namespace

const pthread_key_t ThreadRecord::ThreadObject = makeKey();

const char* ThreadRecord::currentName() {
    const ThreadRecord* record = current();
    return record != nullptr ? record->name() : "main";
}

}  // namespace Valen
