#pragma once

/// \file
/// Text form of field values: strings as they are, numbers in their shortest exact form, composite
/// values as numbers separated by ", ". Reading accepts blanks and commas between numbers. A box is
/// its two corners, with the words empty, infinite, invalid and static before them as they hold.
/// Null is no text: it does not read.

#include <string>
#include <type_traits>

#include "OSGOutStream.h"
#include "OSGValueFieldTypes.h"

namespace OSG
{
#define OSG_DECLARE_FIELD_TEXT(Type, TypeName, FieldName)                                          \
    OSG_SYSTEM_API void value_to_text(OutStream &out, Type const &value);                          \
    [[nodiscard]] OSG_SYSTEM_API bool value_from_text(char const *text,                            \
                                                      std::add_lvalue_reference_t<Type> value);

OSG_FOR_EACH_FIELD_VALUE(OSG_DECLARE_FIELD_TEXT)
#undef OSG_DECLARE_FIELD_TEXT
} // namespace OSG
