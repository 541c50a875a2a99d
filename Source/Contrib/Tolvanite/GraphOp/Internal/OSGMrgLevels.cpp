#include "OSGMrgLevels.h"

#include <utility>

#include "OSGBillboard.h"
#include "OSGChildEdits.h"
#include "OSGCoreKind.h"
#include "OSGDistanceLOD.h"
#include "OSGGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGSwitch.h"
#include "OSGTransform.h"

namespace OSG
{
MrgLevels::MrgLevels(NodeSet const &excluded, VectorArrays const &vectors)
    : _excluded(excluded)
    , _vectors(vectors)
{
}

void MrgLevels::begin()
{
    _noted.clear();
    _rising.clear();
}

// --- kinds of nodes ---

bool MrgLevels::isLeft(Node const *node)
{
    return core_derives_from<Switch>(node) || core_derives_from<MultiSwitch>(node) ||
           core_derives_from<DistanceLOD>(node);
}

bool MrgLevels::isLevel(Node const *node) const
{
    if(!core_derives_from<Group>(node))
        return false;
    // Of a material group the exclude list says nothing.
    if(core_derives_from<MaterialGroup>(node))
        return true;
    return !core_derives_from<Transform>(node) && !isLeft(node) &&
           !core_derives_from<Billboard>(node) && !_excluded.contains(node);
}

bool MrgLevels::isFreeGeometryLeaf(Node const *node) const
{
    return node->getNChildren() == 0 && core_derives_from<Geometry>(node) &&
           !_excluded.contains(node);
}

// --- groups and material groups ---

void MrgLevels::note(Node *level)
{
    Nodes kept;
    Held const below = goThrough(level, kept);
    Nodes baked;
    bakeTransforms(level, kept, baked);
    Held held;
    for(Node *node : kept)
    {
        if(node != nullptr)
            _rising.append(held.nodes, node, isFreeGeometryLeaf(node));
    }
    _rising.join(held.nodes, below.nodes);
    for(Node *node : baked)
        _rising.append(held.nodes, node, true);
    held.levels = below.levels;
    _noted[level] = held;
}

void MrgLevels::process(Node *node)
{
    Nodes kept;
    Held const held = goThrough(node, kept);
    take(_rising.finish(held.nodes), node);
    drop(held.levels);
    if(_noted.empty())
        _rising.clear();
    Nodes children(node->getMFChildren()->begin(), node->getMFChildren()->end());
    Nodes baked;
    bakeTransforms(node, children, baked);
}

// What comes up from the levels among the children; `kept` receives the children that stay.
MrgLevels::Held MrgLevels::goThrough(Node *node, Nodes &kept)
{
    Held held;
    for(Node *child : *node->getMFChildren())
    {
        if(!isLevel(child) || !takeUp(child, held))
            kept.push_back(child);
    }
    return held;
}

// False for a material group that holds something that takes no material: it stays with that.
bool MrgLevels::takeUp(Node *level, Held &above)
{
    Held const held = heldBy(level);
    Nodes rest;
    if(core_derives_from<MaterialGroup>(level))
    {
        Material *const material = static_cast<MaterialGroup *>(level->getCore())->getMaterial();
        _rising.join(above.nodes, _rising.giveMaterial(held.nodes, material, rest));
    }
    else
        _rising.join(above.nodes, held.nodes);
    // What has risen is still below these levels: they go when it has been moved.
    _rising.join(above.levels, held.levels);
    if(!rest.empty())
    {
        take(rest, level);
        return false;
    }
    _rising.append(above.levels, level, false);
    return true;
}

// A level that nobody has noted holds its children: it is a leaf, or no walk is under way.
MrgLevels::Held MrgLevels::heldBy(Node *level)
{
    Held held;
    auto const noted = _noted.find(level);
    if(noted != _noted.end())
    {
        held = noted->second;
        _noted.erase(noted);
        return held;
    }
    for(Node *child : *level->getMFChildren())
        _rising.append(held.nodes, child, isFreeGeometryLeaf(child));
    return held;
}

void MrgLevels::take(Nodes const &nodes, Node *parent)
{
    ChildEdits edits;
    for(Node *node : nodes)
    {
        if(node->getParent() != parent)
            edits.add(node);
    }
    edits.applyTo(parent);
}

void MrgLevels::drop(RisingNodes::List const &levels)
{
    for(Node *level : _rising.finish(levels))
        level->getParent()->subChild(level);
}

// --- transforms ---

// Takes the transforms among `children` as far as they can be baked. What has been baked hangs
// below `node` at once: a geometry that was moved and still stood below its transform would be
// moved twice if the operation were run again. A transform that has gone is null in `children`
// afterwards.
void MrgLevels::bakeTransforms(Node *node, Nodes &children, Nodes &baked)
{
    for(Node *&child : children)
    {
        if(!core_derives_from<Transform>(child) || _excluded.contains(child))
            continue;
        if(bakeTransform(child, node, baked))
            node->subChild(std::exchange(child, nullptr));
    }
}

// True where nothing is left below the transform.
bool MrgLevels::bakeTransform(Node *transform, Node *above, Nodes &baked)
{
    Matrix const matrix = static_cast<Transform *>(transform->getCore())->getMatrix();
    Nodes const children(transform->getMFChildren()->begin(), transform->getMFChildren()->end());
    bool all = true;
    for(Node *child : children)
    {
        if(!isFreeGeometryLeaf(child))
        {
            all = false;
            continue;
        }
        bakeNode(child, matrix, above);
        baked.push_back(child);
    }
    return all;
}

void MrgLevels::bakeNode(Node *node, Matrix const &matrix, Node *above)
{
    UnrecordedRefPtr<Geometry> const core(static_cast<Geometry *>(node->getCore()));
    if(isOwn(*core))
    {
        open_arrays_to_bake(*core, _vectors);
        above->addChild(node);
        bake_in_place(*core, matrix, _vectors);
        return;
    }
    UnrecordedRefPtr<Geometry> const baked(baked_geometry(*core, matrix, _vectors));
    _own.insert(baked);
    node->setCore(baked);
    try
    {
        above->addChild(node);
    }
    catch(...)
    {
        node->setCore(core);
        throw;
    }
}

// Nobody else may see an edit in place: the node alone holds the geometry, and `bakeNode` counts it
// once.
bool MrgLevels::isOwn(Geometry const &geometry) const
{
    return geometry.getParents().size() == 1 && geometry.getRefCount() == 2 &&
           _own.find(&geometry) != _own.end();
}
} // namespace OSG
