#pragma once

#include <optional>

#include "OSGEditJournal.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Tells those who keep something that they have found in a scene whether to look again.
///
///     SceneEdits edits(SceneEdits::Watched::Everything);
///     ...
///     if(edits.haveCome()) // since the last call
///
/// It hears of what is committed in the aspect of the first call, of any scene: it may be true for
/// nothing, but never false for an edit. A moved camera is an edit of its beacon. Edits that are
/// not committed are not heard of.
class OSG_TOLVANITEKIT_API SceneEdits
{
  public:
    enum class Watched
    {
        Nodes,     ///< nodes, their cores and what they show
        Everything ///< materials and images as well: all that a picture shows
    };

    explicit SceneEdits(Watched watched)
        : _watched(watched)
    {
    }

    /// Whether something was edited since the last call. True at the first call. std::bad_alloc
    /// counts as no call.
    bool haveCome();

  private:
    struct Epochs
    {
        UInt64 materials = 0;
        UInt64 meshes = 0;
        UInt32 dropped = 0;
        bool operator==(Epochs const &) const = default;
    };
    Epochs currentEpochs() const;

    Watched _watched;
    Epochs _epochs;
    std::optional<EditJournal::Follower> _journal; // from the first call on
};
} // namespace OSG
