#include "OSGDeepClone.h"

#include <algorithm>

#include "OSGFieldContainerFactory.h"
#include "OSGLog.h"
#include "OSGPointerFieldHandles.h"
#include "OSGTypePredicates.h"

namespace OSG
{
bool DeepCloner::Choice::holds(ReflexiveContainerType const &type) const
{
    return std::find(groups.begin(), groups.end(), type.getGroupId()) != groups.end() ||
           std::any_of(types.begin(), types.end(), TypePredicates::IsBaseOf(type));
}

DeepCloner::DeepCloner(Choice share, Choice ignore)
    : _share(std::move(share))
    , _ignore(std::move(ignore))
{
}

DeepCloner::Choice DeepCloner::choice(NameList const &types, NameList const &groups)
{
    DeepCloner::Choice choice;
    for(std::string const &name : types)
    {
        ReflexiveContainerType const *const type =
            FieldContainerFactoryBase::the()->findType(name.c_str());
        if(type != nullptr)
            choice.types.push_back(type);
        else
            OSG_LOG_WARNING("deepClone: no container type has the name %s\n", name.c_str());
    }
    std::vector<FieldContainerType *> const all = FieldContainerFactoryBase::the()->getTypes();
    for(std::string const &name : groups)
    {
        auto const found = std::find_if(all.begin(), all.end(),
                                        [&name](FieldContainerType *type)
                                        { return name == type->getGroupName(); });
        if(found != all.end())
            choice.groups.push_back((*found)->getGroupId());
        else
            OSG_LOG_WARNING("deepClone: no group of container types has the name %s\n",
                            name.c_str());
    }
    return choice;
}

FieldContainer *DeepCloner::clone(FieldContainer const *source)
{
    if(source == nullptr)
        return nullptr;
    FieldContainer *const copy = copyOf(source);
    copyWhatIsOpen();
    return copy;
}

FieldContainer *DeepCloner::resolve(FieldContainer *source)
{
    FieldContainer *const target = targetOf(source);
    copyWhatIsOpen();
    return target;
}

// Null for a class that cannot be copied.
FieldContainer *DeepCloner::copyOf(FieldContainer const *source)
{
    auto const known = _copies.find(source);
    if(known != _copies.end())
        return known->second;
    UnrecordedRefPtr<FieldContainer> const copy(source->shallowCopy());
    if(copy == nullptr)
        return nullptr;
    _copies.emplace(source, copy);
    _open.push_back(source);
    return copy;
}

FieldContainer *DeepCloner::targetOf(FieldContainer *source)
{
    if(source == nullptr || _ignore.holds(source->getType()))
        return nullptr;
    if(_share.holds(source->getType()))
        return source;
    FieldContainer *const copy = copyOf(source);
    return copy != nullptr ? copy : source;
}

void DeepCloner::copyWhatIsOpen()
{
    while(!_open.empty())
    {
        FieldContainer const *const source = _open.back();
        _open.pop_back();
        FieldContainer *const copy = _copies.find(source)->second;
        for(FieldDescriptionBase const *field : pointerFieldsOf(source->getType()))
            copyPointers(*source, *copy, *field);
    }
    directWeakLooks();
}

void DeepCloner::copyPointers(FieldContainer const &source, FieldContainer &copy,
                              FieldDescriptionBase const &field)
{
    UInt32 const id = field.getFieldId();
    GetFieldHandlePtr const from = source.getField(id);
    UInt32 const size = from->size();
    // Children do not come with a copy.
    bool const isChildField = from->isChildField();
    UInt32 gone = 0;
    for(UInt32 i = 0; i < size; ++i)
    {
        FieldContainer *const pointer = from->getPointer(i);
        if(pointer == nullptr)
            continue;
        if(field.getFieldType().getClass() == FieldClass::UncountedPointer)
        {
            _weak.push_back({&copy, id, i, pointer});
            continue;
        }
        FieldContainer *const target = targetOf(pointer);
        if(isChildField)
        {
            if(target != nullptr && target != pointer && !target->linkParent(&copy, id))
                copy.editField(id)->add(target);
        }
        else if(target != pointer && !relink(copy, id, i - gone, pointer, target))
            ++gone;
    }
}

bool DeepCloner::relink(FieldContainer &copy, UInt32 fieldId, UInt32 index, FieldContainer *old,
                        FieldContainer *target)
{
    UInt16 const field = static_cast<UInt16>(fieldId);
    // What hangs together by more than this field is linked and unlinked by its classes.
    if(target == nullptr && copy.unlinkChild(old, field))
        return false;
    // An entry of a list keeps its place.
    bool const isSingle = copy.getFieldDescription(fieldId)->getFieldType().getCardinality() ==
                          FieldCardinality::Single;
    if(target == nullptr || !isSingle || !target->linkParent(&copy, field))
        static_cast<EditPointerFieldHandle &>(*copy.editField(fieldId))
            .replacePointer(index, target);
    return true;
}

void DeepCloner::directWeakLooks()
{
    for(WeakLook const &look : _weak)
    {
        bool const ignored = _ignore.holds(look.source->getType());
        auto const known = _copies.find(look.source);
        if(ignored)
            relink(*look.copy, look.fieldId, look.index, look.source, nullptr);
        else if(known != _copies.end())
            relink(*look.copy, look.fieldId, look.index, look.source, known->second);
    }
    _weak.clear();
}

DeepCloner::FieldList const &DeepCloner::pointerFieldsOf(FieldContainerType const &type)
{
    auto const [entry, isNew] = _pointerFields.try_emplace(&type);
    FieldList &fields = entry->second;
    if(!isNew)
        return fields;
    for(TypeBase const *at = &type; at != nullptr; at = at->getParent())
    {
        FieldList own;
        for(FieldDescriptionBase const *field :
            static_cast<ReflexiveContainerType const *>(at)->getOwnFieldDescs())
        {
            if(field->getFieldType().getClass() != FieldClass::Value)
                own.push_back(field);
        }
        fields.insert(fields.begin(), own.begin(), own.end());
    }
    return fields;
}

namespace
{
NameList names_in(std::string const &text)
{
    constexpr char const *separators = " ,\t\n\r";
    NameList names;
    std::size_t begin = text.find_first_not_of(separators);
    while(begin != std::string::npos)
    {
        std::size_t const end = std::min(text.find_first_of(separators, begin), text.size());
        names.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(separators, end);
    }
    return names;
}

TransitPtr<FieldContainer> clone_by(FieldContainer const *source, DeepCloner::Choice share,
                                    DeepCloner::Choice ignore)
{
    return TransitPtr<FieldContainer>(
        DeepCloner(std::move(share), std::move(ignore)).clone(source));
}
} // namespace

TransitPtr<FieldContainer> deepClone(FieldContainer const *source, std::string const &shareTypes,
                                     std::string const &ignoreTypes)
{
    return clone_by(source, DeepCloner::choice(names_in(shareTypes), {}),
                    DeepCloner::choice(names_in(ignoreTypes), {}));
}

TransitPtr<FieldContainer> deepClone(FieldContainer const *source,
                                     ContainerTypeList const &shareTypes,
                                     ContainerTypeList const &ignoreTypes,
                                     ContainerGroupList const &shareGroups,
                                     ContainerGroupList const &ignoreGroups)
{
    return clone_by(source, {shareTypes, shareGroups}, {ignoreTypes, ignoreGroups});
}

TransitPtr<FieldContainer> deepCloneEx(FieldContainer const *source, NameList const &shareTypes,
                                       NameList const &ignoreTypes, NameList const &shareGroups,
                                       NameList const &ignoreGroups)
{
    return clone_by(source, DeepCloner::choice(shareTypes, shareGroups),
                    DeepCloner::choice(ignoreTypes, ignoreGroups));
}
} // namespace OSG
