#pragma once

/// \file
/// Types of fields: what a field holds, how many of it, and how it is owned.

#include "OSGSystemApi.h"
#include "OSGTypeBase.h"

namespace OSG
{
enum class FieldCardinality
{
    Single,
    Multi
};

enum class FieldClass
{
    Value,           ///< holds values
    Pointer,         ///< points to containers and counts them
    UncountedPointer ///< looks at containers: weak and plain pointers
};

/// Type of a pointer to a container class, named after the class with "Ptr" behind it.
class OSG_SYSTEM_API PointerType : public DataType
{
  public:
    PointerType(char const *name, char const *parentName, DataType const &pointedTo,
                UInt32 nameSpace = 0);
    ~PointerType() override;

    /// The container class.
    DataType const &getPointedTo() const { return _pointedTo; }

  private:
    DataType const &_pointedTo;
};

class OSG_SYSTEM_API FieldType : public DataType
{
  public:
    FieldType(char const *name, char const *parentName, DataType const &content,
              FieldCardinality cardinality, FieldClass fieldClass = FieldClass::Value);
    ~FieldType() override;

    /// Type of one value; for a pointer field the PointerType.
    DataType const &getContentType() const { return _content; }
    FieldCardinality getCardinality() const { return _cardinality; }
    FieldClass getClass() const { return _class; }

  private:
    DataType const &_content;
    FieldCardinality _cardinality;
    FieldClass _class;
};

/// Names the run-time types of `T`, specialised for every type that a field may hold: getType()
/// gives the DataType of one value. `Namespace` tells same types with another meaning apart.
template <class T, int Namespace = 0>
struct FieldTraits;
} // namespace OSG
