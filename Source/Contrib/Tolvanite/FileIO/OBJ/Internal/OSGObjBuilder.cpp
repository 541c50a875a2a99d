#include "OSGObjBuilder.h"

#include <utility>

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGGeometryNormals.h"
#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGLog.h"
#include "OSGMakeNode.h"
#include "OSGObjDefaultMaterial.h"
#include "OSGSharedIndex.h"
#include "OSGThread.h"

namespace OSG
{
ObjBuilder::ObjBuilder()
    : _arrays{GeoPnt3fProperty::create(), GeoVec2fProperty::create(), GeoVec3fProperty::create()}
{
}

ObjVertexArrays ObjBuilder::arrays()
{
    return {_arrays.positions->editValues(), _arrays.texCoords->editValues(),
            _arrays.normals->editValues()};
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
    VertexArrays arrays = arraysOf(mask);
    if(afterwards == Arrays::LetGo)
        _arrays = VertexArrays();
    if(mask.singleIndex)
        setOneIndex(*geometry, arrays, faces);
    else if(arrays.texCoords == nullptr && arrays.normals == nullptr)
        setPositions(*geometry, arrays, faces);
    else
        setSharedIndex(*geometry, std::move(arrays), faces);
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
        _defaultMaterial = make_obj_default();
    return _defaultMaterial;
}

void ObjBuilder::addPrimitives(Geometry &geometry, ObjFaces const &faces)
{
    MField<UInt32> lengths;
    faces.appendSizes(lengths);
    geometry.setTypes(_types.get(MField<UInt8>(faces.size(), PolygonPrimitive)));
    geometry.setLengths(_lengths.get(std::move(lengths)));
}

ObjBuilder::VertexArrays ObjBuilder::arraysOf(ObjIndexMask const &mask) const
{
    VertexArrays arrays = _arrays;
    if((mask.mask & ObjTexCoordBit) == 0 || arrays.texCoords->size() == 0)
        arrays.texCoords = nullptr;
    if((mask.mask & ObjNormalBit) == 0 || arrays.normals->size() == 0)
        arrays.normals = nullptr;
    return arrays;
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

/// The numbers of each corner are equal, and one index serves all slots.
void ObjBuilder::setOneIndex(Geometry &geometry, VertexArrays const &arrays, ObjFaces &faces)
{
    GeoUInt32Ptr const index = _indices.get(indices_of(faces, ObjPositionIndex));
    geometry.setPositions(arrays.positions);
    geometry.setTexCoords(arrays.texCoords);
    geometry.setNormals(arrays.normals);
    geometry.setIndex(index, Geometry::PositionsSlot);
    geometry.setIndex(index, Geometry::NormalsSlot);
    geometry.setIndex(index, Geometry::TexCoordsSlot);
}

void ObjBuilder::setPositions(Geometry &geometry, VertexArrays const &arrays, ObjFaces &faces)
{
    geometry.setPositions(arrays.positions);
    geometry.setIndex(make_index(indices_of(faces, ObjPositionIndex)), Geometry::PositionsSlot);
}

void ObjBuilder::setSharedIndex(Geometry &geometry, VertexArrays arrays, ObjFaces &faces)
{
    // The positions are taken last, because other kinds may refer to theirs.
    std::vector<VertexElements> elements(1);
    if(arrays.normals != nullptr)
        elements.push_back(
            {Geometry::NormalsSlot, std::move(arrays.normals), indices_of(faces, ObjNormalIndex)});
    if(arrays.texCoords != nullptr)
        elements.push_back({Geometry::TexCoordsSlot, std::move(arrays.texCoords),
                            indices_of(faces, ObjTexCoordIndex)});
    elements[0] = {Geometry::PositionsSlot, std::move(arrays.positions),
                   indices_of(faces, ObjPositionIndex)};
    createSharedIndex(geometry, std::move(elements),
                      [this](MField<UInt32> &&entries)
                      { return _indices.get(std::move(entries)); });
}
} // namespace OSG
