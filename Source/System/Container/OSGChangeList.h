#pragma once

/// \file
/// The edits of a thread since its last commit.

#include <atomic>
#include <vector>

#include "OSGChangeLog.h"
#include "OSGMemManager.h"
#include "OSGRefCountPolicies.h"
#include "OSGSystemApi.h"

namespace OSG
{
class FieldContainer;

/// Collects containers that were made or edited; `commitChanges` publishes the edits. One per
/// thread (Thread::getCurrentChangeList), without locks.
class OSG_SYSTEM_API ChangeList
{
  public:
    /// What `changed` is told of where the new values come from.
    enum Origin : UInt32
    {
        Commit = 0, ///< edits of this aspect
        Sync = 1    ///< another aspect, by an AspectLink
    };

    /// Lists that may exist at once; std::bad_alloc for a further one.
    static constexpr UInt32 MaxLists = 2047;

    ChangeList();
    /// Edits that are still open are dropped, delayed references too.
    ~ChangeList();
    ChangeList(ChangeList const &) = delete;
    ChangeList &operator=(ChangeList const &) = delete;

    // --- recording ---
    /// A container was made, with the low 30 bits of its id and its local flags. Only logs for
    /// other aspects use more than the number of such calls.
    void addCreated(UInt32 id, UInt64 flags);
    /// The copy of an aspect ends.
    void addEnded(FieldContainer const *container) { addToLogs(container, ChangeLog::Kind::Ended); }
    /// Called once by a container whose first field is edited; gives its place in the list.
    UInt32 addChanged(FieldContainer *container);
    /// Empties the place of a container that is destroyed or whose mask is taken.
    void clearChanged(UInt32 place) { _changed[place] = nullptr; }
    /// From 1 on, unique among the lists that exist: containers remember the list that has their
    /// edits by its number, which is shorter than its address.
    UInt32 getNumber() const { return _number; }
    static ChangeList *withNumber(UInt32 number) { return _all[number]; }
    /// Drops one reference of `container` by `Policy` at the next commit instead of now.
    template <class Policy>
    void addDelayedSubRef(FieldContainer *container)
    {
        addDelayed(container, &Policy::template subRef<FieldContainer>);
    }

    // --- publishing ---
    /// Takes the collected mask of each edited container and calls its `changed` with it, until no
    /// edit is open (a `changed` may edit, and may commit); then drops the delayed references.
    /// `origin` and `details` are handed to `changed`.
    void commitChanges(UInt32 origin = Commit, UInt32 details = 0);

    // --- for other aspects ---
    /// What is made, committed and ended from now on goes into `log` as well, until either of the
    /// two ends.
    void attach(ChangeLog *log);
    void detach(ChangeLog *log);

    // --- looking ---
    /// Containers made since the last commit.
    UInt64 getNumCreated() const { return _numCreated; }
    bool hasOpenEdits() const { return !_changed.empty(); }
    /// Calls `use(FieldContainer *)` for each container with open edits; it edits nothing.
    template <class Use>
    void forEachOpen(Use use) const
    {
        for(FieldContainer *container : _changed)
        {
            if(container != nullptr)
                use(container);
        }
    }
    /// How often the end of a list has dropped open edits: such fields have new values that no
    /// `changed` was told of. Any thread may ask.
    static UInt32 getNumDropped() { return _numDropped.load(std::memory_order_relaxed); }

  protected:
    void doCommitChanges(UInt32 origin, UInt32 details);

  private:
    using SubRef = void (*)(FieldContainer *);
    struct Delayed
    {
        FieldContainer *container;
        SubRef subRef;
    };
    void addDelayed(FieldContainer *container, SubRef subRef);
    void dropDelayed();
    void dropEdits();
    void addToLogs(FieldContainer const *container, ChangeLog::Kind kind, BitVector mask = 0)
    {
        for(ChangeLog *log : _logs)
            log->add(container, kind, mask);
    }

    static ChangeList *_all[MaxLists + 1]; // by number
    static std::atomic<UInt32> _numDropped;

    UInt64 _numCreated = 0;
    UInt32 _number;
    bool _committing = false;
    std::vector<FieldContainer *, MemAllocator<FieldContainer *>> _changed;
    std::vector<Delayed, MemAllocator<Delayed>> _delayed;
    std::vector<ChangeLog *, MemAllocator<ChangeLog *>> _logs;
};
} // namespace OSG
