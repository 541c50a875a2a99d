#pragma once

#include <mutex>
#include <unordered_map>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// The frame buffers that views of one context draw into instead of a window, by the containers
/// that stand for them. Each has colours of 8 bits with alpha, and a depth of 24 bits.
///
/// All functions but forget() want the context to be current. forget() may be called in any thread;
/// the frame buffer that it leaves behind is freed by the next collect().
class OSG_STATE_API TargetStore
{
  public:
    /// Binds the owner's frame buffer, for drawing and reading; makes it where it is missing or has
    /// another size. What was in one of another size is lost. Null, or why there is none, as half a
    /// sentence; nothing is bound then.
    char const *bind(void const *owner, UInt32 width, UInt32 height);

    void forget(void const *owner);
    /// Frees what has been forgotten.
    void collect();
    /// Frees everything.
    void release();
    /// The context is gone, and its frame buffers with it.
    void abandon();

    /// Number of frame buffers and of the buffers in them.
    std::size_t countObjects() const { return 3 * _targets.size(); }

  private:
    struct Target
    {
        UInt32 frameBuffer = 0;
        UInt32 buffers[2] = {0, 0}; // colours and depths
        UInt32 width = 0;
        UInt32 height = 0;
    };

    static char const *make(Target &target, UInt32 width, UInt32 height);
    static void free(Target const &target);

    std::mutex _mutex;
    std::unordered_map<void const *, Target> _targets;
    std::vector<Target> _forgotten;
};
} // namespace OSG
