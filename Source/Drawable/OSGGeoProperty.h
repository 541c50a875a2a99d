#pragma once

#include "OSGGeoPropertyBase.h"

namespace OSG
{
/// An array of any kind.
class OSG_DRAWABLE_API GeoProperty : public GeoPropertyBase
{
  protected:
    GeoProperty() = default;
    GeoProperty(GeoProperty const &) = default;
    ~GeoProperty() override;

    friend Pattern;
};
} // namespace OSG
