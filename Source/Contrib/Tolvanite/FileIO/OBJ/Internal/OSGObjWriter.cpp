#include "OSGObjWriter.h"

#include <ostream>

#include "OSGCoreKind.h"
#include "OSGGeometryIterators.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGNodeWalker.h"
#include "OSGObjDefaultMaterial.h"
#include "OSGObjMaterialEntry.h"
#include "OSGSwitch.h"
#include "OSGVisitSubTree.h"

namespace OSG
{
void ObjWriter::write(Node *root) { NodeWalker().walk(root, *this); }

// --- the walk ---

bool ObjWriter::enter(Node *node)
{
    _added.clear();
    _hasAdded = false;
    if(auto const *const group = core_as<MaterialGroup>(node))
    {
        _materials.push_back(group->getMaterial());
        return enterBelow(node, Pushed::ItsMaterial);
    }
    if(auto const *const group = core_as<MaterialChunkOverrideGroup>(node))
    {
        _overrideMaterials.push_back(group->getMaterial());
        return enterBelow(node, Pushed::ItsOverride);
    }
    if(core_derives_from<Geometry>(node))
    {
        writeGeometry(node);
        return false;
    }
    if(core_derives_from<VisitSubTree>(node))
        return enterVisit(node);
    if(core_derives_from<MultiSwitch>(node))
        return enterChoices(node);
    if(core_derives_from<Switch>(node))
        return enterChoice(node);
    return core_derives_from<Group>(node) && enterBelow(node, Pushed::Nothing);
}

bool ObjWriter::enterBelow(Node *node, Pushed pushed)
{
    _levels.push_back({node, toWorld(node), pushed});
    return true;
}

bool ObjWriter::enterVisit(Node *node)
{
    Node *const root = core_as<VisitSubTree>(node)->getSubTreeRoot();
    if(root == nullptr)
        return false;
    _hasAdded = true;
    _added.push_back(root);
    _transforms.push_back(toWorld(node));
    return enterBelow(node, Pushed::ItsTransform);
}

bool ObjWriter::enterChoices(Node *node)
{
    auto const *const core = core_as<MultiSwitch>(node);
    if(core->getSwitchMode() == MultiSwitch::ShowAll)
        return enterBelow(node, Pushed::Nothing);
    if(core->getSwitchMode() != MultiSwitch::ShowChoices)
        return false;
    _hasAdded = true;
    for(UInt32 const choice : *core->getMFChoices())
    {
        if(choice < node->getNChildren())
            _added.push_back(node->getChild(choice));
    }
    return enterBelow(node, Pushed::Nothing);
}

bool ObjWriter::enterChoice(Node *node)
{
    Int32 const choice = core_as<Switch>(node)->getChoice();
    if(choice == Switch::AllChildren)
        return enterBelow(node, Pushed::Nothing);
    UInt32 const child = static_cast<UInt32>(choice); // those below 0 are beyond all children
    if(child >= node->getNChildren())
        return false;
    _hasAdded = true;
    _added.push_back(node->getChild(child));
    return enterBelow(node, Pushed::Nothing);
}

bool ObjWriter::takeAdded(std::vector<Node *> &nodes)
{
    nodes.swap(_added);
    return _hasAdded;
}

void ObjWriter::leave(Node *)
{
    switch(_levels.back().pushed)
    {
    case Pushed::ItsMaterial:
        _materials.pop_back();
        break;
    case Pushed::ItsOverride:
        _overrideMaterials.pop_back();
        break;
    case Pushed::ItsTransform:
        _transforms.pop_back();
        break;
    case Pushed::Nothing:
        break;
    }
    _levels.pop_back();
}

/// Like Node::getToWorld, but a node that was reached from its parent goes on from the parent's
/// matrix. Deep trees take linear time this way.
Matrix ObjWriter::toWorld(Node *node) const
{
    if(_levels.empty() || _levels.back().node != node->getParent())
        return node->getToWorld();
    Matrix matrix = _levels.back().toWorld;
    node->getCore()->accumulateMatrix(matrix);
    return matrix;
}

// --- geometries ---

void ObjWriter::writeGeometry(Node *node)
{
    Geometry const &geometry = *core_as<Geometry>(node);
    std::string const name = "Geometry" + std::to_string(_geometry++);
    if(geometry.getMaterial() != nullptr)
        _materials.push_back(geometry.getMaterial());
    writeMaterial(name);
    if(geometry.getMaterial() != nullptr)
        _materials.pop_back();
    _out.put("g ").put(name).put("\ns 1\n");
    // Only a material above the geometry is used. A geometry's own material has its entry, but no
    // line here: this is how the format has always been written.
    if(!_materials.empty() || !_overrideMaterials.empty())
        _out.put("usemtl ").put(name).put('\n');
    else if(geometry.getMaterial() != nullptr && !is_obj_default(*geometry.getMaterial()))
        ++_unusedMaterials;
    Matrix matrix = toWorld(node);
    for(auto transform = _transforms.rbegin(); transform != _transforms.rend(); ++transform)
        matrix.multLeft(*transform);
    writeVertices(geometry, matrix);
    writeFaces(geometry);
}

void ObjWriter::writeMaterial(std::string const &name)
{
    if(!_materials.empty())
        write_obj_material(_library, name, _materials.back(), _images);
}

namespace
{
void put_vector(WriteBuffer &out, std::string_view word, Real32 x, Real32 y, Real32 z)
{
    out.put(word).put(x).put(' ').put(y).put(' ').put(z).put('\n');
}
} // namespace

void ObjWriter::writeVertices(Geometry const &geometry, Matrix const &matrix)
{
    GeometryView const view(geometry);
    for(UInt32 i = 0; i < view.positions.size(); ++i)
    {
        Pnt3f const point = matrix * view.positions.point(i);
        put_vector(_out, "v ", point[0], point[1], point[2]);
    }
    for(UInt32 i = 0; i < view.normals.size(); ++i)
    {
        Vec3f const normal = matrix * view.normals.vector(i);
        put_vector(_out, "vn ", normal[0], normal[1], normal[2]);
    }
    for(UInt32 i = 0; i < view.texCoords.size(); ++i)
    {
        Pnt3f const place = view.texCoords.point(i);
        _out.put("vt ").put(place[0]).put(' ').put(place[1]).put('\n');
    }
}

// A number that a corner lacks in an array of its kind wraps around, as the count in the file does.
void ObjWriter::writeFaces(Geometry const &geometry)
{
    GeometryView const view(geometry);
    bool const hasNormals = view.normals.size() != 0;
    bool const hasTexCoords = view.texCoords.size() != 0;
    TriangleIterator const end = geometry.endTriangles();
    for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it)
    {
        _out.put('f');
        for(Int32 corner = 0; corner < 3; ++corner)
        {
            _out.put(' ').put(it.getPositionIndex(corner) + _offsets.position);
            if(hasTexCoords || hasNormals)
                _out.put('/');
            if(hasTexCoords)
                _out.put(it.getTexCoordsIndex(corner) + _offsets.texCoord);
            if(hasNormals)
                _out.put('/').put(it.getNormalIndex(corner) + _offsets.normal);
        }
        _out.put('\n');
    }
    _offsets.position += view.positions.size();
    _offsets.normal += view.normals.size();
    _offsets.texCoord += view.texCoords.size();
}
} // namespace OSG
