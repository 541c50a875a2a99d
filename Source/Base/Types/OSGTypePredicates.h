#pragma once

#include "OSGTypeBase.h"

namespace OSG::TypePredicates
{
/// True for one type and for each of its ancestors. For the standard algorithms over lists of
/// types.
class IsBaseOf
{
  public:
    explicit IsBaseOf(TypeBase const &type)
        : _type(type)
    {
    }
    /// False for null.
    bool operator()(TypeBase const *candidate) const
    {
        return candidate != nullptr && _type.isDerivedFrom(*candidate);
    }

  private:
    TypeBase const &_type;
};
} // namespace OSG::TypePredicates
