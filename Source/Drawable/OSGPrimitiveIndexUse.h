#pragma once

/// \file
/// When a query gets an index, and when an index is built and dropped.

#include "OSGPrimitiveIndex.h"

namespace OSG
{
class PrimitiveIndexRecord;
struct PrimitiveIndexState;

/// Settings of all indices. They may be changed while no query runs; they apply from the next query
/// on.
struct PrimitiveIndexSettings
{
    enum class Building : UInt8
    {
        /// Once plain loops have taken about the time of one that goes through everything.
        Automatic,
        AtOnce, ///< before the first query; for tests
        Sorted  ///< before the first query, each primitive at a place of its own; for tests
    };

    /// Geometries with fewer vertices have none. Searches of 72 triangles take 0.3 to 0.7 of the
    /// time of the plain loop, those of 18 about the same time.
    UInt32 minTriangleCorners = 3 * 64;
    UInt32 minOtherCorners = 10000;
    Building building = Building::Automatic;
};

/// What the indices of this process have done. The numbers are read one by one; they fit together
/// while no query runs.
struct PrimitiveIndexStatistics
{
    UInt64 built;   ///< indices built
    UInt64 dropped; ///< indices destroyed
    UInt64 bytes;   ///< that indices hold now
    UInt64 served;  ///< geometries answered through an index
};

/// One search in one geometry, from the choice of the way to the end of the search.
///
///   PrimitiveIndexUse use(geometry, IndexedKind::Triangles);
///   if(PrimitiveIndex const *const index = use.getIndex())
///       ...search in it...
///   else
///       ...plain loop, then use.addWork(primitives tested) or use.addFullLoop()...
///
/// An index is built as the settings say, by the query that finds it due. It serves as long as the
/// geometry's types, lengths, positions and position index are the same objects with the same
/// values (GeoProperty::getStamp), and none of them has open edits: a geometry that was made or
/// edited is searched by plain loops until commitChanges. It is dropped at the first query that
/// finds other values, at a commit of the geometry's own arrays, and with the geometry. Without
/// memory for it, queries are answered by plain loops. Copies of a geometry, other aspects' copies
/// too, have indices of their own.
///
/// Two threads may query a geometry at once while nobody edits it. One of them builds; meanwhile
/// the others go on with what there is.
class OSG_DRAWABLE_API PrimitiveIndexUse
{
  public:
    PrimitiveIndexUse(Geometry const &geometry, IndexedKind kind);
    PrimitiveIndexUse(PrimitiveIndexUse const &) = delete;
    PrimitiveIndexUse &operator=(PrimitiveIndexUse const &) = delete;
    ~PrimitiveIndexUse();

    /// The index to search in; null for the plain loop.
    PrimitiveIndex const *getIndex() const { return _index; }
    /// Says how many primitives a plain loop has tested that ended early.
    void addWork(UInt32 primitives) { _work += primitives; }
    /// Says that a plain loop has gone through everything.
    void addFullLoop() { _work += _corners; }

    static PrimitiveIndexSettings getSettings();
    static void setSettings(PrimitiveIndexSettings const &settings);
    static PrimitiveIndexStatistics getStatistics();

  private:
    PrimitiveIndexState *_state = nullptr;
    PrimitiveIndex const *_index = nullptr;
    UInt64 _work = 0;
    UInt32 _corners = 0;
};
} // namespace OSG
