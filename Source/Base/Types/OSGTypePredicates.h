#pragma once

#include "OSGTypeBase.h"

namespace OSG::TypePredicates
{
/// Picks the bases of one type, for use with the standard algorithms over lists of types: true for
/// the type itself and for every type on the way to its root.
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
