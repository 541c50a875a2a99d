#pragma once

/// \file
/// Value fields: SField holds one value, MField an array. A field knows nothing of the container
/// that it is a member of; the container's accessors do the bookkeeping of edits.

#include <vector>

#include "OSGFieldType.h"
#include "OSGMemManager.h"

namespace OSG
{
template <class T>
class SField
{
  public:
    using StoredType = T;
    static constexpr FieldCardinality Cardinality = FieldCardinality::Single;

    SField()
        : _value()
    {
    }
    explicit SField(T const &value)
        : _value(value)
    {
    }

    T const &getValue() const { return _value; }
    T &getValue() { return _value; }
    void setValue(T value) { _value = std::move(value); }

    /// Exported once, from the source that knows T.
    static FieldType const &getClassType();

  private:
    // What follows the field may stand in the tail of the value: a box and a mask are 40 bytes.
    [[no_unique_address]] T _value;
};

/// An array of values; the elements lie in a block of MemMalloc. A reader may fill it directly.
template <class T>
class MField : public std::vector<T, MemAllocator<T>>
{
  public:
    using StoredType = T;
    static constexpr FieldCardinality Cardinality = FieldCardinality::Multi;

    using std::vector<T, MemAllocator<T>>::vector;

    static FieldType const &getClassType();
};
} // namespace OSG
