#include "OSGFieldType.h"

namespace OSG
{
PointerType::PointerType(char const *name, char const *parentName, DataType const &pointedTo,
                         UInt32 nameSpace)
    : DataType(name, parentName, nameSpace)
    , _pointedTo(pointedTo)
{}
PointerType::~PointerType() = default;

FieldType::FieldType(char const *name, char const *parentName, DataType const &content,
                     FieldCardinality cardinality, FieldClass fieldClass)
    : DataType(name, parentName)
    , _content(content)
    , _cardinality(cardinality)
    , _class(fieldClass)
{}
FieldType::~FieldType() = default;
} // namespace OSG
