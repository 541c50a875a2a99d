#include "OSGMrgGraphOp.h"

#include "OSGBakedGeometry.h"
#include "OSGBillboard.h"
#include "OSGChildEdits.h"
#include "OSGComponentTransform.h"
#include "OSGDistanceLOD.h"
#include "OSGGroup.h"
#include "OSGLight.h"
#include "OSGLog.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGSwitch.h"
#include "OSGTransform.h"
#include "OSGTraverse.h"

namespace OSG
{
namespace
{
constexpr char const *OperationName = "Mrg";

template <class Core>
bool derives_from(Node const *node)
{
    NodeCore const *const core = node->getCore();
    return core != nullptr && core->getType().isDerivedFrom(Core::getClassType());
}

UInt32 count_nodes(Node *root)
{
    UInt32 count = 0;
    traverse(root,
             [&count](Node *)
             {
                 ++count;
                 return ActionBase::Continue;
             });
    return count;
}

/// Sets the exclude list of the caller aside for as long as it lives.
class ListSetAside
{
  public:
    explicit ListSetAside(NodeSet &list)
        : _list(list)
    {
        _list.swap(_aside);
    }
    ListSetAside(ListSetAside const &) = delete;
    ListSetAside &operator=(ListSetAside const &) = delete;
    ~ListSetAside() { _list.swap(_aside); }

