#pragma once

/// \file
/// The value types that fields of the system hold, with their run-time types.
///
/// To add one: a row in OSG_FOR_EACH_FIELD_VALUE, and its binary and text form in
/// OSGFieldBinary.h and OSGFieldText.h.

#include <string>

#include "OSGBoxVolume.h"
#include "OSGColor.h"
#include "OSGFields.h"
#include "OSGMatrix.h"
#include "OSGVector.h"

/// X(value type, name of the data type, name behind "SF" and "MF")
#define OSG_FOR_EACH_FIELD_VALUE(X)                                                                \
    X(::std::string, "std::string", "String")                                                      \
    X(bool, "bool", "Bool")                                                                        \
    X(::OSG::UInt8, "UInt8", "UInt8")                                                              \
    X(::OSG::UInt16, "UInt16", "UInt16")                                                           \
    X(::OSG::UInt32, "UInt32", "UInt32")                                                           \
    X(::OSG::UInt64, "UInt64", "UInt64")                                                           \
    X(::OSG::Int32, "Int32", "Int32")                                                              \
    X(::OSG::Real32, "Real32", "Real32")                                                           \
    X(::OSG::Pnt3f, "Pnt3f", "Pnt3f")                                                              \
    X(::OSG::Vec2f, "Vec2f", "Vec2f")                                                              \
    X(::OSG::Vec3f, "Vec3f", "Vec3f")                                                              \
    X(::OSG::Color3f, "Color3f", "Color3f")                                                        \
    X(::OSG::Color4f, "Color4f", "Color4f")                                                        \
    X(::OSG::Matrix, "Matrix", "Matrix")                                                           \
    X(::OSG::BoxVolume, "BoxVolume", "BoxVolume")

namespace OSG
{
#define OSG_DECLARE_FIELD_VALUE(Type, TypeName, FieldName)                                         \
    template <>                                                                                    \
    struct OSG_SYSTEM_API FieldTraits<Type, 0>                                                     \
    {                                                                                              \
        static DataType const &getType();                                                          \
    };                                                                                             \
    template <>                                                                                    \
    OSG_SYSTEM_API FieldType const &SField<Type>::getClassType();                                  \
    template <>                                                                                    \
    OSG_SYSTEM_API FieldType const &MField<Type>::getClassType();

OSG_FOR_EACH_FIELD_VALUE(OSG_DECLARE_FIELD_VALUE)
#undef OSG_DECLARE_FIELD_VALUE
} // namespace OSG
