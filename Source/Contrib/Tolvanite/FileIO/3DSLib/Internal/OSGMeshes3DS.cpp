#include "OSGMeshes3DS.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGMakeNode.h"
#include "OSGName.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
// --- faces by material and smoothing group ---

MeshParts3DS::MeshParts3DS(Lib3dsMesh const &mesh)
{
    List<UInt32> const partOf = partOfEachFace(mesh);
    List<UInt32> const places = sortParts();
    // The faces go to their parts in the order of the file.
    List<UInt32> next(_parts.size());
    UInt32 begin = 0;
    for(std::size_t i = 0; i < _parts.size(); ++i)
    {
        _parts[i].begin = next[i] = begin;
        begin = _parts[i].end += begin; // `end` was the number of faces
    }
    _faces.resize(mesh.nfaces);
    for(UInt32 face = 0; face < mesh.nfaces; ++face)
        _faces[next[places[partOf[face]]]++] = face;
}

// Makes the parts in the order in which they begin, and counts their faces.
MeshParts3DS::List<UInt32> MeshParts3DS::partOfEachFace(Lib3dsMesh const &mesh)
{
    std::unordered_map<UInt64, UInt32> numbers;
    List<UInt32> partOf(mesh.nfaces);
    UInt32 part = 0;
    for(UInt32 i = 0; i < mesh.nfaces; ++i)
    {
        Lib3dsFace const &face = mesh.faces[i];
        bool const goesOn = i != 0 && _parts[part].material == face.material &&
                            _parts[part].smoothing == face.smoothing_group;
        if(!goesOn)
        {
            UInt64 const key = UInt64(UInt32(face.material)) << 32 | face.smoothing_group;
            auto const [entry, isNew] = numbers.emplace(key, static_cast<UInt32>(_parts.size()));
            if(isNew)
                _parts.push_back({face.material, face.smoothing_group, 0, 0});
            part = entry->second;
        }
        partOf[i] = part;
        ++_parts[part].end;
    }
    return partOf;
}

// The result is the new place of each part.
MeshParts3DS::List<UInt32> MeshParts3DS::sortParts()
{
    List<UInt32> order(_parts.size());
    std::iota(order.begin(), order.end(), 0u);
    // Compared as unsigned numbers, -1 comes behind all materials.
    auto const key = [this](UInt32 i)
    { return std::pair(static_cast<UInt32>(_parts[i].material), _parts[i].smoothing); };
    std::sort(order.begin(), order.end(), [&](UInt32 a, UInt32 b) { return key(a) < key(b); });
    List<Part> sorted(_parts.size());
    List<UInt32> places(_parts.size());
    for(UInt32 i = 0; i < order.size(); ++i)
    {
        sorted[i] = _parts[order[i]];
        places[order[i]] = i;
    }
    _parts = std::move(sorted);
    return places;
}

// --- geometries ---

UnrecordedRefPtr<Node> make_group_node()
{
    return make_node(UnrecordedRefPtr<Group>(Group::create()));
}

/// Makes the geometries of one mesh. The vertices of a part are numbered in the order of their
/// first use.
class Meshes3DS::PartBuilder
{
  public:
    PartBuilder(Meshes3DS &meshes, Lib3dsMesh const &mesh, Matrix const *matrix,
                Normals const &normals)
        : _meshes(meshes)
        , _mesh(mesh)
        , _matrix(matrix)
        , _normals(normals)
        , _numbers(mesh.nvertices, Unused)
    {
    }

    NodePtr build(UInt32 const *faces, UInt32 count, Material *material)
    {
        UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
        geometry->setMaterial(material);
        UnrecordedRefPtr<GeoUInt32Property> const index = numberVertices(faces, count);
        geometry->setPositions(positions());
        geometry->setNormals(normals(faces, count, *index));
        if(_mesh.texcos != nullptr)
            geometry->setTexCoords(texCoords());
        geometry->setIndices(index);
        geometry->setLengths(_meshes._lengths.get(MField<UInt32>(count, 3u)));
        geometry->setTypes(_meshes._types.get(MField<UInt8>(count, UInt8(TrianglesPrimitive))));
        for(UInt32 vertex : _used)
            _numbers[vertex] = Unused;
        NodePtr node(make_node(geometry));
        setName(node, _mesh.name);
        return node;
    }

  private:
    static constexpr UInt32 Unused = 0xFFFFFFFF;