  private:
    NodeSet &_list;
    NodeSet _aside;
};
} // namespace

// An allocator that clears its blocks would give the first flag this value as well.
MrgGraphOp::MrgGraphOp(char const *name)
    : GraphOp(name)
    , _colorIsVector(false)
    , _secondaryColorIsVector(false)
    , _texCoord0IsVector(false)
    , _texCoord1IsVector(false)
    , _texCoord2IsVector(false)
    , _texCoord3IsVector(false)
{
}

MrgGraphOp::MrgGraphOp(MrgGraphOp const &source) = default;
MrgGraphOp::~MrgGraphOp() = default;

TransitPtr<MrgGraphOp> MrgGraphOp::create()
{
    return TransitPtr<MrgGraphOp>(new MrgGraphOp(OperationName));
}

TransitPtr<GraphOp> MrgGraphOp::clone() { return create(); }

void MrgGraphOp::setParams(std::string params)
{
    ParamSet set(params);
    set("color_is_vector", _colorIsVector);
    set("secondary_color_is_vector", _secondaryColorIsVector);
    set("texcoord_is_vector", _texCoord0IsVector);
    set("texcoord0_is_vector", _texCoord0IsVector);
    set("texcoord1_is_vector", _texCoord1IsVector);
    set("texcoord2_is_vector", _texCoord2IsVector);
    set("texcoord3_is_vector", _texCoord3IsVector);
    warnUnused(set, getClassname());
}

std::string MrgGraphOp::usage()
{
    return "Merge: merge all geometries in a subtree\n"
           "  Tries to merge all Geometries in a subtree into the minimal number.\n"
           "  of Nodes. Flattens Transformations and transforms indices on the way.\n"
           "Params: name (type, default)\n"
           " (The following params are useful for transforming tangent space vectors.)\n"
           "  color_is_vector  (bool, false): transform color as if it were a normal\n"
           "  secondary_color_is_vector  (bool, false): transform secondary color as if it were a "
           "normal\n"
           "  texcoord_is_vector  (bool, false): transform texcoord0 as if it were a normal\n"
           "  texcoord0_is_vector  (bool, false): transform texcoord0 as if it were a normal\n"
           "  texcoord1_is_vector  (bool, false): transform texcoord1 as if it were a normal\n"
           "  texcoord2_is_vector  (bool, false): transform texcoord2 as if it were a normal\n"
           "  texcoord3_is_vector  (bool, false): transform texcoord3 as if it were a normal\n";
}

// --- passes ---

bool MrgGraphOp::traverse(Node *root)
{
    UInt32 count = count_nodes(root);
    OSG_LOG_PROGRESS("MrgGraphOp::traverse: Number of nodes before merge: %u\n", count);
    UInt32 last = 0;
    bool wentThrough = true;
    do
    {
        last = count;
        wentThrough = mergeOnce(root);
        if(wentThrough)
            count = count_nodes(root);
    } while(wentThrough && count < last);
    OSG_LOG_PROGRESS("MrgGraphOp::traverse: Number of nodes after merge: %u\n", last);
    return wentThrough;
}

bool MrgGraphOp::mergeOnce(Node *root)
{
    ListSetAside const caller(_excludeList);
    makeExcludeList(root);
    return GraphOp::traverse(root);
}

void MrgGraphOp::makeExcludeList(Node *root)
{
    OSG::traverse(root, &MrgGraphOp::excludeListEnter,
                  [this](Node *node, ResultE result) { return excludeListLeave(node, result); });
}

GraphOp::ResultE MrgGraphOp::excludeListEnter(Node *) { return ActionBase::Continue; }

GraphOp::ResultE MrgGraphOp::excludeListLeave(Node *node, ResultE result)
{
    if(auto const *const light = dynamic_cast<Light *>(node->getCore()))
    {
        addToExcludeList(node);
        addToExcludeList(light->getBeacon());
    }
    return result;
}

GraphOp::ResultE MrgGraphOp::traverseEnter(Node *node)
{
    NodeCore const *const core = node->getCore();
    if(dynamic_cast<Switch const *>(core) != nullptr ||
       dynamic_cast<MultiSwitch const *>(core) != nullptr ||
       dynamic_cast<DistanceLOD const *>(core) != nullptr)
        return ActionBase::Skip;
    return isLeaf(node) ? ActionBase::Skip : ActionBase::Continue;
}

GraphOp::ResultE MrgGraphOp::traverseLeave(Node *node, ResultE result)
{
    processGroups(node);
    processTransformations(node);
    return result;
}

// --- children of a node ---

bool MrgGraphOp::isLeaf(Node const *node) { return node->getMFChildren()->empty(); }

bool MrgGraphOp::isGroup(Node const *node)
{
    return derives_from<Group>(node) && !derives_from<Transform>(node) &&
           !derives_from<ComponentTransform>(node) && !derives_from<Switch>(node) &&
           !derives_from<MultiSwitch>(node) && !derives_from<MaterialGroup>(node) &&
           !derives_from<DistanceLOD>(node) && !derives_from<Billboard>(node);
}

bool MrgGraphOp::isFreeGeometryLeaf(Node const *node) const
{
    return !isInExcludeList(node) && derives_from<Geometry>(node) && isLeaf(node);
}

void MrgGraphOp::processGroups(Node *node)
{
    ChildEdits edits;
    for(Node *child : *node->getMFChildren())
    {
        if(isGroup(child))
        {
            if(isInExcludeList(child))
                continue;
            edits.addChildrenOf(child);
            edits.sub(child);
        }
        else if(derives_from<MaterialGroup>(child))
            processMaterialGroup(child, edits);
    }
    edits.applyTo(node);
}

void MrgGraphOp::processMaterialGroup(Node *group, ChildEdits &edits) const
{
    Material *const material = static_cast<MaterialGroup *>(group->getCore())->getMaterial();
    bool all = true;
    for(Node *grandchild : *group->getMFChildren())
    {
        if(!isFreeGeometryLeaf(grandchild))
        {
            all = false;
            continue;
        }
        static_cast<Geometry *>(grandchild->getCore())->setMaterial(material);
        edits.add(grandchild);
    }
    if(all)
        edits.sub(group);
}

void MrgGraphOp::processTransformations(Node *node)
{
    ChildEdits edits;
    for(Node *child : *node->getMFChildren())
    {
        if(derives_from<Transform>(child) && !isInExcludeList(child))
            processTransformation(child, edits);
    }
    edits.applyTo(node);
}

void MrgGraphOp::processTransformation(Node *transform, ChildEdits &edits) const
{
    Matrix const &matrix = static_cast<Transform *>(transform->getCore())->getMatrix();
    VectorArrays const vectors{
        _colorIsVector,
        _secondaryColorIsVector,
        {_texCoord0IsVector, _texCoord1IsVector, _texCoord2IsVector, _texCoord3IsVector}};
    bool all = true;
    for(Node *grandchild : *transform->getMFChildren())
    {
        if(!isFreeGeometryLeaf(grandchild))
        {
            all = false;
            continue;
        }
        auto const &geometry = static_cast<Geometry const &>(*grandchild->getCore());
        UnrecordedRefPtr<Geometry> const baked(baked_geometry(geometry, matrix, vectors));
        grandchild->setCore(baked);
        edits.add(grandchild);
    }
    if(all)
        edits.sub(transform);
}
} // namespace OSG
