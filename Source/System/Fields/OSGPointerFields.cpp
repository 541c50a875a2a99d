#include "OSGPointerFields.h"

#include "OSGBinaryDataHandler.h"
#include "OSGFieldContainer.h"

namespace OSG
{
namespace
{
UInt32 id_of(FieldContainer const *container)
{
    return container != nullptr && container->isAlive() ? container->getId() : 0;
}
} // namespace

void PointerSFieldBase::copyToBin(ExceptionBinaryDataHandler &handler) const
{
    handler.putValue(id_of(_value));
}

Int32 PointerMFieldBase::findIndex(FieldContainer const *container) const
{
    UInt32 const index = _values.find(container);
    return index < size() ? static_cast<Int32>(index) : -1;
}

void PointerMFieldBase::copyToBin(ExceptionBinaryDataHandler &handler) const
{
    handler.putValue(size());
    for(UInt32 i = 0; i < size(); ++i)
        handler.putValue(id_of(_values[i]));
}

namespace
{
constexpr char const *SingleParent = "FieldContainerPtrSFieldBase";
constexpr char const *MultiParent = "FieldContainerPtrMFieldBase";

DataType const single_pointer_field(SingleParent, nullptr);
DataType const multi_pointer_field(MultiParent, nullptr);
} // namespace

PointerTypeFamily::PointerTypeFamily(char const *const (&names)[9], char const *parentPointer,
                                     DataType const &pointedTo)
    : _pointer(names[0], parentPointer, pointedTo)
    , _single{{names[1], SingleParent, _pointer, FieldCardinality::Single, FieldClass::Pointer},
              {names[2], SingleParent, _pointer, FieldCardinality::Single, FieldClass::Pointer},
              {names[3], SingleParent, _pointer, FieldCardinality::Single,
               FieldClass::UncountedPointer},
              {names[4], SingleParent, _pointer, FieldCardinality::Single,
               FieldClass::UncountedPointer}}
    , _multi{
          {names[5], MultiParent, _pointer, FieldCardinality::Multi, FieldClass::Pointer},
          {names[6], MultiParent, _pointer, FieldCardinality::Multi, FieldClass::Pointer},
          {names[7], MultiParent, _pointer, FieldCardinality::Multi, FieldClass::UncountedPointer},
          {names[8], MultiParent, _pointer, FieldCardinality::Multi, FieldClass::UncountedPointer}}
{
}

FieldType const &PointerTypeFamily::getFieldType(int policy, FieldCardinality cardinality) const
{
    return cardinality == FieldCardinality::Single ? _single[policy] : _multi[policy];
}
} // namespace OSG
