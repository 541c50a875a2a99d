#include "OSGCommitStamp.h"

#include <atomic>

namespace OSG
{
UInt32 new_commit_stamp()
{
    constinit static std::atomic<UInt32> last = 0;
    UInt32 const stamp = last.fetch_add(1, std::memory_order_relaxed) + 1;
    return stamp != 0 ? stamp : last.fetch_add(1, std::memory_order_relaxed) + 1;
}
} // namespace OSG
