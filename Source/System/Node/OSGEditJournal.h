#pragma once

/// \file
/// Which nodes have been edited, for those who keep what they have found in a scene.

#include <atomic>
#include <vector>

#include "OSGMemManager.h"
#include "OSGSystemApi.h"

namespace OSG
{
class Node;

/// The nodes that were told of an edit of theirs or of their core's, those whose box was said to be
/// out of date, and those that have ended, in the order in which that was so. Each aspect has its
/// own, which the threads that work on it write, only while somebody follows it; it holds the last
/// Capacity entries. The nodes are keys: any of them may have ended since. Any thread may write and
/// read.
class OSG_SYSTEM_API EditJournal
{
  public:
    static constexpr std::size_t Capacity = 1u << 16;

    struct Entry
    {
        Node const *node;
        bool hasEnded;
    };

    /// Reads what was written since its last reading, about the aspect that the thread works on
    /// which makes it.
    class OSG_SYSTEM_API Follower
    {
      public:
        /// std::bad_alloc where there is no memory for the journal.
        Follower();
        ~Follower();
        Follower(Follower const &) = delete;
        Follower &operator=(Follower const &) = delete;

        /// Appends what was written since the last call. False, and nothing appended, where that
        /// was more than the journal holds. std::bad_alloc counts as no call.
        bool read(std::vector<Entry> &entries);
        /// Passes over what was written since the last call. False where nothing was.
        bool skip();

      private:
        UInt32 _aspect;
        UInt64 _position; // number of the next entry
    };

    /// Costs next to nothing while nobody follows.
    static void addEdit(Node const *node) noexcept { add({node, false}); }
    static void addEnd(Node const *node) noexcept { add({node, true}); }

  private:
    static void add(Entry const &entry) noexcept
    {
        if(_followers.load(std::memory_order_relaxed) != 0)
            write(entry);
    }
    static void write(Entry const &entry) noexcept;

    static std::atomic<UInt32> _followers;
};
} // namespace OSG
