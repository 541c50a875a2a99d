#pragma once

/// \file
/// The reflective half of a container. The order in which virtual operations are declared here and
/// in FieldContainer is the order of their slots in every container class.

#include "OSGFieldContainerType.h"
#include "OSGFieldHandle.h"

namespace OSG
{
class ExceptionBinaryDataHandler;

class OSG_SYSTEM_API ReflexiveContainer : public MemObject
{
  public:
    static FieldContainerType &getClassType() { return _type; }
    static FieldContainerType _type;
    /// Field ids begin behind this; 0 is no field.
    static constexpr UInt32 NextFieldId = 1;
    static constexpr BitVector NextFieldMask = BitVector(1) << NextFieldId;

    ReflexiveContainer &operator=(ReflexiveContainer const &) = delete;

    virtual FieldContainerType const &getType() const = 0;
    virtual FieldContainerType &getType() = 0;
    /// Bytes of the concrete object itself, without what it points to.
    virtual UInt32 getContainerSize() const = 0;

    /// Called at a commit with the mask of the fields edited since the last one.
    virtual void changed(BitVector whichField, UInt32 origin, BitVector details) = 0;

    // --- fields by id or name; null for a field that the container has not ---
    virtual UInt32 getNumFields() const;
    virtual EditFieldHandlePtr editField(UInt32 id);
    virtual EditFieldHandlePtr editField(char const *name);
    virtual GetFieldHandlePtr getField(UInt32 id) const;
    virtual GetFieldHandlePtr getField(char const *name) const;
    virtual FieldDescriptionBase const *getFieldDescription(UInt32 id) const;
    virtual FieldDescriptionBase const *getFieldDescription(char const *name) const;

    // --- binary form of the fields whose bits are set in `mask`, parents first, in id order ---
    virtual UInt64 getBinSize(BitVector mask) = 0;
    virtual void copyToBin(ExceptionBinaryDataHandler &handler, BitVector mask) = 0;
    virtual void copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask) = 0;

    /// Writes to the log at level 0.
    virtual void dump(UInt32 indent = 0, BitVector flags = 0) const = 0;

    UInt32 getTypeId() const { return getType().getId(); }
    UInt32 getGroupId() const { return getType().getGroupId(); }

  protected:
    ReflexiveContainer() = default;
    ReflexiveContainer(ReflexiveContainer const &)
        : MemObject()
    {
    }
    virtual ~ReflexiveContainer();

    /// Before the container with that id ends.
    virtual void onDestroy(UInt32 id);
    /// Before the copy of that aspect ends.
    virtual void onDestroyAspect(UInt32 id, UInt32 aspect);
};
} // namespace OSG
