#include "OSGGrpMergeGraphOp.h"

#include <algorithm>
#include <vector>

#include "OSGChildEdits.h"
#include "OSGDistanceLOD.h"
#include "OSGGroup.h"
#include "OSGMultiCore.h"
#include "OSGMultiSwitch.h"
#include "OSGScreenLOD.h"
#include "OSGSwitch.h"

namespace OSG
{
namespace
{
constexpr char const *OperationName = "GrpMerge";

bool is_plain_group(NodeCore const *core) { return core->getType() == Group::getClassType(); }

bool children_have_places(NodeCore const *core)
{
    FieldContainerType const &type = core->getType();
    return type.isDerivedFrom(DistanceLOD::getClassType()) ||
           type.isDerivedFrom(ScreenLOD::getClassType()) ||
           type.isDerivedFrom(Switch::getClassType()) ||
           type.isDerivedFrom(MultiSwitch::getClassType()) ||
           type.isDerivedFrom(MultiCore::getClassType());
}

bool is_taken_over(Node const *child)
{
    NodeCore const *const core = child->getCore();
    return core != nullptr && !(is_plain_group(core) && child->getNChildren() == 0);
}
} // namespace

GrpMergeGraphOp::GrpMergeGraphOp(char const *name)
    : GraphOp(name)
{
}

GrpMergeGraphOp::GrpMergeGraphOp(GrpMergeGraphOp const &source) = default;
GrpMergeGraphOp::~GrpMergeGraphOp() = default;

TransitPtr<GrpMergeGraphOp> GrpMergeGraphOp::create()
{
    return TransitPtr<GrpMergeGraphOp>(new GrpMergeGraphOp(OperationName));
}

TransitPtr<GraphOp> GrpMergeGraphOp::clone() { return create(); }

void GrpMergeGraphOp::setParams(std::string params)
{
    warnUnused(ParamSet(params), getClassname());
}

std::string GrpMergeGraphOp::usage() { return "GrpMerge: Combine adjacent Groups into one.\n"; }

GraphOp::ResultE GrpMergeGraphOp::traverseEnter(Node *node)
{
    return isInExcludeList(node) ? ActionBase::Skip : ActionBase::Continue;
}

GraphOp::ResultE GrpMergeGraphOp::traverseLeave(Node *node, ResultE)
{
    if(mayDissolveChildren(node) && !isDissolvedLater(node))
        handleChildren(node, node->getCore());
    return ActionBase::Continue;
}

bool GrpMergeGraphOp::mayDissolveChildren(Node const *node) const
{
    return !isInExcludeList(node) && !isInPreserveList(node) && node->getCore() != nullptr &&
           !children_have_places(node->getCore());
}

bool GrpMergeGraphOp::isDissolved(Node const *child) const
{
    return !isInExcludeList(child) && !isInPreserveList(child) && child->getCore() != nullptr &&
           is_plain_group(child->getCore());
}

// A group that its parent will dissolve keeps its children for now; the parent takes them up with
// the group. Otherwise a node would move once for each level that dissolves.
bool GrpMergeGraphOp::isDissolvedLater(Node const *node) const
{
    return getWalkedRoot() != nullptr && node != getWalkedRoot() && isDissolved(node) &&
           mayDissolveChildren(node->getParent());
}

// Goes through the groups from above with a stack, the children of a group before those of the
// groups in it. This is the order that dissolving level by level would give.
void GrpMergeGraphOp::handleChildren(Node *node, NodeCore *)
{
    using Nodes = std::vector<Node *, MemAllocator<Node *>>;
    bool const isWalk = getWalkedRoot() != nullptr;
    ChildEdits edits;
    Nodes groups;
    for(Node *child : *node->getMFChildren())
    {
        if(isDissolved(child))
            groups.push_back(child);
    }
    std::reverse(groups.begin(), groups.end());
    while(!groups.empty())
    {
        Node *const group = groups.back();
        groups.pop_back();
        edits.sub(group);
        auto const inner = static_cast<Nodes::difference_type>(groups.size());
        for(Node *child : *group->getMFChildren())
        {
            if(isWalk && isDissolved(child))
                groups.push_back(child);
            else if(is_taken_over(child))
                edits.add(child);
        }
        std::reverse(groups.begin() + inner, groups.end());
    }
    edits.applyTo(node);
}
} // namespace OSG
