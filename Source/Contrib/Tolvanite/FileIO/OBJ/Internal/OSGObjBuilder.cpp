#include "OSGObjBuilder.h"

#include <utility>

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGGeometryNormals.h"
#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGLog.h"
#include "OSGMakeNode.h"
#include "OSGSharedIndex.h"
#include "OSGThread.h"

namespace OSG
{
ObjBuilder::ObjBuilder()
    : _positions(GeoPnt3fProperty::create())
    , _texCoords(GeoVec2fProperty::create())
    , _normals(GeoVec3fProperty::create())
{
}

ObjVertexArrays ObjBuilder::arrays()
{
    return {_positions->editValues(), _texCoords->editValues(), _normals->editValues()};
}

namespace
{
constexpr std::size_t MeshesPerCommit = 4096; // keeps the change list short
} // namespace

TransitPtr<Node> ObjBuilder::build(ObjRecords &records, ObjMaterialSlots const &materials)
{
    if(records.meshCount() < 2)
        return buildNewest(records, materials);
    TransitPtr<Node> root;
    while(records.meshCount() > 0)
    {
        TransitPtr<Node> const node = buildNewest(records, materials);
        if(records.meshCount() % MeshesPerCommit == 1)
            Thread::getCurrentChangeList()->commitChanges();
        if(!node)
            continue;
        if(!root)
            root = make_node(UnrecordedRefPtr<Group>(Group::create()));
        root->addChild(node.get());
    }
    return root;
}

TransitPtr<Node> ObjBuilder::buildNewest(ObjRecords &records, ObjMaterialSlots const &materials)
{
    Int32 const slot = records.material(0);
    UnrecordedRefPtr<Geometry> const geometry(buildGeometry(
        records.faces(0), slot != ObjRecords::NoMaterial ? materials[slot].get() : nullptr,
        records.meshCount() == 1 ? Arrays::LetGo : Arrays::Keep));
    records.dropNewestMesh();
    return geometry != nullptr ? make_node(geometry) : nullptr;
}

TransitPtr<Geometry> ObjBuilder::buildGeometry(ObjFaces faces, Material *material,
                                               Arrays afterwards)
{
    if(faces.empty())
    {
        OSG_LOG_WARNING("Mesh with empty faceList\n");
        return nullptr;
    }
    ObjIndexMask const mask = derive_index_mask(faces);
    if(mask.unmatch)
    {
        OSG_LOG_FATAL("IndexMask unmatch, can not create geo\n");
        return nullptr;
    }
    if(mask.mask == 0)
        return nullptr;

    TransitPtr<Geometry> geometry = Geometry::create();
    setArrays(*geometry, mask);
    if(afterwards == Arrays::LetGo)
    {
        _positions = nullptr;
        _texCoords = nullptr;
        _normals = nullptr;
    }
    if(mask.singleIndex)
        addOneIndex(*geometry, faces);
    else
        addSharedIndex(*geometry, faces);
    // Last, when the faces have given back most of their memory.
    addPrimitives(*geometry, faces);
    geometry->setMaterial(material != nullptr ? material : defaultMaterial());
    if(geometry->getNormals() == nullptr)
        calcVertexNormals(geometry.get(), [this](MField<UInt32> &&entries)
                          { return _normalIndices.get(std::move(entries)); });
    return geometry;
}

Material *ObjBuilder::defaultMaterial()
{
    if(_defaultMaterial == nullptr)
    {
        _defaultMaterial = SimpleTexturedMaterial::create();
        // Light grey with a soft highlight.
        _defaultMaterial->setDiffuse(Color3f(0.8f, 0.8f, 0.8f));
        _defaultMaterial->setSpecular(Color3f(1.f, 1.f, 1.f));
        _defaultMaterial->setShininess(20.f);
    }
    return _defaultMaterial;
}

void ObjBuilder::addPrimitives(Geometry &geometry, ObjFaces const &faces)
{
    MField<UInt32> lengths;
    faces.appendSizes(lengths);
    geometry.setTypes(_types.get(MField<UInt8>(faces.size(), PolygonPrimitive)));
    geometry.setLengths(_lengths.get(std::move(lengths)));
}

void ObjBuilder::setArrays(Geometry &geometry, ObjIndexMask const &mask)
{
    bool const hasTexCoords = (mask.mask & ObjTexCoordBit) != 0 && _texCoords->size() != 0;
    bool const hasNormals = (mask.mask & ObjNormalBit) != 0 && _normals->size() != 0;
    geometry.setPositions(_positions);
    geometry.setTexCoords(hasTexCoords ? _texCoords.get() : nullptr);
    geometry.setNormals(hasNormals ? _normals.get() : nullptr);
}

namespace
{
/// A missing index is -1. It becomes the largest number, which is out of range of every array.
MField<UInt32> indices_of(ObjFaces &faces, ObjIndexKind kind)
{
    MField<UInt32> indices;
    faces.takeIndices(kind, indices);
    return indices;
}
} // namespace

/// The corners have one index each, and it serves all kinds.
void ObjBuilder::addOneIndex(Geometry &geometry, ObjFaces &faces)
{
    GeoUInt32Ptr const index = _indices.get(indices_of(faces, ObjPositionIndex));
    geometry.setIndex(index, Geometry::PositionsSlot);
    geometry.setIndex(index, Geometry::NormalsSlot);
    geometry.setIndex(index, Geometry::TexCoordsSlot);
}

void ObjBuilder::addSharedIndex(Geometry &geometry, ObjFaces &faces)
{
    if(geometry.getNormals() == nullptr && geometry.getTexCoords() == nullptr)
        return geometry.setIndex(make_index(indices_of(faces, ObjPositionIndex)),
                                 Geometry::PositionsSlot);
    // The positions are taken last, because other kinds may refer to theirs.
    std::vector<VertexElements> ofSlots(1);
    if(geometry.getNormals() != nullptr)
        ofSlots.push_back({Geometry::NormalsSlot, indices_of(faces, ObjNormalIndex)});
    if(geometry.getTexCoords() != nullptr)
        ofSlots.push_back({Geometry::TexCoordsSlot, indices_of(faces, ObjTexCoordIndex)});
    ofSlots[0] = {Geometry::PositionsSlot, indices_of(faces, ObjPositionIndex)};
    createSharedIndex(geometry, std::move(ofSlots),
                      [this](MField<UInt32> &&entries)
                      { return _indices.get(std::move(entries)); });
}
} // namespace OSG
