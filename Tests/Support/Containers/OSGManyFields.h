#pragma once

#include "OSGManyFieldsBase.h"

namespace OSG
{
/// A container of the tests with a field of every kind.
class ManyFields : public ManyFieldsBase
{
  protected:
    ManyFields() = default;
    ManyFields(ManyFields const &) = default;
    ~ManyFields() override = default;

    friend Pattern;
};
} // namespace OSG
