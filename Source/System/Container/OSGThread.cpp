#include "OSGThread.h"

#include <memory>
#include <new>

#include <pthread.h>

#include "OSGChangeList.h"
#include "OSGStaticTls.h"

namespace OSG
{
namespace
{
struct ThreadState
{
    UInt32 aspect = 0;
    UInt64 localFlags = 0;
    ChangeList changes;
};

constinit OSG_STATIC_TLS thread_local ThreadState *thread_state = nullptr;

void end_state(void *state)
{
    // References that go with the state may end containers, which edit what is around them.
    thread_state = static_cast<ThreadState *>(state);
    delete thread_state;
    thread_state = nullptr;
}

pthread_key_t make_key()
{
    pthread_key_t key = 0;
    if(pthread_key_create(&key, &end_state) != 0)
        throw std::bad_alloc();
    return key;
}

// The state of a thread ends after all of the thread's own objects: whichever of them are older,
// they may edit what is around them when they end. That is what a key of the thread library is for;
// a thread_local object would end before those that are older. A key is also silent where the
// process ends by the main thread, so that the statics of a host still find that thread's state. If
// a state is asked for after its end, by another key, the thread library comes round once more.
ThreadState &make_state()
{
    static pthread_key_t const key = make_key();
    auto state = std::make_unique<ThreadState>();
    if(pthread_setspecific(key, state.get()) != 0)
        throw std::bad_alloc();
    thread_state = state.release();
    return *thread_state;
}

ThreadState &this_thread() { return thread_state != nullptr ? *thread_state : make_state(); }
} // namespace

UInt32 Thread::getCurrentAspect() { return this_thread().aspect; }
void Thread::setCurrentAspect(UInt32 aspect) { this_thread().aspect = aspect; }
ChangeList *Thread::getCurrentChangeList() { return &this_thread().changes; }
UInt64 Thread::getCurrentLocalFlags() { return this_thread().localFlags; }
void Thread::setCurrentLocalFlags(UInt64 flags) { this_thread().localFlags = flags; }
} // namespace OSG
