#include "OSGPickSelector.h"

#include "OSGFastSelectionFunctor.h"
#include "OSGGeometry.h"
#include "OSGRegionFunctor.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"

namespace OSG
{
namespace
{
using ActionPtr = UnrecordedRefPtr<SelectionAction>;

ActionPtr new_action(bool usesIndex)
{
    ActionPtr action(SelectionAction::create());
    action->setUsePrimitiveIndex(usesIndex);
    return action;
}

/// Judges a node once for all kinds of its hits.
class EnclosedFilter
{
  public:
    explicit EnclosedFilter(PickRegion const &region)
        : _region(&region)
    {
    }

    bool operator()(SelectionAction const &action)
    {
        Node *const node = action.getActNode();
        if(node == _node && action.getVisitSubTreeNodes() == _visiting)
            return _isEnclosed;
        _node = node;
        _visiting = action.getVisitSubTreeNodes();
        auto const *const geometry = dynamic_cast<Geometry const *>(node->getCore());
        _isEnclosed = geometry != nullptr && is_enclosed(*_region, *geometry, action.topMatrix());
        return _isEnclosed;
    }

  private:
    PickRegion const *_region;
    Node *_node = nullptr;
    std::vector<Node *> _visiting;
    bool _isEnclosed = false;
};
} // namespace

// A functor registers its handlers with its action, so each kind of functor has an action of its
// own.
struct PickSelector::Functors
{
    explicit Functors(bool usesIndex)
        : exactAction(new_action(usesIndex))
        , fastAction(new_action(usesIndex))
        , regionAction(new_action(false))
    {
    }

    SelectionFunctor &of(PickRegion const &searched, bool isFast)
    {
        if(!searched.isSolid())
        {
            region.setRegion(&searched, !isFast);
            return region;
        }
        return isFast ? static_cast<SelectionFunctor &>(fast) : exact;
    }

    ActionPtr exactAction;
    ActionPtr fastAction;
    ActionPtr regionAction;
    SimpleSelectionFunctor exact{exactAction, SelectionFunctor::SelectTriangles,
                                 SelectionFunctor::NearPlane};
    FastSelectionFunctor fast{fastAction};
    RegionFunctor region{regionAction};
};

PickSelector::PickSelector(Node *root, bool usesIndex)
    : _root(root)
    , _functors(std::make_unique<Functors>(usesIndex))
{
}

PickSelector::~PickSelector() = default;

std::deque<SelectionFunctor::HitT> const &PickSelector::select(PickRegion const &region,
                                                               PickSettings const &settings)
{
    SelectionFunctor &functor = _functors->of(region, settings.fast);
    SelectionAction &action = *functor.getAction();
    functor.setSelectionType(settings.kinds);
    functor.setPlaneType(settings.plane);
    functor.setFilter(settings.enclosed ? EnclosedFilter(region) : SelectionFunctor::Filter());
    action.reinitialize();
    action.pushFrustum(region.getSolid());
    action.apply(_root);
    functor.setFilter({}); // it refers to the region
    _wasIndexed = action.getIndexedGeometries() != 0;
    return functor.hits(settings.hits);
}
} // namespace OSG
