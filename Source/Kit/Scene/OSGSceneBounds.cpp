#include "OSGSceneBounds.h"

#include "OSGFinite.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNodeWalker.h"
#include "OSGPlaceMatrix.h"

namespace OSG
{
namespace
{

bool has_finite_corners(BoxVolume const &box)
{
    return !box.isInfinite() && is_finite(box.getMin()) && is_finite(box.getMax());
}

// A core that shows another tree has that tree's volume, which is walked in its place.
bool makes_infinite(NodeCore &core)
{
    if(core.getOtherTree() != nullptr || dynamic_cast<Geometry *>(&core) != nullptr)
        return false;
    BoxVolume box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    core.adjustVolume(box);
    return box.isInfinite();
}

/// Extends a box by what a geometry delivers.
class DeliveredExtent
{
  public:
    DeliveredExtent(BoxVolume &box, Matrix const &toRoot)
        : _box(box)
        , _toRoot(toRoot)
    {
    }

    void add(Geometry const &geometry)
    {
        addParts<3>(geometry.beginTriangles(), geometry.endTriangles());
        addParts<2>(geometry.beginLines(), geometry.endLines());
        PrimitiveIterator const end = geometry.endPrimitives();
        for(PrimitiveIterator it = geometry.beginPrimitives(); it != end; ++it)
            addPoints(it);
    }

  private:
    template <int Corners, class Iterator>
    void addParts(Iterator it, Iterator const &end)
    {
        for(; it != end; ++it)
        {
            Pnt3f corner[Corners];
            for(int i = 0; i < Corners; ++i)
                corner[i] = _toRoot * it.getPosition(i);
            addCorners(corner);
        }
    }

    void addPoints(PrimitiveIterator const &it)
    {
        UInt32 const vertices = it.getType() == PointsPrimitive ? it.getAvailable() : 0;
        for(UInt32 i = 0; i < vertices; ++i)
        {
            auto const vertex = static_cast<Int32>(i);
            if(it.hasPosition(vertex))
                addCorners({_toRoot * it.getPosition(vertex)});
        }
    }

    // A part with a corner that is not finite is not drawn.
    template <std::size_t Count>
    void addCorners(Pnt3f const (&corners)[Count])
    {
        for(Pnt3f const &corner : corners)
            if(!is_finite(corner))
                return;
        for(Pnt3f const &corner : corners)
            _box.extendBy(corner);
    }

    BoxVolume &_box;
    Matrix const &_toRoot;
};

/// Walks a scene whose root has no finite box.
class FinitePart
{
  public:
    explicit FinitePart(SceneBounds &bounds)
        : _bounds(bounds)
    {
    }

    bool enter(Node *node)
    {
        _current = node;
        Matrix toRoot = _toRoot.empty() ? Matrix() : _toRoot.back();
        if(NodeCore *const core = node->getCore())
        {
            accumulate_place(*core, toRoot);
            if(makes_infinite(*core))
            {
                addOrigin(toRoot);
                return false;
            }
            if(auto const *geometry = dynamic_cast<Geometry *>(core))
                DeliveredExtent(_bounds.box, toRoot).add(*geometry);
        }
        _toRoot.push_back(toRoot);
        return true;
    }
    bool takeAdded(std::vector<Node *> &nodes) { return children_and_other_tree(_current, nodes); }
    void leave(Node *) { _toRoot.pop_back(); }

  private:
    void addOrigin(Matrix const &toRoot)
    {
        Pnt3f const origin = toRoot * Pnt3f(0, 0, 0);
        if(is_finite(origin))
            _bounds.infiniteOrigins.push_back(origin);
    }

    SceneBounds &_bounds;
    Node *_current = nullptr;
    std::vector<Matrix> _toRoot; // of the open nodes, innermost last
};
} // namespace

SceneBounds bounds_of(Node *root)
{
    SceneBounds bounds;
    if(root == nullptr)
        return bounds;
    root->updateVolume();
    BoxVolume const &volume = root->getVolume();
    if(volume.isEmpty() || has_finite_corners(volume))
    {
        bounds.box = volume;
        return bounds;
    }
    bounds.holdsInfinite = volume.isInfinite();
    FinitePart part(bounds);
    NodeWalker().walk(root, part);
    return bounds;
}
} // namespace OSG
