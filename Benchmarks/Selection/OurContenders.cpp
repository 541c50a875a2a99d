#include <algorithm>
#include <map>

#include "Contenders.h"
#include "OSGFastSelectionFunctor.h"
#include "OSGGeometry.h"
#include "OSGIntersectAction.h"
#include "OSGNodeWalker.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"

namespace OSG::Bench
{
namespace
{
/// Numbers the nodes that show a geometry in the order of the walk.
struct Numbering
{
    std::map<Node const *, UInt32> numbers;

    bool enter(Node *node)
    {
        if(dynamic_cast<Geometry const *>(node->getCore()) != nullptr)
            numbers.emplace(node, static_cast<UInt32>(numbers.size()));
        return true;
    }
    void leave(Node *) {}
};

Numbering const &numbering(SceneName name)
{
    static std::map<SceneName, Numbering> all;
    Numbering &result = all[name];
    if(result.numbers.empty())
        walk_children(scene(name), result);
    return result;
}

Real64 read(std::deque<SelectionFunctor::HitT> const &hits)
{
    Real64 sum = 0;
    for(SelectionFunctor::HitT const &hit : hits)
        sum += hit.distance + hit.point[0] + hit.normal[0] + hit.index + hit.matrix[3][0] +
               static_cast<Real64>(hit.visitSubTreeNodes.size());
    return sum;
}

template <class Functor>
class OurVolumes final : public VolumeContender
{
  public:
    template <class... Settings>
    OurVolumes(SceneName name, VolumeQuery query, bool useIndex, Settings... settings)
        : _name(name)
        , _queries(volumes(name, query))
        , _action(SelectionAction::create())
        , _functor(_action, settings...)
    {
        _action->setUsePrimitiveIndex(useIndex);
    }

    Real64 ask(std::size_t query) override
    {
        _action->reinitialize();
        _action->pushFrustum(_queries[query]);
        _action->apply(scene(_name));
        return read(_functor.hits(SelectionFunctor::FrontHits)) +
               read(_functor.hits(SelectionFunctor::BackHits));
    }

    std::vector<UInt32> shapes() override
    {
        std::vector<UInt32> result;
        for(auto const &hit : _functor.hits(SelectionFunctor::FrontHits))
            result.push_back(numbering(_name).numbers.at(hit.node));
        std::sort(result.begin(), result.end());
        return result;
    }

  private:
    SceneName _name;
    std::vector<Frustum> const &_queries;
    UnrecordedRefPtr<SelectionAction> _action;
    Functor _functor;
};

class OurRays final : public RayContender
{
  public:
    OurRays(SceneName name, RayQuery query, bool useIndex)
        : _root(scene(name))
        , _queries(rays(name, query))
        , _length(ray_length(name))
        , _action(IntersectAction::create())
    {
        _action->setUsePrimitiveIndex(useIndex);
    }

    Real64 ask(std::size_t query) override
    {
        _action->setLine(_queries[query], _length);
        _action->apply(_root);
        return _action->didHit() ? _action->getHitDistance() : -1;
    }

  private:
    Node *_root;
    std::vector<Line> const &_queries;
    Real32 _length;
    UnrecordedRefPtr<IntersectAction> _action;
};
} // namespace

VolumeContenderPtr our_volumes(SceneName name, VolumeQuery query, Mode mode, bool useIndex)
{
    if(mode == Mode::Fast)
        return std::make_unique<OurVolumes<FastSelectionFunctor>>(name, query, useIndex);
    return std::make_unique<OurVolumes<SimpleSelectionFunctor>>(
        name, query, useIndex, SelectionFunctor::SelectTriangles, SelectionFunctor::NearPlane);
}

RayContenderPtr our_rays(SceneName name, RayQuery query, bool useIndex)
{
    return std::make_unique<OurRays>(name, query, useIndex);
}
} // namespace OSG::Bench
