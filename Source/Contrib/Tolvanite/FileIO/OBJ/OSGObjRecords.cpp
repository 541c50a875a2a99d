#include "OSGObjRecords.h"

namespace OSG
{
ObjRecords::ObjRecords()
    : _meshes(1)
{
}

void ObjRecords::endFace()
{
    _faceSizes.push_back(static_cast<UInt32>(_tiePoints.size() - _faceBegin));
    _faceBegin = _tiePoints.size();
}

void ObjRecords::startMesh()
{
    if(_meshes.back().firstFace < _faceSizes.size())
        _meshes.push_back({_faceSizes.size(), _tiePoints.size(), NoMaterial});
}

namespace
{
// Frees memory once only a quarter of the capacity is used. The copies then add up to less than the
// largest size that the array ever had.
template <class Vector>
void cut(Vector &values, std::size_t size)
{
    values.erase(values.begin() + static_cast<std::ptrdiff_t>(size), values.end());
    if(size < values.capacity() / 4)
        values.shrink_to_fit();
}
} // namespace

void ObjRecords::dropNewestMesh()
{
    cut(_tiePoints, _meshes.back().firstTiePoint);
    cut(_faceSizes, _meshes.back().firstFace);
    cut(_meshes, _meshes.size() - 1);
}

ObjFaces ObjRecords::faces(std::size_t mesh) const
{
    Mesh const &first = stored(mesh);
    std::size_t const faceEnd = mesh == 0 ? _faceSizes.size() : stored(mesh - 1).firstFace;
    std::size_t const tiePointEnd = mesh == 0 ? _tiePoints.size() : stored(mesh - 1).firstTiePoint;
    return ObjFaces({_faceSizes.data() + first.firstFace, faceEnd - first.firstFace},
                    {_tiePoints.data() + first.firstTiePoint, tiePointEnd - first.firstTiePoint});
}
} // namespace OSG
