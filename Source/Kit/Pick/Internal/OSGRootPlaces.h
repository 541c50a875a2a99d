#pragma once

#include "OSGHomogeneous.h"
#include "OSGMatrix.h"

namespace OSG
{
/// Carries points of a geometry to the space of the root, in double precision.
class RootPlaces
{
  public:
    explicit RootPlaces(Matrix const &toRoot)
    {
        for(UInt32 column = 0; column < 4; ++column)
            for(UInt32 row = 0; row < 4; ++row)
                _toRoot[column][row] = toRoot[column][row];
    }

    Pnt3d of(Pnt3f const &point) const
    {
        Vec4d const image = homogeneous_image(_toRoot, Pnt3d(point[0], point[1], point[2]));
        if(image[3] == 1)
            return Pnt3d(image[0], image[1], image[2]);
        return Pnt3d(image[0] / image[3], image[1] / image[3], image[2] / image[3]);
    }

  private:
    Matrix4d _toRoot;
};
} // namespace OSG
