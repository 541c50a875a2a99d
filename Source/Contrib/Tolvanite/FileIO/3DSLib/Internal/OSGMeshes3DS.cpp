#include "OSGMeshes3DS.h"

#include <algorithm>
#include <numeric>

#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGMakeNode.h"
#include "OSGName.h"
#include "OSGPlacedNormals.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
// --- faces by material and smoothing group ---

namespace
{
bool are_in_one_part(Lib3dsFace const &a, Lib3dsFace const &b)
{
    return a.material == b.material && a.smoothing_group == b.smoothing_group;
}
} // namespace

MeshParts3DS::MeshParts3DS(Lib3dsMesh const &mesh)
{
    Lib3dsFace const *const faces = mesh.faces;
    if(mesh.nfaces != 0 && std::all_of(faces, faces + mesh.nfaces,
                                       [first = faces[0]](Lib3dsFace const &face)
                                       { return are_in_one_part(face, first); }))
    {
        _parts.push_back({faces[0].material, faces[0].smoothing_group, 0, mesh.nfaces});
        return;
    }
    List<UInt16> const partOf = partOfEachFace(mesh);
    List<UInt16> const places = sortParts();
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
        _faces[next[places[partOf[face]]]++] = static_cast<UInt16>(face);
}

// Makes the parts in the order in which they begin, and counts their faces.
MeshParts3DS::List<UInt16> MeshParts3DS::partOfEachFace(Lib3dsMesh const &mesh)
{
    std::unordered_map<UInt64, UInt16> numbers;
    List<UInt16> partOf(mesh.nfaces);
    UInt16 part = 0;
    for(UInt32 i = 0; i < mesh.nfaces; ++i)
    {
        Lib3dsFace const &face = mesh.faces[i];
        if(i == 0 || !are_in_one_part(face, mesh.faces[i - 1]))
        {
            UInt64 const key = UInt64(UInt32(face.material)) << 32 | face.smoothing_group;
            auto const [entry, isNew] = numbers.emplace(key, static_cast<UInt16>(_parts.size()));
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
MeshParts3DS::List<UInt16> MeshParts3DS::sortParts()
{
    List<UInt16> order(_parts.size());
    std::iota(order.begin(), order.end(), UInt16(0));
    // Compared as unsigned numbers, -1 comes behind all materials.
    auto const key = [this](UInt32 i)
    { return std::pair(static_cast<UInt32>(_parts[i].material), _parts[i].smoothing); };
    std::sort(order.begin(), order.end(), [&](UInt32 a, UInt32 b) { return key(a) < key(b); });
    List<Part> sorted(_parts.size());
    List<UInt16> places(_parts.size());
    for(std::size_t i = 0; i < order.size(); ++i)
    {
        sorted[i] = _parts[order[i]];
        places[order[i]] = static_cast<UInt16>(i);
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
/// first use. The file's numbers of vertices and faces have 16 bits.
class Meshes3DS::PartBuilder
{
  public:
    PartBuilder(Meshes3DS &meshes, Lib3dsMesh const &mesh, Matrix const *matrix)
        : _meshes(meshes)
        , _mesh(mesh)
        , _matrix(matrix)
        , _numbers(meshes._numbers)
        , _used(meshes._used)
        , _lastFaces(meshes._lastFaces)
    {
        if(mesh.nvertices <= _numbers.size())
            return;
        _numbers = MemArray<UInt16>(mesh.nvertices);
        std::fill_n(_numbers.data(), mesh.nvertices, Unused);
        _used = MemArray<UInt16>(mesh.nvertices);
        _lastFaces = MemArray<UInt16>(mesh.nvertices);
    }

    /// `faces` holds `count` numbers of faces; null stands for all faces of the mesh.
    NodePtr build(UInt16 const *faces, UInt32 count, Material *material)
    {
        UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
        geometry->setMaterial(material);
        UnrecordedRefPtr<GeoUInt32Property> const index = numberVertices(faces, count);
        geometry->setPositions(positions());
        geometry->setNormals(normals());
        if(_mesh.texcos != nullptr)
            geometry->setTexCoords(texCoords());
        geometry->setIndices(index);
        geometry->setLengths(_meshes._lengths.get(MField<UInt32>(count, 3u)));
        geometry->setTypes(_meshes._types.get(MField<UInt8>(count, UInt8(TrianglesPrimitive))));
        for(std::size_t i = 0; i < _usedCount; ++i)
            _numbers[_used[i]] = Unused;
        NodePtr node(make_node(geometry));
        setName(node, _mesh.name);
        return node;
    }

  private:
    static constexpr UInt16 Unused = 0xFFFF; // a mesh has fewer vertices

    UnrecordedRefPtr<GeoUInt32Property> numberVertices(UInt16 const *faces, UInt32 count)
    {
        UnrecordedRefPtr<GeoUInt32Property> index(GeoUInt32Property::create());
        auto &entries = index->editValues();
        entries.resize(3 * std::size_t(count));
        UInt32 *entry = entries.data();
        UInt16 used = 0;
        for(UInt32 i = 0; i < count; ++i)
        {
            UInt16 const face = faces != nullptr ? faces[i] : static_cast<UInt16>(i);
            for(UInt16 const vertex : _mesh.faces[face].index)
            {
                UInt16 number = _numbers[vertex];
                if(number == Unused)
                {
                    number = _numbers[vertex] = used;
                    _used[used++] = vertex;
                }
                _lastFaces[number] = face;
                *entry++ = number;
            }
        }
        _usedCount = used;
        return index;
    }

    UnrecordedRefPtr<GeoPnt3fProperty> positions() const
    {
        UnrecordedRefPtr<GeoPnt3fProperty> property(GeoPnt3fProperty::create());
        auto &values = property->editValues();
        values.resize(_usedCount);
        for(std::size_t i = 0; i < _usedCount; ++i)
        {
            float const *const at = _mesh.vertices[_used[i]];
            Pnt3f const point(at[0], at[1], at[2]);
            values[i] = _matrix != nullptr ? *_matrix * point : point;
        }
        return property;
    }

    // A vertex of several faces gets the normal of the last one. Other faces need none. So the
    // vertices are taken in blocks, and those faces that are the last of a vertex of the block are
    // given to the reader as a mesh of their own.
    UnrecordedRefPtr<GeoVec3fProperty> normals() const
    {
        UnrecordedRefPtr<GeoVec3fProperty> property(GeoVec3fProperty::create());
        auto &values = property->editValues();
        values.resize(_usedCount);
        constexpr std::size_t Width = 256;
        Lib3dsFace faces[Width];
        Vec3f normals[Width];
        UInt16 faceOf[Width]; // in `faces`
        Lib3dsMesh part = _mesh;
        part.faces = faces;
        for(std::size_t begin = 0; begin < _usedCount; begin += Width)
        {
            std::size_t const count = std::min(Width, _usedCount - begin);
            UInt16 const *const last = _lastFaces.data() + begin;
            part.nfaces = 0;
            for(std::size_t i = 0; i < count; ++i)
            {
                if(i == 0 || last[i] != last[i - 1])
                    faces[part.nfaces++] = _mesh.faces[last[i]];
                faceOf[i] = static_cast<UInt16>(part.nfaces - 1);
            }
            lib3ds_mesh_calculate_face_normals(&part, reinterpret_cast<float(*)[3]>(normals));
            place_normals(normals, part.nfaces, _matrix);
            for(std::size_t i = 0; i < count; ++i)
                values[begin + i] = normals[faceOf[i]];
        }
        return property;
    }

    UnrecordedRefPtr<GeoVec2fProperty> texCoords() const
    {
        UnrecordedRefPtr<GeoVec2fProperty> property(GeoVec2fProperty::create());
        auto &values = property->editValues();
        values.resize(_usedCount);
        for(std::size_t i = 0; i < _usedCount; ++i)
            values[i] = Vec2f(_mesh.texcos[_used[i]][0], _mesh.texcos[_used[i]][1]);
        return property;
    }

    Meshes3DS &_meshes;
    Lib3dsMesh const &_mesh;
    Matrix const *_matrix;
    MemArray<UInt16> &_numbers; // of the mesh's vertices in the part; unused between parts
    // Of the vertices of the part:
    MemArray<UInt16> &_used; // numbers in the mesh
    MemArray<UInt16> &_lastFaces;
    std::size_t _usedCount = 0;
};

Meshes3DS::Meshes3DS(Lib3dsFile const &file)
    : _materials(static_cast<std::size_t>(file.nmaterials))
    , _isUsed(_materials.size())
{
}

UInt64 Meshes3DS::announce(Lib3dsMesh const *mesh)
{
    auto const [entry, isNew] = _parts.try_emplace(mesh, *mesh);
    MeshParts3DS::List<MeshParts3DS::Part> const &parts = entry->second.parts();
    for(std::size_t i = 0; isNew && i < parts.size(); ++i)
    {
        if(parts[i].material >= 0)
            _isUsed[static_cast<std::size_t>(parts[i].material)] = 1;
    }
    UInt64 const groups = UInt64(1) + _materials.size() + 1;
    return groups + parts.size();
}

Meshes3DS::NodePtr Meshes3DS::convert(Lib3dsMesh *mesh, Matrix const *matrix)
{
    MeshParts3DS const &sorted = _parts.at(mesh);
    PartBuilder builder(*this, *mesh, matrix);
    NodePtr root = make_group_node();
    auto part = sorted.parts().begin();
    for(std::size_t list = 0; list <= _materials.size(); ++list)
    {
        bool const isLast = list == _materials.size();
        Material *const material = isLast ? nullptr : _materials[list].get();
        Int32 const wanted = isLast ? -1 : static_cast<Int32>(list);
        NodePtr const group = make_group_node();
        for(; part != sorted.parts().end() && part->material == wanted; ++part)
        {
            UInt16 const *const faces =
                sorted.faces().empty() ? nullptr : &sorted.faces()[part->begin];
            group->addChild(builder.build(faces, part->end - part->begin, material));
        }
        root->addChild(group);
    }
    return root;
}
} // namespace OSG
