#pragma once

/// \file
/// The data that a read of an OBJ file collects before nodes are made: faces and material runs
/// (meshes), and the arrays that vertices go to.

#include <cstddef>
#include <span>
#include <vector>

#include "OSGObjChunk.h"
#include "OSGVector.h"

namespace OSG
{
/// The arrays that vertices are appended to. Not owned: they belong to the properties that the
/// geometries share.
struct ObjVertexArrays
{
    std::vector<Pnt3f, MemAllocator<Pnt3f>> &positions;
    std::vector<Vec2f, MemAllocator<Vec2f>> &texCoords;
    std::vector<Vec3f, MemAllocator<Vec3f>> &normals;
};

/// The faces of a chunk that belong to one material run.
struct ObjPiece
{
    ObjChunk *chunk = nullptr;
    std::size_t place = 0;     ///< of the chunk in the file
    std::size_t firstFace = 0; ///< within the chunk, like `firstCorner`
    std::size_t faceCount = 0;
    std::size_t firstCorner = 0;
    std::size_t cornerCount = 0;
};

/// The sizes and corners of a piece, unpacked.
struct ObjPlainFaces
{
    ObjNumberVector sizes;
    ObjTiePointVector corners;

    void unpack(ObjPiece const &piece);
};

class ObjRecords;

/// The faces of a material run, newest first: for(std::span<ObjTiePoint const> face : faces). The
/// corners of a face are in the order of its line. Valid until the records change.
class OSG_CONTRIBTOLVANITE_API ObjFaces
{
  public:
    struct End
    {
    };
    /// Unpacks one chunk after the other.
    class OSG_CONTRIBTOLVANITE_API Iterator
    {
      public:
        explicit Iterator(ObjFaces const &faces);

        std::span<ObjTiePoint const> operator*() const
        {
            std::size_t const size = static_cast<std::size_t>(_plain.sizes[_face]);
            return {_plain.corners.data() + _behind - size, size};
        }
        Iterator &operator++();
        bool operator==(End) const { return _atEnd; }

      private:
        void unpack();

        ObjFaces const &_faces;
        ObjPiece _piece;
        ObjPlainFaces _plain;
        std::size_t _face = 0;   ///< within the piece
        std::size_t _behind = 0; ///< the corner behind the face
        bool _atEnd = false;
    };

    Iterator begin() const { return Iterator(*this); }
    End end() const { return {}; }

    bool empty() const { return _faceBegin == _faceEnd; }
    std::size_t size() const { return _faceEnd - _faceBegin; }
    /// Number of corners of all faces.
    std::size_t tiePointCount() const { return _cornerEnd - _cornerBegin; }

    /// The piece with the newest faces, and the one with the faces before a piece; `chunk` is null
    /// where there are none.
    ObjPiece newestPiece() const;
    ObjPiece pieceBefore(ObjPiece const &piece) const;

    /// Appends the sizes of the faces.
    void appendSizes(std::vector<UInt32, MemAllocator<UInt32>> &to) const;
    /// Appends the indices of a kind, face by face, -1 as the largest number. Those of the newest
    /// run are freed where no other run needs them; they cannot be read again. The positions have
    /// to be taken last.
    void takeIndices(ObjIndexKind kind, std::vector<UInt32, MemAllocator<UInt32>> &to);

  private:
    friend class ObjRecords;
    ObjFaces(ObjRecords &records, std::size_t faceBegin, std::size_t faceEnd,
             std::size_t cornerBegin, std::size_t cornerEnd)
        : _records(records)
        , _faceBegin(faceBegin)
        , _faceEnd(faceEnd)
        , _cornerBegin(cornerBegin)
        , _cornerEnd(cornerEnd)
    {
    }
    ObjPiece pieceOf(std::size_t place, std::size_t faceEnd, std::size_t cornerEnd) const;

    ObjRecords &_records;
    std::size_t _faceBegin; ///< faces and corners are counted over the whole file
    std::size_t _faceEnd;
    std::size_t _cornerBegin;
    std::size_t _cornerEnd;
};

/// Faces and material runs (meshes) of a file, in the order of the file. Faces are kept in packed
/// chunks: a corner takes about two bytes for each kind of index that it has, a face none where
/// neighbours have the same number of corners, a mesh 24. While a file is read, there is always a
/// mesh for the next face.
class OSG_CONTRIBTOLVANITE_API ObjRecords
{
  public:
    static constexpr Int32 NoMaterial = -1;
    /// A chunk ends with the face, or with the faces added together, that reach this number of
    /// corners, or of faces.
    static constexpr std::size_t ChunkSize = 4096;

    ObjRecords();

    // --- collecting ---
    void addTiePoint(ObjTiePoint const &tiePoint) { _open.add(tiePoint); }
    /// Makes a face of the corners that were added since the last face. It may be empty.
    void endFace()
    {
        _openSizes.push_back(static_cast<Int32>(_open.count - _faceBegin));
        _faceBegin = _open.count;
        if(_faceBegin >= ChunkSize || _openSizes.size() >= ChunkSize)
            closeChunk();
    }
    /// Adds whole faces: their sizes, and the indices of all their corners by kind; null for a kind
    /// that they do not have. No face may be under way.
    void addFaces(std::span<Int32 const> sizes, Int32 const *const (&indices)[ObjIndexKindCount],
                  std::size_t corners);
    /// Starts another mesh, unless the current mesh has no face.
    void startMesh();
    /// Sets the material slot of the current mesh. The caller decides what slots mean.
    void setMaterial(Int32 slot) { _meshes.back().material = slot; }

    // --- reading; mesh 0 is the last one in the file ---
    std::size_t meshCount() const { return _meshes.size(); }
    /// Packs the faces that were added last.
    ObjFaces faces(std::size_t mesh);
    Int32 material(std::size_t mesh) const { return stored(mesh).material; }

    // --- removing ---
    /// Removes mesh 0, so that the numbers of all others decrease by one. Frees memory from time to
    /// time. There must be a mesh. Nothing may be added afterwards.
    void dropNewestMesh();

  private:
    friend class ObjFaces;

    struct Mesh
    {
        std::size_t firstFace = 0;
        std::size_t firstCorner = 0;
        Int32 material = NoMaterial;
    };
    struct PlacedChunk
    {
        std::size_t firstFace;
        std::size_t firstCorner;
        ObjChunk faces;
    };

    Mesh const &stored(std::size_t mesh) const { return _meshes[_meshes.size() - 1 - mesh]; }
    void closeChunk();
    std::size_t faceCount() const { return _packedFaces + _openSizes.size(); }
    std::size_t cornerCount() const { return _packedCorners + _open.count; }

    ObjChunkRoom _room;
    std::vector<PlacedChunk, MemAllocator<PlacedChunk>> _chunks;
    std::size_t _packedFaces = 0; ///< in chunks
    std::size_t _packedCorners = 0;
    ObjNumberVector _openSizes; ///< of faces that are not packed yet
    ObjOpenCorners _open;       ///< their corners, and those of the face that is being collected
    std::size_t _faceBegin = 0; ///< first corner of the face that is being collected
    std::vector<Mesh, MemAllocator<Mesh>> _meshes;
    ObjNumberVector _roomForCorners; ///< of a chunk that is being unpacked
    ObjNumberVector _roomForSizes;
};
} // namespace OSG
