#include "OSGGrpMergeGraphOp.h"

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

void take_children_over(ChildEdits &edits, Node const *group)
{
    for(Node *child : *group->getMFChildren())
    {
        NodeCore const *const core = child->getCore();
        if(core == nullptr || (is_plain_group(core) && child->getNChildren() == 0))
            continue;
        edits.add(child);
    }
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
    NodeCore *const core = node->getCore();
    if(!isInExcludeList(node) && !isInPreserveList(node) && core != nullptr &&
       !children_have_places(core))
        handleChildren(node, core);
    return ActionBase::Continue;
}

bool GrpMergeGraphOp::isDissolved(Node const *child) const
{
    return !isInExcludeList(child) && !isInPreserveList(child) && child->getCore() != nullptr &&
           is_plain_group(child->getCore());
}

void GrpMergeGraphOp::handleChildren(Node *node, NodeCore *)
{
    ChildEdits edits;
    for(Node *child : *node->getMFChildren())
    {
        if(!isDissolved(child))
            continue;
        edits.sub(child);
        take_children_over(edits, child);
    }
    edits.applyTo(node);
}
} // namespace OSG
