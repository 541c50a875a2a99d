#include "OSGVisitSubTree.h"

#include "OSGIntersectAction.h"
#include "OSGRenderHandlers.h"

namespace OSG
{
VisitSubTree::~VisitSubTree() { watch(nullptr); }

void VisitSubTree::watch(Node *root)
{
    if(root == _watched)
        return;
    if(_watched != nullptr)
        Node::subViewer(_watched, this);
    _watched = nullptr;
    if(root != nullptr)
        Node::addViewer(root, this);
    _watched = root;
}

void VisitSubTree::adjustVolume(Volume &volume)
{
    volume.setEmpty();
    if(getSubTreeRoot() != nullptr)
        volume.extendBy(getSubTreeRoot()->getVolume());
}

void VisitSubTree::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    if((whichField & SubTreeRootFieldMask) != 0)
    {
        watch(getSubTreeRoot());
        invalidateVolume();
    }
    VisitSubTreeBase::changed(whichField, origin, details);
}

namespace
{
ActionBase::ResultE intersect_other_tree(NodeCore *core, Action *action)
{
    action->addNode(static_cast<VisitSubTree *>(core)->getSubTreeRoot());
    return ActionBase::Continue;
}
} // namespace

void VisitSubTree::initMethod(TypeBase::InitPhase phase)
{
    VisitSubTreeBase::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    IntersectAction::registerEnterDefault(getClassType(), &intersect_other_tree,
                                          Action::HandlerPromise::KeepsScene);
    register_render_choice(
        getClassType(),
        [](NodeCore &core, RenderAction &action)
        { action.addNode(static_cast<VisitSubTree &>(core).getSubTreeRoot()); },
        Action::HandlerPromise::Repeats);
}
} // namespace OSG