    UnrecordedRefPtr<GeoUInt32Property> numberVertices(UInt32 const *faces, UInt32 count)
    {
        UnrecordedRefPtr<GeoUInt32Property> index(GeoUInt32Property::create());
        auto &entries = index->editValues();
        entries.resize(3 * std::size_t(count));
        _used.clear();
        UInt32 *entry = entries.data();
        for(UInt32 i = 0; i < count; ++i)
        {
            for(UInt32 const vertex : _mesh.faces[faces[i]].index)
            {
                if(_numbers[vertex] == Unused)
                {
                    _numbers[vertex] = static_cast<UInt32>(_used.size());
                    _used.push_back(vertex);
                }
                *entry++ = _numbers[vertex];
            }
        }
        return index;
    }

    UnrecordedRefPtr<GeoPnt3fProperty> positions() const
    {
        UnrecordedRefPtr<GeoPnt3fProperty> property(GeoPnt3fProperty::create());
        auto &values = property->editValues();
        values.resize(_used.size());
        for(std::size_t i = 0; i < _used.size(); ++i)
        {
            float const *const at = _mesh.vertices[_used[i]];
            Pnt3f const point(at[0], at[1], at[2]);
            values[i] = _matrix != nullptr ? *_matrix * point : point;
        }
        return property;
    }

    // A vertex of several faces gets the normal of the last one.
    UnrecordedRefPtr<GeoVec3fProperty> normals(UInt32 const *faces, UInt32 count,
                                               GeoUInt32Property const &index) const
    {
        UnrecordedRefPtr<GeoVec3fProperty> property(GeoVec3fProperty::create());
        auto &values = property->editValues();
        values.resize(_used.size());
        UInt32 const *entry = index.getValues().data();
        for(UInt32 i = 0; i < count; ++i)
        {
            float const *const at = _normals[faces[i]].at;
            Vec3f const normal(at[0], at[1], at[2]);
            for(int corner = 0; corner < 3; ++corner)
                values[*entry++] = normal;
        }
        return property;
    }

    UnrecordedRefPtr<GeoVec2fProperty> texCoords() const
    {
        UnrecordedRefPtr<GeoVec2fProperty> property(GeoVec2fProperty::create());
        auto &values = property->editValues();
        values.resize(_used.size());
        for(std::size_t i = 0; i < _used.size(); ++i)
            values[i] = Vec2f(_mesh.texcos[_used[i]][0], _mesh.texcos[_used[i]][1]);
        return property;
    }

    Meshes3DS &_meshes;
    Lib3dsMesh const &_mesh;
    Matrix const *_matrix;
    Normals const &_normals;
    Numbers _numbers; // of the mesh's vertices in the part
    Numbers _used;    // vertices of the part
};

Meshes3DS::Meshes3DS(Lib3dsFile const &file)
    : _materialCount(static_cast<UInt32>(file.nmaterials))
{
    for(int i = 0; i < file.nmeshes; ++i)
        _parts.emplace(file.meshes[i], *file.meshes[i]);
}

UInt64 Meshes3DS::countNodes(Lib3dsMesh const *mesh) const
{
    UInt64 const groups = UInt64(1) + _materialCount + 1;
    return groups + _parts.at(mesh).parts().size();
}

// The normals of the faces at the mesh's place.
Meshes3DS::Normals Meshes3DS::faceNormals(Lib3dsMesh *mesh, Matrix const *matrix) const
{
    constexpr float ShortestVector = 1e-6f; // shorter ones stay as they are
    Normals normals(mesh->nfaces);
    if(normals.empty())
        return normals;
    lib3ds_mesh_calculate_face_normals(mesh, &normals.front().at);
    for(Normal &normal : normals)
    {
        Vec3f at(normal.at[0], normal.at[1], normal.at[2]);
        if(matrix != nullptr)
            at = *matrix * at;
        float const length = std::sqrt(at[0] * at[0] + at[1] * at[1] + at[2] * at[2]);
        if(!(length < ShortestVector))
            at = at * (1.f / length);
        std::copy_n(at.values(), 3, normal.at);
    }
    return normals;
}

Meshes3DS::NodePtr Meshes3DS::convert(Lib3dsMesh *mesh, Matrix const *matrix)
{
    MeshParts3DS const &sorted = _parts.at(mesh);
    Normals const normals = faceNormals(mesh, matrix);
    PartBuilder builder(*this, *mesh, matrix, normals);
    NodePtr root = make_group_node();
    auto part = sorted.parts().begin();
    for(UInt32 list = 0; list <= _materialCount; ++list)
    {
        bool const isLast = list == _materialCount;
        Material *const material = isLast ? nullptr : _materials[list].get();
        Int32 const wanted = isLast ? -1 : static_cast<Int32>(list);
        NodePtr const group = make_group_node();
        for(; part != sorted.parts().end() && part->material == wanted; ++part)
            group->addChild(
                builder.build(&sorted.faces()[part->begin], part->end - part->begin, material));
        root->addChild(group);
    }
    return root;
}
} // namespace OSG
