#include "OSGPickSelector.h"

#include "OSGAppearanceTable.h"
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

/// Judges a node once for all kinds of its hits: whether it is drawn, and whether it is enclosed.
class PlaceFilter
{
  public:
    PlaceFilter(PickRegion const &region, PickSettings const &settings, Node const *root)
        : _region(&region)
        , _settings(&settings)
        , _root(root)
    {
    }

    bool operator()(SelectionAction const &action)
    {
        Node *const node = action.getActNode();
        if(node != _node || action.getVisitSubTreeNodes() != _visiting)
        {
            _node = node;
            _visiting = action.getVisitSubTreeNodes();
            _passes = isDrawn() && isEnclosed(action.topMatrix());
        }
        return _passes;
    }

  private:
    bool isDrawn() const
    {
        AppearanceTable const *const table = _settings->appearances;
        return table == nullptr || table->isDrawn(_node, _visiting, _root);
    }
    bool isEnclosed(Matrix const &toRoot) const
    {
        if(!_settings->enclosed)
            return true;
        auto const *const geometry = dynamic_cast<Geometry const *>(_node->getCore());
        return geometry != nullptr && is_enclosed(*_region, *geometry, toRoot);
    }

    PickRegion const *_region;
    PickSettings const *_settings;
    Node const *_root;
    Node *_node = nullptr;
    std::vector<Node *> _visiting;
    bool _passes = false;
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
    if(settings.enclosed || settings.appearances != nullptr)
        functor.setFilter(PlaceFilter(region, settings, _root));
    action.reinitialize();
    action.pushFrustum(region.getSolid());
    action.apply(_root);
    functor.setFilter({}); // it refers to the region and the settings
    _wasIndexed = action.getIndexedGeometries() != 0;
    return functor.hits(settings.hits);
}
} // namespace OSG
