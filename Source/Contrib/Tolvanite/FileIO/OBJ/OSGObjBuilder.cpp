#include "OSGObjBuilder.h"

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGGeometryNormals.h"
#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGLog.h"
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

void ObjBuilder::trimArrays()
{
    ObjVertexArrays const full = arrays();
    full.positions.shrink_to_fit();
    full.texCoords.shrink_to_fit();
    full.normals.shrink_to_fit();
}

namespace
{
constexpr std::size_t MeshesPerCommit = 4096; // keeps the change list short

// For a mesh that no material was assigned to.
TransitPtr<SimpleTexturedMaterial> default_material()
{
    TransitPtr<SimpleTexturedMaterial> material = SimpleTexturedMaterial::create();
    material->setDiffuse(Color3f(0.8f, 0.8f, 0.8f));
    material->setSpecular(Color3f(1.f, 1.f, 1.f));
    material->setShininess(20.f);
    return material;
}

TransitPtr<Node> node_of(NodeCore *core)
{
    TransitPtr<Node> node = Node::create();
    node->setCore(core);
    return node;
}
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
            root = node_of(UnrecordedRefPtr<Group>(Group::create()));
        root->addChild(node.get());
    }
    return root;
}

TransitPtr<Node> ObjBuilder::buildNewest(ObjRecords &records, ObjMaterialSlots const &materials)
{
    Int32 const slot = records.material(0);
    UnrecordedRefPtr<Geometry> const geometry(buildGeometry(
        records.faces(0), slot != ObjRecords::noMaterial ? materials[slot].get() : nullptr));
    records.dropNewestMesh();
    return geometry != nullptr ? node_of(geometry) : nullptr;
}

TransitPtr<Geometry> ObjBuilder::buildGeometry(ObjFaces const &faces, Material *material)
{
    if(faces.empty())
    {
        OSG_LOG_WARNING("Mesh with empty faceList\n");
        return nullptr;
    }
    ObjIndexMask const mask = deriveIndexMask(faces);
    if(mask.unmatch)
    {
        OSG_LOG_FATAL("IndexMask unmatch, can not create geo\n");
        return nullptr;
    }
    if(mask.mask == 0)
        return nullptr;

    TransitPtr<Geometry> geometry = Geometry::create();
    addFaces(*geometry, faces, mask);
    if(material != nullptr)
        geometry->setMaterial(material);
    else
        geometry->setMaterial(UnrecordedRefPtr<SimpleTexturedMaterial>(default_material()));
    createSharedIndex(geometry.get());
    if(geometry->getNormals() == nullptr)
        calcVertexNormals(geometry.get());
    return geometry;
}

void ObjBuilder::addFaces(Geometry &geometry, ObjFaces const &faces, ObjIndexMask const &mask)
{
    bool const hasTexCoords = (mask.mask & ObjTexCoordBit) != 0 && _texCoords->size() != 0;
    bool const hasNormals = (mask.mask & ObjNormalBit) != 0 && _normals->size() != 0;
    geometry.setPositions(_positions);
    geometry.setTexCoords(hasTexCoords ? _texCoords.get() : nullptr);
    geometry.setNormals(hasNormals ? _normals.get() : nullptr);

    UnrecordedRefPtr<GeoUInt8Property> const types(GeoUInt8Property::create());
    UnrecordedRefPtr<GeoUInt32Property> const lengths(GeoUInt32Property::create());
    types->editValues().resize(faces.size(), PolygonPrimitive);
    MField<UInt32> &lengthValues = lengths->editValues();
    lengthValues.reserve(faces.size());
    for(std::span<ObjTiePoint const> face : faces)
        lengthValues.push_back(static_cast<UInt32>(face.size()));
    geometry.setTypes(types);
    geometry.setLengths(lengths);

    // -1, where a mixed mesh has no index, becomes an element that is not there.
    auto const index_of = [&faces](ObjIndexKind kind)
    {
        TransitPtr<GeoUInt32Property> index = GeoUInt32Property::create();
        MField<UInt32> &values = index->editValues();
        values.reserve(faces.tiePointCount());
        for(std::span<ObjTiePoint const> face : faces)
        {
            for(ObjTiePoint const &tiePoint : face)
                values.push_back(static_cast<UInt32>(tiePoint.index[kind]));
        }
        return index;
    };
    // The highest slot first, so that the list of indices has its full length at once.
    UnrecordedRefPtr<GeoUInt32Property> const positions(index_of(ObjPositionIndex));
    if(mask.singleIndex)
    {
        geometry.setIndex(positions, Geometry::TexCoordsSlot);
        geometry.setIndex(positions, Geometry::NormalsSlot);
        geometry.setIndex(positions, Geometry::PositionsSlot);
        return;
    }
    if(hasTexCoords)
        geometry.setIndex(UnrecordedRefPtr<GeoUInt32Property>(index_of(ObjTexCoordIndex)),
                          Geometry::TexCoordsSlot);
    if(hasNormals)
        geometry.setIndex(UnrecordedRefPtr<GeoUInt32Property>(index_of(ObjNormalIndex)),
                          Geometry::NormalsSlot);
    geometry.setIndex(positions, Geometry::PositionsSlot);
}
} // namespace OSG
