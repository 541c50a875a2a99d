#include "OSGObjRecords.h"

#include <algorithm>
#include <cstring>

namespace OSG
{
// --- pieces and faces ---

void ObjPlainFaces::unpack(ObjPiece const &piece)
{
    sizes.resize(piece.faceCount);
    piece.chunk->unpackSizes(piece.firstFace, sizes);
    corners.resize(piece.cornerCount);
    ObjNumberVector indices(piece.cornerCount);
    for(ObjIndexKind kind : {ObjPositionIndex, ObjTexCoordIndex, ObjNormalIndex})
    {
        piece.chunk->unpack(kind, piece.firstCorner, indices);
        for(std::size_t i = 0; i < indices.size(); ++i)
            corners[i].index[kind] = indices[i];
    }
}

ObjFaces::Iterator::Iterator(ObjFaces const &faces)
    : _faces(faces)
    , _piece(faces.newestPiece())
{
    unpack();
}

void ObjFaces::Iterator::unpack()
{
    _atEnd = _piece.chunk == nullptr;
    if(_atEnd)
        return;
    _plain.unpack(_piece);
    _face = _piece.faceCount - 1;
    _behind = _piece.cornerCount;
}

ObjFaces::Iterator &ObjFaces::Iterator::operator++()
{
    _behind -= static_cast<std::size_t>(_plain.sizes[_face]);
    if(_face-- == 0)
    {
        _piece = _faces.pieceBefore(_piece);
        unpack();
    }
    return *this;
}

ObjPiece ObjFaces::newestPiece() const
{
    if(empty())
        return {};
    auto const &chunks = _records._chunks;
    // Runs are taken newest first, so the last chunk is mostly the one.
    if(chunks.back().firstFace < _faceEnd)
        return pieceOf(chunks.size() - 1, _faceEnd, _cornerEnd);
    auto const behind = std::partition_point(chunks.begin(), chunks.end(),
                                             [this](ObjRecords::PlacedChunk const &chunk)
                                             { return chunk.firstFace < _faceEnd; });
    return pieceOf(static_cast<std::size_t>(behind - chunks.begin()) - 1, _faceEnd, _cornerEnd);
}

ObjPiece ObjFaces::pieceBefore(ObjPiece const &piece) const
{
    ObjRecords::PlacedChunk const &chunk = _records._chunks[piece.place];
    return chunk.firstFace > _faceBegin
               ? pieceOf(piece.place - 1, chunk.firstFace, chunk.firstCorner)
               : ObjPiece();
}

/// The faces of a chunk that are not before the run. The others end where they are told to.
ObjPiece ObjFaces::pieceOf(std::size_t place, std::size_t faceEnd, std::size_t cornerEnd) const
{
    ObjRecords::PlacedChunk &chunk = _records._chunks[place];
    std::size_t const face = std::max(_faceBegin, chunk.firstFace);
    std::size_t const corner = std::max(_cornerBegin, chunk.firstCorner);
    return {&chunk.faces,
            place,
            face - chunk.firstFace,
            faceEnd - face,
            corner - chunk.firstCorner,
            cornerEnd - corner};
}

namespace
{
/// Writes faces of `Size` corners in the reverse order. A size that the compiler knows makes a
/// loop of plain copies.
template <std::size_t Size>
void put_reversed(std::span<Int32 const> corners, UInt32 *to)
{
    for(std::size_t at = corners.size(); at > 0; to += Size)
    {
        at -= Size;
        for(std::size_t i = 0; i < Size; ++i)
            to[i] = static_cast<UInt32>(corners[at + i]);
    }
}

/// Numbers that are copied in one piece.
constexpr std::size_t CopiedAtOnce = 4;

/// Writes faces in the reverse order. While there is room, a copy takes what lies behind a face
/// too, since a copy of a fixed size needs no loop; the next face is written over it. The last
/// `CopiedAtOnce` of the corners are only room.
void put_reversed(std::span<Int32 const> corners, std::span<Int32 const> sizes, UInt32 *to)
{
    std::size_t behind = corners.size() - CopiedAtOnce;
    for(std::size_t face = sizes.size(); face-- > 0;)
    {
        std::size_t const size = static_cast<std::size_t>(sizes[face]);
        bool const hasRoom = behind >= size + CopiedAtOnce;
        behind -= size;
        Int32 const *const from = &corners[behind];
        for(std::size_t i = 0; hasRoom && i < size; i += CopiedAtOnce)
            std::memcpy(to + i, from + i, CopiedAtOnce * sizeof(UInt32));
        if(!hasRoom)
            std::copy_n(from, size, to);
        to += size;
    }
}
} // namespace

void ObjFaces::appendSizes(std::vector<UInt32, MemAllocator<UInt32>> &to) const
{
    ObjNumberVector &sizes = _records._roomForSizes;
    to.reserve(to.size() + size());
    for(ObjPiece piece = newestPiece(); piece.chunk != nullptr; piece = pieceBefore(piece))
    {
        if(piece.chunk->hasOneSize())
        {
            to.insert(to.end(), piece.faceCount, static_cast<UInt32>(piece.chunk->leastSize()));
            continue;
        }
        sizes.resize(piece.faceCount);
        piece.chunk->unpackSizes(piece.firstFace, sizes);
        to.insert(to.end(), sizes.rbegin(), sizes.rend());
    }
}

void ObjFaces::takeIndices(ObjIndexKind kind, std::vector<UInt32, MemAllocator<UInt32>> &to)
{
    // Runs may be small and many, so that room of their own would take longer than the indices.
    ObjNumberVector &corners = _records._roomForCorners;
    ObjNumberVector &sizes = _records._roomForSizes;
    to.reserve(to.size() + tiePointCount());
    // Room is given back in the reverse order of packing.
    bool const isNewest = _faceEnd == _records._packedFaces;
    for(ObjPiece piece = newestPiece(); piece.chunk != nullptr; piece = pieceBefore(piece))
    {
        ObjChunk &chunk = *piece.chunk;
        corners.resize(piece.cornerCount + CopiedAtOnce);
        std::span<Int32> const ofPiece(corners.data(), piece.cornerCount);
        chunk.unpack(kind, piece.firstCorner, ofPiece);
        to.resize(to.size() + piece.cornerCount);
        UInt32 *const reversed = to.data() + to.size() - piece.cornerCount;
        if(chunk.hasOneSize() && chunk.leastSize() == 3)
        {
            put_reversed<3>(ofPiece, reversed);
        }
        else if(chunk.hasOneSize() && chunk.leastSize() == 4)
        {
            put_reversed<4>(ofPiece, reversed);
        }
        else
        {
            sizes.resize(piece.faceCount);
            chunk.unpackSizes(piece.firstFace, sizes);
            put_reversed(corners, sizes, reversed);
        }
        if(isNewest && piece.firstFace == 0)
            chunk.release(kind, _records._room);
    }
}

// --- records ---

ObjRecords::ObjRecords()
    : _meshes(1)
{
}

void ObjRecords::addFaces(std::span<Int32 const> sizes,
                          Int32 const *const (&indices)[ObjIndexKindCount], std::size_t corners)
{
    _openSizes.insert(_openSizes.end(), sizes.begin(), sizes.end());
    _open.add(indices, corners);
    _faceBegin = _open.count;
    if(_faceBegin >= ChunkSize || _openSizes.size() >= ChunkSize)
        closeChunk();
}

void ObjRecords::closeChunk()
{
    if(_openSizes.empty())
        return;
    _chunks.push_back({_packedFaces, _packedCorners, ObjChunk(_openSizes, _open, _room)});
    _packedFaces += _openSizes.size();
    _packedCorners += _open.count;
    _openSizes.clear();
    // A face may be very long. Its room is not kept.
    if(_open.count > 4 * ChunkSize)
        _open = ObjOpenCorners();
    _open.clear();
    _faceBegin = 0;
}

void ObjRecords::startMesh()
{
    if(_meshes.back().firstFace < faceCount())
        _meshes.push_back({faceCount(), cornerCount(), NoMaterial});
}

ObjFaces ObjRecords::faces(std::size_t mesh)
{
    closeChunk();
    _open = ObjOpenCorners();
    Mesh const &first = stored(mesh);
    std::size_t const faceEnd = mesh == 0 ? _packedFaces : stored(mesh - 1).firstFace;
    std::size_t const cornerEnd = mesh == 0 ? _packedCorners : stored(mesh - 1).firstCorner;
    return ObjFaces(*this, first.firstFace, faceEnd, first.firstCorner, cornerEnd);
}

void ObjRecords::dropNewestMesh()
{
    closeChunk();
    _packedFaces = _meshes.back().firstFace;
    _packedCorners = _meshes.back().firstCorner;
    while(!_chunks.empty() && _chunks.back().firstFace >= _packedFaces)
    {
        _chunks.back().faces.release(_room);
        _chunks.pop_back();
    }
    _meshes.pop_back();
    // The copies add up to less than the largest size that the list ever had.
    if(_meshes.size() < _meshes.capacity() / 4)
        _meshes.shrink_to_fit();
}
} // namespace OSG
