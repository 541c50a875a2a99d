#pragma once

/// \file
/// What happens to the containers of one aspect, kept for another.

#include <atomic>
#include <vector>

#include "OSGAspectStore.h"

namespace OSG
{
class ChangeList;
class FieldContainer;

/// Written by a change list (ChangeList::attach) for as long as another aspect follows; read by
/// AspectLink. Without locks: the two threads meet before it is read.
class OSG_SYSTEM_API ChangeLog
{
  public:
    enum class Kind : UInt32
    {
        Created,
        Changed, ///< a commit has published the fields of the mask
        Ended
    };
    struct Entry
    {
        AspectStore *store; ///< counted by the log
        Kind kind;
        BitVector mask;
    };
    using Entries = std::vector<Entry, MemAllocator<Entry>>;

    /// Copies of `giverAspect` are reported here, and no others.
    explicit ChangeLog(UInt32 giverAspect)
        : _giverAspect(giverAspect)
    {
    }
    ~ChangeLog();
    ChangeLog(ChangeLog const &) = delete;
    ChangeLog &operator=(ChangeLog const &) = delete;

    /// Whether any log of the process is being written: what no end asks for costs nothing.
    static bool isAnyOpen() { return _numOpen.load(std::memory_order_relaxed) != 0; }

    UInt32 getGiverAspect() const { return _giverAspect; }
    Entries const &getEntries() const { return _entries; }
    /// False where memory did not suffice for an entry: whoever reads has to look at everything.
    bool isComplete() const { return _complete; }
    void clear();

    // --- called by the change list ---
    /// Never throws: containers also end where nobody expects an exception.
    void add(FieldContainer const *container, Kind kind, BitVector mask) noexcept;

  private:
    friend class ChangeList;

    static std::atomic<Int32> _numOpen;

    Entries _entries;
    ChangeList *_list = nullptr; // that writes it, null once the list has ended
    UInt32 _giverAspect;
    bool _complete = true;
};
} // namespace OSG
