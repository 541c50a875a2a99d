#include "OSGPointerFieldHandles.h"

#include "OSGDeepClone.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldText.h"
#include "OSGLog.h"

namespace OSG
{
GetSFieldHandle<PointerSFieldBase>::~GetSFieldHandle() = default;
GetMFieldHandle<PointerMFieldBase>::~GetMFieldHandle() = default;
EditSFieldHandle<PointerSFieldBase>::~EditSFieldHandle() = default;
EditMFieldHandle<PointerMFieldBase>::~EditMFieldHandle() = default;
EditPointerFieldHandle::~EditPointerFieldHandle() = default;

namespace
{
DataType const &pointed_to(FieldType const &type)
{
    return static_cast<PointerType const &>(type.getContentType()).getPointedTo();
}

bool is_single(FieldType const &type) { return type.getCardinality() == FieldCardinality::Single; }

/// What a field points to, held while the field and its owner are taken apart.
std::vector<UnrecordedRefPtr<FieldContainer>> hold_pointers(GetFieldHandle const &field)
{
    std::vector<UnrecordedRefPtr<FieldContainer>> pointers;
    for(UInt32 i = 0; i < field.size(); ++i)
        pointers.emplace_back(field.getPointer(i));
    return pointers;
}
} // namespace

UInt16 EditPointerFieldHandle::fieldId() const
{
    return static_cast<UInt16>(_description->getFieldId());
}

bool EditPointerFieldHandle::readPointer(char const *text, FieldContainer *&pointer) const
{
    UInt32 id = 0;
    if(!value_from_text(text, id))
        return false;
    pointer = id != 0 ? FieldContainerFactoryBase::the()->getMappedContainer(id) : nullptr;
    return id == 0 ||
           (pointer != nullptr && pointer->getType().isDerivedFrom(pointed_to(getType())));
}

bool EditPointerFieldHandle::pushIndexedValueFromCString(char const *text, UInt32 index)
{
    FieldContainer *pointer = nullptr;
    if(index >= size() || isChildField() || !readPointer(text, pointer))
        return false;
    if(is_single(getType()))
        setSingle(pointer);
    else
        replacePointer(index, pointer);
    return true;
}

bool EditPointerFieldHandle::insertIndexedValueFromCString(char const *text, UInt32 index)
{
    FieldContainer *pointer = nullptr;
    if(is_single(getType()) || index != size() || !readPointer(text, pointer))
        return false;
    append(pointer, nullptr);
    return true;
}

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
    if(is_single(getType()))
    {
        setSingle(pointers[0]);
        return true;
    }
    removeAll();
    for(FieldContainer *pointer : pointers)
        append(pointer, pointer);
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
    if(is_single(getType()))
    {
        setSingle(cloner.resolve(pointers[0]));
        return true;
    }
    std::vector<FieldContainer *> targets;
    targets.reserve(pointers.size());
    for(FieldContainer *pointer : pointers)
        targets.push_back(cloner.resolve(pointer));
    removeAll();
    for(std::size_t i = 0; i < targets.size(); ++i)
        append(targets[i], pointers[i]);
    return true;
}

void EditPointerFieldHandle::setSingle(FieldContainer *target)
{
    FieldContainer *const old = pointerAt(0);
    if(target == old)
        return;
    if(target == nullptr ? _container->unlinkChild(old, fieldId())
                         : target->linkParent(_container, fieldId()))
        return;
    replacePointer(0, target);
}

void EditPointerFieldHandle::removeAll()
{
    for(UInt32 left = size(); left != 0; --left)
    {
        FieldContainer *const last = pointerAt(left - 1);
        if(last == nullptr || !_container->unlinkChild(last, fieldId()))
            erasePointer(left - 1);
    }
}

void EditPointerFieldHandle::append(FieldContainer *target, FieldContainer *source)
{
    if(isChildField())
    {
        if(target != nullptr && target != source && !target->linkParent(_container, fieldId()))
            appendPointer(target);
    }
    else if(target != nullptr)
    {
        if(!target->linkParent(_container, fieldId()))
            appendPointer(target);
    }
    else
    {
        // Lists that have no null take what they had out again.
        appendPointer(source);
        if(source != nullptr && !_container->unlinkChild(source, fieldId()))
            replacePointer(size() - 1, nullptr);
    }
}
} // namespace OSG
