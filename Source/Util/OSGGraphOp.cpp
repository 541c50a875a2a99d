#include "OSGGraphOp.h"

#include "OSGLog.h"
#include "OSGNodeWalker.h"

namespace OSG
{
GraphOp::GraphOp(char const *name)
    : _name(name != nullptr ? name : "")
{
}

GraphOp::GraphOp(GraphOp const &source)
    : MemoryObject(source)
    , _excludeList(source._excludeList)
    , _preserveList(source._preserveList)
    , _name(source._name)
{
}

GraphOp::~GraphOp() = default;

namespace
{
struct OperationVisitor
{
    GraphOp &operation;

    bool enter(Node *node) { return operation.traverseEnter(node) == ActionBase::Continue; }
    void leave(Node *node) { operation.traverseLeave(node, ActionBase::Continue); }
};
} // namespace

bool GraphOp::traverse(Node *root)
{
    struct Walk
    {
        Node const *&current;
        Node const *const before;
        ~Walk() { current = before; }
    } const walk{_walkedRoot, _walkedRoot};
    _walkedRoot = root;
    OperationVisitor visitor{*this};
    walk_children(root, visitor);
    return root != nullptr;
}

GraphOp::ResultE GraphOp::traverseEnter(Node *) { return ActionBase::Continue; }
GraphOp::ResultE GraphOp::traverseLeave(Node *, ResultE result) { return result; }

void GraphOp::warnUnused(ParamSet const &params, char const *classname, char const *ending)
{
    std::string const unused = params.getUnusedParams();
    if(!unused.empty())
        OSG_LOG_WARNING("%s doesn't have parameters '%s'%s", classname, unused.c_str(), ending);
}
} // namespace OSG
