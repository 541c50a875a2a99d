#pragma once

#include "OSGAppearanceWalk.h"
#include "OSGDrawList.h"
#include "OSGLightSets.h"
#include "OSGRenderPartition.h"
#include "OSGSceneCache.h"

namespace OSG
{
/// Makes the list of a frame out of what is recorded of a scene, and of what the nodes show that
/// are walked for this view alone. Where neither the scene nor the view has changed since the last
/// frame, and no node is walked, the list stays as it is.
class OSG_STATE_API FrameCollector
{
  public:
    FrameCollector(SceneCache &cache, RenderPartition &partition, DrawList &list)
        : _cache(cache)
        , _partition(partition)
        , _list(list)
    {
    }

    /// Reads the view from the partition. The table is the one that the cache was updated with.
    void begin(AppearanceTable const &appearances);
    /// What follows is shown by the node of the open entry of that number in the record; the
    /// partition leads out of its space. False where nothing of it is drawn.
    bool beginOpen(UInt32 open);
    /// The nodes of the walk that follows. False where the node and what is below it is hidden:
    /// leaveNode() is not called then.
    bool enterNode(Node *node) { return _appearances.enter(node); }
    void leaveNode() { _appearances.leave(); }

    // --- told by functions, about the node in the partition's current space ---
    void addShape(Node const *node, DrawShape const *shape, Material const *material);
    /// What can be seen of a box in the current space.
    ViewPlanes::Sight sightOf(BoxVolume box) const;
    Matrix getToRoot() const;
    void pushSpace(Matrix const &toParent);
    void pushMaterial(Material const *material);
    void pushOverriding(Material const *material);
    void pushLight(LightSource const *light);
    void pop();

    void finish(bool headlight);

  private:
    /// A shape that was found for this view.
    struct Found
    {
        UInt32 shape;
        UInt32 state; ///< number in the table of states
        UInt32 space; ///< of this view's
        UInt32 light;
        UInt32 entry; ///< of the node that it was found from
        Real32 depth;
    };
    struct FoundLight
    {
        LightSource const *source;
        Matrix toEye;
        UInt32 outer;
        UInt32 entry;
    };
    /// A transparent item with what it is sorted by.
    struct Depth
    {
        Real32 depth;
        UInt32 entry;
        UInt32 place; ///< number of the item, or of what was found
        UInt32 state; ///< number in the table of states
        bool isFound;
    };
    /// An opaque item with what it is sorted by.
    struct Ranked
    {
        Int32 sortKey;
        UInt32 rank;
        UInt32 layout;
        DrawItem item;

        bool operator<(Ranked const &other) const;
    };
    /// Where the matrix of that number leads to the root, as far as no function that is called for
    /// the view has put another one in place: rounding adds up less than on the way to the eye.
    struct Place
    {
        UInt32 matrix = 0;
        Matrix toRoot;
    };
    struct Outer
    {
        SceneRecord::Scope scope;
        bool isSpace;
        Place place;
    };

    bool isAsBefore(bool headlight) const;
    void findSeen();
    void makeOpaque();
    void makeTransparent();
    void makeSpaces();
    void makeLights(bool headlight);
    LightSets::Light lightOf(FoundLight const &light) const;
    void useSpace(UInt32 space);
    std::vector<Node *> visitingOf(UInt32 entry) const;
    bool isSeen(UInt32 item) const { return (_seenItems[item / 64] >> item % 64 & 1) != 0; }
    std::vector<Ranked> rankOthers();
    Ranked ranked(DrawItem const &item, UInt32 state) const;
    DrawItem itemOf(SceneRecord::Item const &item, UInt32 state) const;
    DrawItem itemOf(Found const &found) const;
    bool isTransparent(UInt32 state) const;
    UInt32 rankOf(UInt32 state) const;
    void rankFound();
    Real32 depthOf(UInt32 item) const;
    Matrix spaceToEye(UInt32 space) const;

    SceneCache &_cache;
    RenderPartition &_partition;
    DrawList &_list;

    // The view.
    Matrix4d _viewing;
    ViewPlanes _worldPlanes;
    ViewPlanes _eyePlanes;
    bool _isMirrored = false;

    // What was found for it.
    std::vector<Found> _found;
    std::vector<DrawList::Space> _foundSpaces;
    std::vector<FoundLight> _foundLights;
    UInt32 _lastMatrix = 0; // number of the partition's matrix that the last space is of
    UInt32 _openEntry = 0;
    SceneRecord::Scope _scope;
    std::vector<Outer> _outer;
    Place _place;

    AppearanceTable const *_table = nullptr;
    AppearanceWalk _appearances;

    std::vector<UInt64> _seen;      // by place in the order, of what is drawn as it was recorded
    std::vector<UInt64> _seenItems; // all
    std::vector<Depth> _depths;
    std::vector<UInt32> _ranks; // of the states that only found shapes have, behind the cache's
    LightSets _lightSets;
    std::vector<UInt32> _spaceUse; // by space: number of the frame that used it last
    UInt32 _frame = 0;

    // Of the list as it is.
    bool _hasList = false;
    bool _listHeadlight = false;
    UInt64 _cacheNumber = 0;
    Matrix4d _listViewing;
    Matrix _listProjection;
    std::vector<Plane> _listSections;
};
} // namespace OSG
