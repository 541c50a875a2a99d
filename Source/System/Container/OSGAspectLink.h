#pragma once

/// \file
/// Keeps the scene of one aspect in another.
///
///   giver, aspect 0                         receiver, aspect 1
///   makes and edits a scene
///   commitChanges()
///   waits                                   AspectLink link(list of the giver, 0)
///   edits, commitChanges()                  reads its own copies, meanwhile
///   waits                                   link.receive()
///
/// "Waits" means that the giver's thread touches no container from before the call until it has
/// returned, and that the two threads synchronise around it, by a barrier or a mutex of the host.
/// Between two calls neither thread needs a lock.

#include <memory>
#include <unordered_map>

#include "OSGChangeLog.h"
#include "OSGFieldContainer.h"

namespace OSG
{
/// One direction, from the giver's aspect to that of the thread that makes the link: the receiver.
///
/// The receiver has a copy of every container of the giver: with the id and the aspect store of its
/// source, pointing to copies where the source points to sources. What the giver has not committed
/// is not promised to have arrived. A copy lives until the end of its source has been received, and
/// beyond that for as long as the receiver itself counts it. Fields that a container keeps local
/// (FieldContainer::getSharedMask) do not travel after its creation.
///
/// A giver may have several links. Two aspects that exist already may be linked in both directions;
/// containers then end where they were made. What arrives by a link is not handed on by others: a
/// third aspect has a link of its own to where the edits are made.
class OSG_SYSTEM_API AspectLink
{
  public:
    /// Made and destroyed by the receiver's thread while the giver waits. Copies all that the
    /// giver's aspect holds.
    AspectLink(ChangeList *giver, UInt32 giverAspect);
    /// Drops the copies and ends the giver's log.
    ~AspectLink();
    AspectLink(AspectLink const &) = delete;
    AspectLink &operator=(AspectLink const &) = delete;

    /// Brings what the giver has committed since the last call into this aspect. Each copy that got
    /// new values is told by one `changed` with the collected mask and the origin ChangeList::Sync,
    /// after all of them have theirs. Synchronising is no edit of the receiver.
    void receive();

    /// Copies that this link has made and that have not been dropped.
    UInt32 getNumCopies() const { return static_cast<UInt32>(_copies.size()); }

  private:
    struct Update
    {
        AspectStore *store;
        BitVector mask;
    };
    using Updates = std::vector<Update, MemAllocator<Update>>;

    void receiveAll();
    void receiveLog();
    FieldContainer *sourceOf(AspectStore const *store) const;
    FieldContainer *copyIn(AspectStore const *store) const;
    void makeCopy(AspectStore *store);
    void dropCopy(AspectStore *store);
    void dropOrphans();
    void update(Updates const &updates);

    // By store: each copy is counted once here, for its source.
    using Copies = std::unordered_map<
        AspectStore *, RecordedRefPtr<FieldContainer>, std::hash<AspectStore *>,
        std::equal_to<AspectStore *>,
        MemAllocator<std::pair<AspectStore *const, RecordedRefPtr<FieldContainer>>>>;
    Copies _copies;
    ChangeLog _log;
    UInt32 _aspect; // of the receiver
};
} // namespace OSG
