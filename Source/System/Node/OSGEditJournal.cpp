#include "OSGEditJournal.h"

#include <mutex>
#include <utility>

#include "OSGThread.h"

namespace OSG
{
constinit std::atomic<UInt32> EditJournal::_followers = 0;

namespace
{
/// The last entries, each at its number modulo the capacity.
struct Journal
{
    // Empty while nobody follows.
    std::vector<EditJournal::Entry, MemAllocator<EditJournal::Entry>> entries;
    UInt64 written = 0;
    UInt32 followers = 0;
};

struct Journals
{
    std::mutex guard;
    std::vector<Journal, MemAllocator<Journal>> byAspect; // of those that were ever followed

    /// Never destroyed: containers may be edited at the very end.
    static Journals &the()
    {
        static Journals *const journals = new Journals;
        return *journals;
    }
};
} // namespace

void EditJournal::write(Entry const &entry) noexcept
{
    UInt32 const aspect = Thread::getCurrentAspect();
    Journals &journals = Journals::the();
    std::lock_guard const hold(journals.guard);
    if(aspect >= journals.byAspect.size())
        return;
    Journal &journal = journals.byAspect[aspect];
    if(!journal.entries.empty())
        journal.entries[journal.written % Capacity] = entry;
    ++journal.written;
}

EditJournal::Follower::Follower()
    : _aspect(Thread::getCurrentAspect())
{
    Journals &journals = Journals::the();
    std::lock_guard const hold(journals.guard);
    if(_aspect >= journals.byAspect.size())
        journals.byAspect.resize(_aspect + 1);
    Journal &journal = journals.byAspect[_aspect];
    journal.entries.resize(Capacity);
    ++journal.followers;
    _position = journal.written;
    _followers.fetch_add(1, std::memory_order_relaxed);
}

EditJournal::Follower::~Follower()
{
    Journals &journals = Journals::the();
    std::lock_guard const hold(journals.guard);
    _followers.fetch_sub(1, std::memory_order_relaxed);
    Journal &journal = journals.byAspect[_aspect];
    if(--journal.followers != 0)
        return;
    journal.entries.clear();
    journal.entries.shrink_to_fit();
}

bool EditJournal::Follower::read(std::vector<Entry> &entries)
{
    Journals &journals = Journals::the();
    std::lock_guard const hold(journals.guard);
    Journal const &journal = journals.byAspect[_aspect];
    UInt64 const number = journal.written - _position;
    if(number <= Capacity)
        entries.reserve(entries.size() + number);
    UInt64 const from = std::exchange(_position, journal.written);
    if(number > Capacity)
        return false;
    for(UInt64 i = from; i < journal.written; ++i)
        entries.push_back(journal.entries[i % Capacity]);
    return true;
}

bool EditJournal::Follower::skip()
{
    Journals &journals = Journals::the();
    std::lock_guard const hold(journals.guard);
    UInt64 const written = journals.byAspect[_aspect].written;
    return std::exchange(_position, written) != written;
}
} // namespace OSG
