#pragma once

/// \file
/// The hits that a walk records, in little memory, and the orders in which they are listed.

#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGMatrix.h"
#include "OSGMemManager.h"

namespace OSG
{
class Node;

/// Hits refer to visits: what the hits of one geometry at one place of the walk have in common is
/// stored once. Orders are lists of places of records.
class OSG_CONTRIBTOLVANITE_API SelectionRecords
{
  public:
    template <class T>
    using List = std::vector<T, MemAllocator<T>>;
    using Order = List<UInt32>;
    using Path = std::vector<Node *>;

    struct Visit
    {
        Node *node;
        UInt32 selectionType;
        UInt32 path; ///< see pathOf
        Matrix matrix;
    };
    struct Record
    {
        Real32 distance; ///< never NaN
        Int32 index;
        UInt32 visit;
        bool hasPoint;
        Pnt3f point;
        Vec3f normal;
    };

    /// Forgets everything. Memory beyond a fixed size is freed.
    void clear();

    // --- recording ---
    /// Begins the visit that the next records belong to.
    void addVisit(Node *node, UInt32 selectionType, Matrix const &matrix, Path const &path);
    /// The record's visit is set to the last one. It is listed before or after those that are
    /// recorded already.
    void addFirst(Record record) { add(record, _first); }
    void addLast(Record record) { add(record, _last); }

    // --- reading ---
    Record const &record(UInt32 place) const { return _records[place]; }
    Visit const &visitOf(Record const &record) const { return _visits[record.visit]; }
    Path const &pathOf(Visit const &visit) const { return _paths[visit.path]; }

    /// Asks the processor for what will be read soon by a reader that is at `i` of an order.
    void fetchAhead(Order const &order, std::size_t i) const
    {
        constexpr std::size_t Far = 16;
        constexpr std::size_t Near = 8;
        if(i + Far < order.size())
            __builtin_prefetch(&_records[order[i + Far]]);
        if(i + Near >= order.size())
            return;
        Visit const *const visit = &visitOf(_records[order[i + Near]]);
        __builtin_prefetch(visit);
        __builtin_prefetch(&visit->matrix[3]);
    }

    // --- orders ---
    /// Unsorted.
    Order recorded() const;
    /// Ascending by distance. Records of equal distance keep the order of recorded().
    Order sorted() const;
    /// The first of each node in the order of sorted().
    Order nearestOfNodes() const;
    /// The last of each node there, descending by distance. Records of equal distance keep the
    /// order of sorted().
    Order farthestOfNodes() const;

  private:
    void add(Record &record, Order &order);
    Order numbersOfNodes() const;

    List<Visit> _visits;
    List<Record> _records;
    Order _first; // places of records; the last of them is listed first
    Order _last;
    List<Path> _paths = {Path()};
};
} // namespace OSG
