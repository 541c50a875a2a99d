#pragma once

/// \file
/// Settings of primitive indices for the time of a test.

#include "OSGPrimitiveIndexUse.h"

namespace OSG::Test
{
/// Geometries of any size have an index until it ends.
class IndexSettings
{
  public:
    using Building = PrimitiveIndexSettings::Building;

    explicit IndexSettings(Building building)
        : _before(PrimitiveIndexUse::getSettings())
    {
        set(building);
    }
    ~IndexSettings() { PrimitiveIndexUse::setSettings(_before); }
    IndexSettings(IndexSettings const &) = delete;
    IndexSettings &operator=(IndexSettings const &) = delete;

    static void set(Building building) { PrimitiveIndexUse::setSettings({1, 1, building}); }

  private:
    PrimitiveIndexSettings _before;
};
} // namespace OSG::Test
