#include "OSGSimplifyRenderEngineGraphOp.h"

#include "OSGChildEdits.h"
#include "OSGChosenChildren.h"
#include "OSGGeometry.h"
#include "OSGGroup.h"
#include "OSGMaterialResolution.h"
#include "OSGMultiSwitch.h"
#include "OSGName.h"
#include "OSGSwitch.h"
#include "OSGVisitSubTree.h"

namespace OSG
{
namespace
{
constexpr char const *OperationName = "SimplifyRenderEngine";

bool has_primitives(Geometry const &geometry)
{
    GeoIntegralProperty const *const types = geometry.getTypes();
    GeoIntegralProperty const *const lengths = geometry.getLengths();
    return types != nullptr && lengths != nullptr && types->size() > 0 &&
           types->size() == lengths->size();
}

bool has_place(NodeCore const *coreAbove)
{
    return dynamic_cast<Switch const *>(coreAbove) != nullptr ||
           dynamic_cast<MultiSwitch const *>(coreAbove) != nullptr;
}

bool is_empty_group(Node const *node)
{
    return node->getNChildren() == 0 && dynamic_cast<Group *>(node->getCore()) != nullptr &&
           dynamic_cast<VisitSubTree *>(node->getCore()) == nullptr;
}
} // namespace

SimplifyRenderEngineGraphOp::SimplifyRenderEngineGraphOp(char const *name)
    : GraphOp(name)
{
}

SimplifyRenderEngineGraphOp::SimplifyRenderEngineGraphOp(
    SimplifyRenderEngineGraphOp const &source) = default;
SimplifyRenderEngineGraphOp::~SimplifyRenderEngineGraphOp() = default;

TransitPtr<SimplifyRenderEngineGraphOp> SimplifyRenderEngineGraphOp::create()
{
    return TransitPtr<SimplifyRenderEngineGraphOp>(new SimplifyRenderEngineGraphOp(OperationName));
}

TransitPtr<GraphOp> SimplifyRenderEngineGraphOp::clone() { return create(); }

void SimplifyRenderEngineGraphOp::setParams(std::string params)
{
    warnUnused(ParamSet(params), getClassname(), "\n.");
}

std::string SimplifyRenderEngineGraphOp::usage()
{
    return "SimplifyRenderEngine: Handles switch and multiswitch cores and name attachments.\n"
           "Params: name (type, default)\n";
}

GraphOp::ResultE SimplifyRenderEngineGraphOp::traverseEnter(Node *node)
{
    if(isInExcludeList(node))
        return ActionBase::Skip;
    if(OSG::getName(node) != nullptr)
        setName(node, nullptr);
    return ActionBase::Continue;
}

GraphOp::ResultE SimplifyRenderEngineGraphOp::traverseLeave(Node *node, ResultE)
{
    if(isInExcludeList(node))
        return ActionBase::Skip;
    NodeCore const *const core = node->getCore();
    ChildEdits edits;
    for(Node *child : *node->getMFChildren())
    {
        if(!isInExcludeList(child) && !isInPreserveList(child))
            handleChild(child, core, edits);
    }
    edits.applyTo(node);
    return ActionBase::Continue;
}

void SimplifyRenderEngineGraphOp::handleChild(Node *child, NodeCore const *coreAbove,
                                              ChildEdits &edits)
{
    NodeCore *const core = child->getCore();
    if(auto const *const choice = dynamic_cast<Switch *>(core))
    {
        edits.sub(child);
        edits.add(take_chosen(*child, *choice));
        return;
    }
    if(auto const *const choices = dynamic_cast<MultiSwitch *>(core))
    {
        edits.sub(child);
        edits.add(take_chosen(*child, *choices));
        return;
    }
    if(resolve_material(*child))
        return;
    auto const *const geometry = dynamic_cast<Geometry *>(core);
    bool const goes = geometry != nullptr ? !has_primitives(*geometry)
                                          : is_empty_group(child) && !has_place(coreAbove);
    if(goes)
        edits.sub(child);
}
} // namespace OSG
