#include "Selector.h"

#include "OSGFastSelectionFunctor.h"
#include "OSGSimpleSelectionFunctor.h"
#include "Stopwatch.h"

namespace Tool
{
namespace
{
using ActionPtr = OSG::UnrecordedRefPtr<OSG::SelectionAction>;

ActionPtr new_action(bool usesIndex)
{
    ActionPtr action(OSG::SelectionAction::create());
    action->setUsePrimitiveIndex(usesIndex);
    return action;
}
} // namespace

// A functor registers its handlers with its action, so each kind of functor has an action of its
// own.
struct Selector::Functors
{
    explicit Functors(bool usesIndex)
        : exactAction(new_action(usesIndex))
        , fastAction(new_action(usesIndex))
    {
    }

    ActionPtr exactAction;
    ActionPtr fastAction;
    OSG::SimpleSelectionFunctor exact{exactAction, OSG::SelectionFunctor::SelectTriangles,
                                      OSG::SelectionFunctor::NearPlane};
    OSG::FastSelectionFunctor fast{fastAction};
};

Selector::Selector(OSG::Node *root, bool usesIndex)
    : _root(root)
    , _bounds(OSG::bounds_of(root))
    , _functors(std::make_unique<Functors>(usesIndex))
{
}

Selector::~Selector() = default;

Selection Selector::select(SelectionSettings const &settings, VolumeChoice const &choice)
{
    Selection result;
    result.eye = choice.eye();
    std::optional<OSG::Frustum> const volume = choice.inScene(_bounds);
    if(!volume)
        return result;
    OSG::SelectionFunctor &functor =
        settings.fast ? static_cast<OSG::SelectionFunctor &>(_functors->fast) : _functors->exact;
    OSG::SelectionAction &action = *functor.getAction();
    Stopwatch const watch;
    functor.setSelectionType(settings.kinds);
    functor.setPlaneType(settings.plane);
    action.reinitialize();
    action.pushFrustum(*volume);
    action.apply(_root);
    result.hits = &functor.hits(settings.hits);
    result.seconds = watch.seconds();
    result.isIndexed = action.getIndexedGeometries() != 0;
    return result;
}
} // namespace Tool
