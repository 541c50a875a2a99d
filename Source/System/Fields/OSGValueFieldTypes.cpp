#include "OSGValueFieldTypes.h"

namespace OSG
{
// Made on first use: type constructors of other libraries ask for them while they load.
#define OSG_DEFINE_FIELD_VALUE(Type, TypeName, FieldName)                                          \
    DataType const &FieldTraits<Type, 0>::getType()                                                \
    {                                                                                              \
        static DataType *const type = new DataType(TypeName, nullptr);                             \
        return *type;                                                                              \
    }                                                                                              \
    template <>                                                                                    \
    FieldType const &SField<Type>::getClassType()                                                  \
    {                                                                                              \
        static FieldType *const type = new FieldType(                                              \
            "SF" FieldName, nullptr, FieldTraits<Type, 0>::getType(), FieldCardinality::Single);   \
        return *type;                                                                              \
    }                                                                                              \
    template <>                                                                                    \
    FieldType const &MField<Type>::getClassType()                                                  \
    {                                                                                              \
        static FieldType *const type = new FieldType(                                              \
            "MF" FieldName, nullptr, FieldTraits<Type, 0>::getType(), FieldCardinality::Multi);    \
        return *type;                                                                              \
    }

OSG_FOR_EACH_FIELD_VALUE(OSG_DEFINE_FIELD_VALUE)
#undef OSG_DEFINE_FIELD_VALUE
} // namespace OSG
