#pragma once

#include <unordered_map>
#include <vector>

#include "OSGDrawMesh.h"

namespace OSG
{
/// Shapes by number. Nothing is counted: numbers are kept only as long as their shapes are drawn.
class OSG_STATE_API ShapeTable
{
  public:
    ShapeTable();

    UInt32 numberOf(DrawShape const *shape);
    std::vector<DrawShape const *> const &getShapes() const { return _shapes; }
    /// No other table of the process, nor another state of this one, has the same.
    UInt64 getNumber() const { return _number; }
    void clear();

  private:
    void renew();

    std::vector<DrawShape const *> _shapes;
    std::unordered_map<DrawShape const *, UInt32> _numbers;
    UInt64 _number = 0;
};
} // namespace OSG
