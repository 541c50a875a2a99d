#include "OSGPointerFieldHandles.h"

#include "OSGDeepClone.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldLinks.h"
#include "OSGFieldText.h"
#include "OSGLog.h"

namespace OSG
{
GetSFieldHandle<PointerSFieldBase>::~GetSFieldHandle() = default;
GetMFieldHandle<PointerMFieldBase>::~GetMFieldHandle() = default;
EditSFieldHandle<PointerSFieldBase>::~EditSFieldHandle() = default;
EditMFieldHandle<PointerMFieldBase>::~EditMFieldHandle() = default;

namespace
{
DataType const &pointed_to(FieldType const &type)
{
    return static_cast<PointerType const &>(type.getContentType()).getPointedTo();
}

bool is_single(FieldType const &type) { return type.getCardinality() == FieldCardinality::Single; }

PointerFieldAccess const &access_of(FieldHandle const &handle)
{
    return *handle.getDescription()->getPointers();
}

FieldContainer *pointer_at(FieldHandle const &handle, UInt32 index)
{
    PointerFieldAccess const &access = access_of(handle);
    FieldContainer const &owner = *handle.getContainer();
    return index < access.size(owner) ? access.get(owner, index) : nullptr;
}

bool points_to_the_same(FieldHandle const &one, FieldHandle const &other)
{
    if(one.getType() != other.getType() || one.size() != other.size())
        return false;
    for(UInt32 i = 0; i < one.size(); ++i)
    {
        if(pointer_at(one, i) != pointer_at(other, i))
            return false;
    }
    return true;
}

/// What a field points to, held while the field and its owner are taken apart.
std::vector<UnrecordedRefPtr<FieldContainer>> hold_pointers(GetFieldHandle const &field)
{
    std::vector<UnrecordedRefPtr<FieldContainer>> pointers;
    for(UInt32 i = 0; i < field.size(); ++i)
        pointers.emplace_back(field.getPointer(i));
    return pointers;
}
} // namespace

// --- reading ---

GetPointerFieldHandle::GetPointerFieldHandle(FieldDescriptionBase const *description,
                                             FieldContainer const *container)
    : GetFieldHandle(description, const_cast<FieldContainer *>(container))
{
}
GetPointerFieldHandle::~GetPointerFieldHandle() = default;

UInt32 GetPointerFieldHandle::size() const { return access_of(*this).size(*_container); }
bool GetPointerFieldHandle::isChildField() const { return access_of(*this).isChildField; }

bool GetPointerFieldHandle::equal(FieldHandle const &other) const
{
    return points_to_the_same(*this, other);
}

FieldContainer *GetPointerFieldHandle::getPointer(UInt32 index) const
{
    return pointer_at(*this, index);
}

void GetPointerFieldHandle::pushIndexedValueToStream(OutStream &out, UInt32 index) const
{
    if(index >= size())
        return;
    FieldContainer const *const pointer = getPointer(index);
    out << (pointer != nullptr ? pointer->getId() : UInt32(0));
}

// --- editing ---

EditPointerFieldHandle::EditPointerFieldHandle(FieldDescriptionBase const *description,
                                               FieldContainer *container)
    : EditFieldHandle(description, container)
{
}
EditPointerFieldHandle::~EditPointerFieldHandle() = default;

UInt32 EditPointerFieldHandle::size() const { return access_of(*this).size(*_container); }
bool EditPointerFieldHandle::isChildField() const { return access_of(*this).isChildField; }
bool EditPointerFieldHandle::isSingle() const { return is_single(getType()); }
FieldLinks EditPointerFieldHandle::links() const { return FieldLinks(*_container, *_description); }

bool EditPointerFieldHandle::equal(FieldHandle const &other) const
{
    return points_to_the_same(*this, other);
}

FieldContainer *EditPointerFieldHandle::pointerAt(UInt32 index) const
{
    return pointer_at(*this, index);
}

bool EditPointerFieldHandle::suits(FieldContainer const &target) const
{
    return target.getType().isDerivedFrom(pointed_to(getType()));
}

bool EditPointerFieldHandle::readPointer(char const *text, FieldContainer *&pointer) const
{
    UInt32 id = 0;
    if(!value_from_text(text, id))
        return false;
    pointer = id != 0 ? FieldContainerFactoryBase::the()->getMappedContainer(id) : nullptr;
    return id == 0 || (pointer != nullptr && suits(*pointer));
}

bool EditPointerFieldHandle::pushIndexedValueFromCString(char const *text, UInt32 index)
{
    FieldContainer *pointer = nullptr;
    return index < size() && !isChildField() && readPointer(text, pointer) &&
           links().replace(index, pointer);
}

bool EditPointerFieldHandle::insertIndexedValueFromCString(char const *text, UInt32 index)
{
    FieldContainer *pointer = nullptr;
    if(isSingle() || index != size() || !readPointer(text, pointer))
        return false;
    links().append(pointer);
    return pointerAt(index) == pointer && index < size();
}

bool EditPointerFieldHandle::removeIndex(UInt32 index)
{
    if(isSingle() || index >= size())
        return false;
    links().remove(index);
    return true;
}

bool EditPointerFieldHandle::add(FieldContainer *value)
{
    if(access_of(*this).access == FieldAccess::Protected || (value != nullptr && !suits(*value)))
        return false;
    if(isSingle())
        links().replace(0, value);
    else
        links().append(value);
    return true;
}

// --- from other fields ---

bool EditPointerFieldHandle::isShareable(FieldType const &from, FieldType const &to)
{
    return from.getClass() != FieldClass::Value && to.getClass() != FieldClass::Value &&
           is_single(from) == is_single(to) && pointed_to(from).isDerivedFrom(pointed_to(to));
}

bool EditPointerFieldHandle::isLegal(GetFieldHandlePtr const &source, char const *operation) const
{
    if(source != nullptr && source->isValid() && isShareable(source->getType(), getType()))
        return true;
    OSG_LOG_WARNING("%s illegal source for %s\n", operation, getName().c_str());
    return false;
}

bool EditPointerFieldHandle::shareValues(GetFieldHandlePtr const &source)
{
    if(!isLegal(isChildField() ? GetFieldHandlePtr() : source, "shareValues"))
        return false;
    auto const pointers = hold_pointers(*source);
    FieldLinks field = links();
    if(isSingle())
        return field.replace(0, pointers[0]);
    field.clear();
    for(FieldContainer *pointer : pointers)
        field.append(pointer);
    return true;
}

bool EditPointerFieldHandle::cloneValues(GetFieldHandlePtr const &source,
                                         ContainerTypeList const &shareTypes,
                                         ContainerTypeList const &ignoreTypes,
                                         ContainerGroupList const &shareGroups,
                                         ContainerGroupList const &ignoreGroups)
{
    if(!isLegal(source, "cloneValues"))
        return false;
    DeepCloner cloner({shareTypes, shareGroups}, {ignoreTypes, ignoreGroups});
    return cloneBy(cloner, *source);
}

bool EditPointerFieldHandle::cloneValuesEx(GetFieldHandlePtr const &source,
                                           NameList const &shareTypes, NameList const &ignoreTypes,
                                           NameList const &shareGroups,
                                           NameList const &ignoreGroups)
{
    if(!isLegal(source, "cloneValuesEx"))
        return false;
    DeepCloner cloner(DeepCloner::choice(shareTypes, shareGroups),
                      DeepCloner::choice(ignoreTypes, ignoreGroups));
    return cloneBy(cloner, *source);
}

bool EditPointerFieldHandle::cloneBy(DeepCloner &cloner, GetFieldHandle const &source)
{
    auto const pointers = hold_pointers(source);
    std::vector<FieldContainer *> targets;
    targets.reserve(pointers.size());
    for(FieldContainer *pointer : pointers)
        targets.push_back(cloner.resolve(pointer));
    FieldLinks field = links();
    if(isSingle())
        return field.replace(0, targets[0]);
    field.clear();
    for(std::size_t i = 0; i < targets.size(); ++i)
    {
        // A child has one parent: a shared one stays where it is.
        if(!isChildField() || targets[i] != pointers[i])
            field.append(targets[i]);
    }
    return true;
}
} // namespace OSG
