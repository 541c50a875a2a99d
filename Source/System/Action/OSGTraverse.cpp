#include "OSGTraverse.h"

#include "OSGNodeWalker.h"

namespace OSG
{
namespace
{
struct FunctorVisitor
{
    TraverseEnterFunctor const &enterFunctor;
    TraverseLeaveFunctor const *leaveFunctor;

    bool enter(Node *node) { return enterFunctor(node) == ActionBase::Continue; }
    void leave(Node *node)
    {
        if(leaveFunctor != nullptr)
            (*leaveFunctor)(node, ActionBase::Continue);
    }
};
} // namespace

ActionBase::ResultE traverse(Node *root, TraverseEnterFunctor const &enter)
{
    FunctorVisitor visitor{enter, nullptr};
    walk_children(root, visitor);
    return ActionBase::Continue;
}

ActionBase::ResultE traverse(Node *root, TraverseEnterFunctor const &enter,
                             TraverseLeaveFunctor const &leave)
{
    FunctorVisitor visitor{enter, &leave};
    walk_children(root, visitor);
    return ActionBase::Continue;
}
} // namespace OSG
