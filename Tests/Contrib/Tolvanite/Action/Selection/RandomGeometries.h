#pragma once

/// \file
/// Geometries and volumes that are unkind to an index: corners on planes, copies, slivers, numbers
/// that are not finite, far apart sizes.

#include <limits>

#include "GeometryBuilders.h"
#include "OSGFrustum.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
class RandomGeometries
{
  public:
    explicit RandomGeometries(std::uint64_t seed)
        : _random(seed)
    {
    }

    RandomNumbers &random() { return _random; }

    /// Up to some hundred parts within about 4 `scale` of the origin.
    GeometryParts geometry()
    {
        GeometryParts parts;
        addPrimitives(parts);
        addPositions(parts);
        if(_random.below(3) != 0)
            addIndex(parts);
        if(_random.below(2) == 0)
        {
            for(std::size_t i = 0; i < parts.positions.size(); ++i)
                parts.normals.push_back(_random.below(5) == 0 ? Vec3f() : _random.vector());
        }
        if(!parts.normals.empty())
            parts.normalIndex = parts.index;
        return parts;
    }

    /// Changes one position to something else.
    Pnt3f position() { return _integers ? gridPoint() : point(); }

    Frustum volume()
    {
        Frustum volume = unitBox();
        switch(_random.below(8))
        {
        case 0: // along the grid that corners may lie on
            move(volume, scaling(whole(1, 6), whole(1, 6), whole(1, 6)));
            move(volume, translation(whole(-4, 3), whole(-4, 3), whole(-3, 4)));
            break;
        case 1: // around everything
            move(volume, translation(-0.5f, -0.5f, 0.5f));
            move(volume, scaling(40, 40, 40));
            break;
        case 2: // a ray, more or less
            move(volume, translation(-0.5f, -0.5f, 0.5f));
            move(volume, scaling(0.05f, 0.05f, 30));
            turn(volume);
            move(volume, shift(3));
            break;
        case 3: // without an extent, so its planes have no normals
            move(volume, scaling(_random.real(0, 3), 0, _random.real(0, 3)));
            break;
        case 4: // turned inside out
            move(volume, scaling(-3, 3, 3));
            move(volume, shift(2));
            break;
        default:
            solid(volume);
        }
        move(volume, scaling(_scale, _scale, _scale));
        return volume;
    }

    Real32 scale() const { return _scale; }

  private:
    static Frustum unitBox()
    {
        return Frustum({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, -1}, {1, 0, -1},
                       {1, 1, -1}, {0, 1, -1});
    }
    static void move(Frustum &volume, Matrix const &by) { volume.multFull(by); }
    void turn(Frustum &volume)
    {
        Vec3f const axis = _random.vector();
        move(volume, rotation(axis * (1.f / axis.length()), _random.real(-3.f, 3.f)));
    }
    Matrix shift(Real32 far)
    {
        Vec3f const by = _random.vector() * far;
        return translation(by[0], by[1], by[2]);
    }
    Real32 whole(int low, int high)
    {
        return static_cast<Real32>(low + static_cast<int>(_random.below(UInt32(high - low + 1))));
    }

    void solid(Frustum &volume)
    {
        move(volume, translation(-0.5f, -0.5f, 0.5f));
        Matrix project;
        project[2][3] = _random.real(-0.8f, 0.8f);
        move(volume, project);
        move(volume,
             scaling(_random.real(0.3f, 8.f), _random.real(0.3f, 8.f), _random.real(0.3f, 8.f)));
        if(_random.below(2) == 0)
            turn(volume);
        move(volume, shift(3));
    }

    void addPrimitives(GeometryParts &parts)
    {
        UInt32 const manner = _random.below(4);
        UInt32 const count = manner < 2 ? 1 + _random.below(2) : 1 + _random.below(60);
        UInt32 const oneType = _random.below(10);
        for(UInt32 i = 0; i < count; ++i)
        {
            UInt32 const type = manner == 0   ? UInt32(TrianglesPrimitive)
                                : manner == 1 ? oneType
                                              : _random.below(10);
            // A few have so many that their trees are some levels high.
            UInt32 const longest = _random.below(30) == 0 ? 9000 : 400;
            UInt32 const length = _random.below(manner < 2 ? longest : 12);
            parts.types.push_back(type);
            parts.lengths.push_back(manner == 0 ? length / 3 * 3 : length);
            _vertices += parts.lengths.back();
        }
    }

    void addPositions(GeometryParts &parts)
    {
        Real32 const scales[] = {1.f, 1.f, 1.f, 1.f, 1e-20f, 1e-42f, 1e10f, 1e19f};
        _scale = scales[_random.below(8)];
        _integers = _random.below(3) == 0;
        _isFlat = _random.below(5) == 0;
        _size = _random.below(2) == 0 ? _random.real(0.05f, 0.5f) : 4.f;
        UInt32 const count = 3 + _vertices / (1 + _random.below(3));
        _vertices = 0;
        for(UInt32 i = 0; i < count; ++i)
            parts.positions.push_back(position());
        // Copies, and corners that fall together.
        for(UInt32 i = _random.below(2) * count / 3; i > 0; --i)
            parts.positions[_random.below(count)] = parts.positions[_random.below(count)];
        if(_random.below(4) == 0)
            spoil(parts.positions);
    }

    void spoil(std::vector<Pnt3f> &positions)
    {
        Real32 const odd[] = {std::numeric_limits<Real32>::quiet_NaN(),
                              std::numeric_limits<Real32>::infinity(),
                              -std::numeric_limits<Real32>::infinity(),
                              1e30f,
                              -3e38f,
                              1e-45f};
        UInt32 const count = static_cast<UInt32>(positions.size());
        for(UInt32 i = 1 + _random.below(3); i > 0; --i)
            positions[_random.below(count)][_random.below(3)] = odd[_random.below(6)];
    }

    // Neighbours in the array are near one another where `_size` is small.
    Pnt3f point()
    {
        if(_random.below(9) == 0)
            _centre = _random.point(-4.f, 4.f);
        Pnt3f at = _centre + _random.vector() * _size;
        if(_isFlat)
            at[2] = -0.5f;
        return Pnt3f() + at.subZero() * _scale;
    }
    Pnt3f gridPoint()
    {
        Real32 const x = whole(-4, 4);
        Real32 const y = whole(-4, 4);
        return Pnt3f(x * _scale, y * _scale, (_isFlat ? -1.f : whole(-4, 4)) * _scale);
    }

    void addIndex(GeometryParts &parts)
    {
        UInt32 vertices = 0;
        for(UInt32 length : parts.lengths)
            vertices += length;
        UInt32 const count = static_cast<UInt32>(parts.positions.size());
        UInt32 const beyond = _random.below(4) == 0 ? 3 : 0;
        bool const isSpread = _random.below(2) == 0;
        UInt32 const left = _random.below(6) == 0 ? 1 + _random.below(vertices + 1) : 0;
        for(UInt32 i = left; i < vertices; ++i)
            parts.index.push_back(isSpread ? _random.below(count + beyond)
                                           : (i + _random.below(4)) % (count + beyond));
    }

    RandomNumbers _random;
    UInt32 _vertices = 0;
    Real32 _scale = 1.f;
    Real32 _size = 1.f;
    bool _integers = false;
    bool _isFlat = false;
    Pnt3f _centre;
};
} // namespace OSG::Test
