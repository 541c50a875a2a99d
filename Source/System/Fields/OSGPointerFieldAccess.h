#pragma once

/// \file
/// A pointer field of any container without a handle.

#include "OSGBaseTypes.h"

namespace OSG
{
class FieldContainer;

/// Whether a field may be written by anybody, or by its class alone.
enum class FieldAccess
{
    Public,
    Protected
};

/// Reaches the pointers of one field of a class; a constant that the field's description shows.
///
/// These touch the field and nothing else: no edit is noted and nothing is linked by the classes
/// (see FieldLinks). Owners are of the description's class, targets of the field's class or null,
/// indices are below size(). A single field has one entry and neither appends nor erases.
struct PointerFieldAccess
{
    /// The entries have their container as their one parent.
    bool isChildField;
    FieldAccess access;
    UInt32 (*size)(FieldContainer const &owner);
    FieldContainer *(*get)(FieldContainer const &owner, UInt32 index);
    void (*set)(FieldContainer &owner, UInt32 index, FieldContainer *target);
    void (*append)(FieldContainer &owner, FieldContainer *target);
    void (*erase)(FieldContainer &owner, UInt32 index);
};
} // namespace OSG
