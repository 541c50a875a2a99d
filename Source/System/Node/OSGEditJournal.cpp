#include "OSGEditJournal.h"

#include <mutex>
#include <utility>

namespace OSG
{
constinit std::atomic<UInt32> EditJournal::_followers = 0;

namespace
{
/// The last entries, each at its number modulo the capacity.
struct Journal
{
    std::mutex guard;
    // Empty while nobody follows.
    std::vector<EditJournal::Entry, MemAllocator<EditJournal::Entry>> entries;
    UInt64 written = 0;

    /// Never destroyed: containers may be edited at the very end.
    static Journal &the()
    {
        static Journal *const journal = new Journal;
        return *journal;
    }
};
} // namespace

void EditJournal::write(Entry const &entry) noexcept
{
    Journal &journal = Journal::the();
    std::lock_guard const hold(journal.guard);
    if(!journal.entries.empty())
        journal.entries[journal.written % Capacity] = entry;
    ++journal.written;
}

EditJournal::Follower::Follower()
{
    Journal &journal = Journal::the();
    std::lock_guard const hold(journal.guard);
    journal.entries.resize(Capacity);
    _position = journal.written;
    _followers.fetch_add(1, std::memory_order_relaxed);
}

EditJournal::Follower::~Follower()
{
    Journal &journal = Journal::the();
    std::lock_guard const hold(journal.guard);
    if(_followers.fetch_sub(1, std::memory_order_relaxed) != 1)
        return;
    journal.entries.clear();
    journal.entries.shrink_to_fit();
}

bool EditJournal::Follower::read(std::vector<Entry> &entries)
{
    Journal const &journal = Journal::the();
    std::lock_guard const hold(Journal::the().guard);
    UInt64 const from = std::exchange(_position, journal.written);
    if(journal.written - from > Capacity)
        return false;
    for(UInt64 i = from; i < journal.written; ++i)
        entries.push_back(journal.entries[i % Capacity]);
    return true;
}
} // namespace OSG
