#pragma once

/// \file
/// Fills all fields of any container and compares two containers, by their field descriptions
/// alone.

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldContainerType.h"
#include "OSGNode.h"

namespace OSG::Test
{
using ContainerPtr = UnrecordedRefPtr<FieldContainer>;
using FieldList = std::vector<FieldDescriptionBase const *>;

/// All types that objects can be made of.
inline std::vector<FieldContainerType *> concrete_types()
{
    std::vector<FieldContainerType *> types;
    for(FieldContainerType *type : FieldContainerFactoryBase::the()->getTypes())
    {
        if(type->getPrototype() != nullptr)
            types.push_back(type);
    }
    return types;
}

/// The fields of a type. Those of its parents come first.
inline FieldList fields_of(FieldContainerType const &type) { return type.getFieldDescs(); }

inline BitVector all_fields_mask(FieldContainerType const &type)
{
    BitVector mask = 0;
    for(FieldDescriptionBase const *field : fields_of(type))
        mask |= field->getFieldMask();
    return mask;
}

inline bool is_pointer(FieldDescriptionBase const &field)
{
    return field.getFieldType().getClass() != FieldClass::Value;
}
inline bool is_multi(FieldDescriptionBase const &field)
{
    return field.getFieldType().getCardinality() == FieldCardinality::Multi;
}
inline bool is_counted(FieldDescriptionBase const &field)
{
    return field.getFieldType().getClass() == FieldClass::Pointer;
}
/// True for a field whose entries have the owner as their only parent.
inline bool is_child_field(FieldDescriptionBase const &field, FieldContainer const &owner)
{
    return owner.getField(field.getFieldId())->isChildField();
}

/// A value other than the default for each value type, as text; `variant` tells them apart.
inline std::string sample_text(std::string const &valueType, UInt32 variant)
{
    std::string n = std::to_string(variant + 2);
    static std::map<std::string, int> const floats = {
        {"Real32", 1},  {"Vec2f", 2},   {"Pnt3f", 3},   {"Vec3f", 3},
        {"Color3f", 3}, {"Color4f", 4}, {"Matrix", 16}, {"BoxVolume", 6}};
    if(valueType == "std::string")
        return "text, " + n;
    auto const found = floats.find(valueType);
    if(found == floats.end())
        return n;
    std::string text = n + ".125";
    for(int i = 1; i < found->second; ++i)
        text += ", " + n + "." + std::to_string(i) + "e-3";
    return text;
}

/// What a field holds.
struct FieldValue
{
    std::vector<std::string> texts;
    std::vector<FieldContainer *> pointers;

    friend bool operator==(FieldValue const &, FieldValue const &) = default;
    friend void PrintTo(FieldValue const &value, std::ostream *out)
    {
        for(std::string const &text : value.texts)
            *out << '"' << text << "\" ";
        for(FieldContainer const *pointer : value.pointers)
            *out << pointer << ' ';
    }
};

/// The text forms of the values; pointers are ids.
inline std::vector<std::string> texts_of(FieldContainer const &container,
                                         FieldDescriptionBase const &field)
{
    std::vector<std::string> texts;
    GetFieldHandlePtr const handle = container.getField(field.getFieldId());
    for(UInt32 i = 0; i < handle->size(); ++i)
    {
        std::ostringstream text;
        OutStream out(text);
        handle->pushIndexedValueToStream(out, i);
        texts.push_back(text.str());
    }
    return texts;
}

inline FieldValue value_of(FieldContainer const &container, FieldDescriptionBase const &field)
{
    FieldValue value;
    if(!is_pointer(field))
    {
        value.texts = texts_of(container, field);
        return value;
    }
    GetFieldHandlePtr const handle = container.getField(field.getFieldId());
    for(UInt32 i = 0; i < handle->size(); ++i)
        value.pointers.push_back(handle->getPointer(i));
    return value;
}

using ContainerValues = std::map<std::string, FieldValue>;

/// The contents of all fields by name.
inline ContainerValues values_of(FieldContainer const &container)
{
    ContainerValues values;
    for(FieldDescriptionBase const *field : fields_of(container.getType()))
        values[field->getName()] = value_of(container, *field);
    return values;
}

/// A container of a class that `field` may point to, of another one for each `variant` where there
/// are several.
inline ContainerPtr make_target(FieldDescriptionBase const &field, UInt32 variant)
{
    auto const &pointer = static_cast<PointerType const &>(field.getFieldType().getContentType());
    // Attachments of one group replace each other: one of each.
    bool const byGroup = pointer.getPointedTo() == Attachment::getClassType();
    std::vector<FieldContainerType *> fitting;
    std::set<UInt32> groups;
    for(FieldContainerType *type : concrete_types())
    {
        if(type->isDerivedFrom(pointer.getPointedTo()) &&
           (groups.insert(type->getGroupId()).second || !byGroup))
            fitting.push_back(type);
    }
    return fitting.empty() ? nullptr
                           : ContainerPtr(fitting[variant % fitting.size()]->createContainer());
}

/// Of the flag at `index`, true beyond the last one.
inline std::string opposite(FieldValue const &flags, UInt32 index)
{
    return index < flags.texts.size() && flags.texts[index] == "TRUE" ? "FALSE" : "TRUE";
}

/// Puts something other than the default into every field: pointer fields get containers, which
/// `kept` holds. Pointers go in as bytes, the only way that is open for every field.
inline void fill_fields(FieldContainer &container, std::vector<ContainerPtr> &kept)
{
    constexpr UInt32 Entries = 3;
    for(FieldDescriptionBase const *field : fields_of(container.getType()))
    {
        SCOPED_TRACE(field->getName());
        UInt32 const id = field->getFieldId();
        UInt32 const size = is_multi(*field) ? Entries : 1;
        if(!is_pointer(*field))
        {
            EditFieldHandlePtr const handle = container.editField(id);
            std::string const type = field->getFieldType().getContentType().getName();
            while(is_multi(*field) && handle->size() != 0)
                ASSERT_TRUE(handle->removeIndex(handle->size() - 1));
            for(UInt32 i = 0; i < size; ++i)
            {
                std::string const text = type != "bool" ? sample_text(type, id + i)
                                                        : opposite(value_of(container, *field), i);
                ASSERT_TRUE(is_multi(*field)
                                ? handle->insertIndexedValueFromCString(text.c_str(), i)
                                : handle->pushIndexedValueFromCString(text.c_str(), i));
            }
            continue;
        }
        MemoryBinaryDataHandler bytes;
        FieldValue expected;
        if(is_multi(*field))
            bytes.putValue(size);
        for(UInt32 i = 0; i < size; ++i)
        {
            ContainerPtr const target = make_target(*field, i);
            ASSERT_NE(target, nullptr);
            kept.push_back(target);
            expected.pointers.push_back(target);
            bytes.putValue(target->getId());
        }
        container.copyFromBin(bytes, field->getFieldMask());
        ASSERT_EQ(value_of(container, *field), expected);
    }
}
} // namespace OSG::Test
