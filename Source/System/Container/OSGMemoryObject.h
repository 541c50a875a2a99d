#pragma once

#include "OSGMemManager.h"
#include "OSGSystemApi.h"

namespace OSG
{
/// Base of objects that have a reference count but no fields: actions, graph operations, engines.
/// Starts with no reference; the object ends when the last one goes.
class OSG_SYSTEM_API MemoryObject : public MemObject
{
  public:
    void addReferenceUnrecorded() { ++_references; }
    void subReferenceUnrecorded();
    /// The same as subReferenceUnrecorded().
    void subRef() { subReferenceUnrecorded(); }
    Int32 getRefCount() const { return _references; }

  protected:
    MemoryObject() = default;
    /// A copy starts with no reference of its own.
    MemoryObject(MemoryObject const &) : MemObject() {}
    MemoryObject &operator=(MemoryObject const &) { return *this; }
    virtual ~MemoryObject();

  private:
    Int32 _references = 0;
};
} // namespace OSG
