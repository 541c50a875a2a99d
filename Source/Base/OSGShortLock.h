#pragma once

/// \file
/// A lock for a few instructions.

#include <atomic>

#include "OSGSoleThread.h"

namespace OSG
{
/// For std::lock_guard. Cheaper than a mutex where nobody waits, which is nearly always; who has to
/// wait sleeps. Costs nothing in a process of one thread; none is started while it is held.
class ShortLock
{
  public:
    void lock()
    {
        if(is_sole_thread())
        {
            _state.store(Taken, std::memory_order_relaxed);
            return;
        }
        if(_state.exchange(Taken, std::memory_order_acquire) != Free)
            lockAfterWaiting();
    }
    void unlock()
    {
        if(is_sole_thread())
        {
            _state.store(Free, std::memory_order_relaxed);
            return;
        }
        if(_state.exchange(Free, std::memory_order_release) == Wanted)
            _state.notify_all();
    }

  private:
    // Apart from lock(), which is short enough to stand in its callers then.
    void lockAfterWaiting()
    {
        do
        {
            // Whoever takes it from here on may have others waiting behind.
            if(_state.exchange(Wanted, std::memory_order_acquire) == Free)
                return;
            _state.wait(Wanted, std::memory_order_relaxed);
        } while(_state.exchange(Taken, std::memory_order_acquire) != Free);
    }

    enum State : int
    {
        Free,
        Taken,
        Wanted
    };
    std::atomic<int> _state{Free};
};
} // namespace OSG
