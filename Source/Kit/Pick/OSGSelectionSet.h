#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include <boost/function.hpp>

#include "OSGNodePath.h"
#include "OSGSceneEdits.h"
#include "OSGSelectionFunctor.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// What the user has selected: places of a scene, each at most once, in the order in which they
/// came.
///
///     selection.addObserver(&highlighter);
///     selection.setFilter({SelectionFunctor::SelectTriangles, {}});
///     selection.replace({{picked.path, SelectionFunctor::SelectTriangles}});
///     ...
///     selection.prune(root); // once a frame, after the commit
///
/// Paths count references, so that all calls come from the thread that writes in the aspect. The
/// set keeps its nodes alive until they are taken out. Each change happens wholly or, where there
/// is no memory (std::bad_alloc), not at all.
class OSG_TOLVANITEKIT_API SelectionSet
{
  public:
    /// Bits of SelectionFunctor::SelectionType.
    using Kinds = UInt32;
    static constexpr Kinds AllKinds = SelectionFunctor::SelectTriangles |
                                      SelectionFunctor::SelectLines |
                                      SelectionFunctor::SelectPoints;

    /// A place, and the kinds of the primitives by which it was met.
    struct Item
    {
        NodePath path = {};
        Kinds kinds = AllKinds;
    };
    using Items = std::vector<Item>;

    /// What may come in: items of one of these kinds whose path the host accepts. Without a
    /// predicate all paths are accepted. The predicate does not change the set.
    struct Filter
    {
        Kinds kinds = AllKinds;
        boost::function<bool(NodePath const &)> accepts = {};
    };

    /// What one change did, in the order of the list that was given, or of the set.
    struct Change
    {
        std::vector<NodePath> came;
        std::vector<NodePath> went;
    };

    /// Hears of each change once, after it. A call that changes nothing is not told.
    ///
    /// While it is told, an observer may change the set and add and remove observers, itself
    /// included. Such a change of the set is made at once, and told to all observers after the
    /// change that is being told now: all of them hear of the changes in the same order. `set` is
    /// then already newer than `change`. An observer that was removed is not called any more; one
    /// that was added hears from the next change on that is told. An observer must not end the set.
    /// Changes that are not told yet because an observer has thrown are told with the next one.
    class OSG_TOLVANITEKIT_API Observer
    {
      public:
        virtual ~Observer();
        virtual void selectionChanged(SelectionSet const &set, Change const &change) = 0;
    };

    SelectionSet();
    ~SelectionSet();
    SelectionSet(SelectionSet const &) = delete;
    SelectionSet &operator=(SelectionSet const &) = delete;

    // --- looking ---
    std::size_t size() const { return _places.size(); }
    bool isEmpty() const { return _places.empty(); }
    bool contains(NodePath const &path) const { return _places.count(path) != 0; }
    /// In the order in which they came.
    std::vector<NodePath> getPaths() const;
    /// Calls `use(NodePath const &)` for each path in the order in which they came. `use` does not
    /// change the set.
    template <class Use>
    void forEach(Use use) const
    {
        for(NodePath const *path : _order)
        {
            if(path != nullptr)
                use(*path);
        }
    }

    // --- changing; the result says whether the set has changed ---
    //
    // Paths of no node are passed over. A path that is in a list twice counts once.

    /// Afterwards the set holds what the filter lets in of these and nothing else. What was in it
    /// keeps its place.
    bool replace(Items const &items);
    bool add(Items const &items);
    /// Takes out what is in the set, whatever the filter says, and adds the others.
    bool toggle(Items const &items);
    bool remove(std::vector<NodePath> const &paths);
    bool clear();
    /// Takes out the paths by which a walk from `root` no longer comes to their node. Costs next to
    /// nothing where nothing was committed and nothing added since the last call, otherwise a look
    /// at each path: also while a camera moves, since that edits its beacon. Null takes all out.
    bool prune(Node const *root);

    /// For what comes from now on. What is in the set stays.
    void setFilter(Filter filter) { _filter = std::move(filter); }
    Filter const &getFilter() const { return _filter; }

    // --- observers; not owned, they take themselves out before they end ---
    /// Null, and one that is there already, do nothing.
    void addObserver(Observer *observer);
    void removeObserver(Observer *observer);

  private:
    using Places = std::unordered_map<NodePath, std::size_t, NodePathHash>;

    bool lets(Item const &item) const;
    bool apply(Change &&change);
    void insert(std::vector<NodePath> const &paths);
    void erase(NodePath const &path);
    void compact();
    void tell();
    void tellOne(Change const &change);

    Places _places;                       // where each path is in the order
    std::vector<NodePath const *> _order; // the keys of the table; null where one has gone
    Filter _filter;
    std::vector<Observer *> _observers; // null where one has gone while others are told
    std::deque<Change> _untold;
    bool _isTelling = false;
    SceneEdits _edits{SceneEdits::Watched::Nodes};
    Node const *_prunedRoot = nullptr;
    bool _hasUnpruned = false; // paths that have come since the last prune
};
} // namespace OSG
