#include "OSGDeepClone.h"

#include <algorithm>
#include <new>

#include "OSGFieldContainerFactory.h"
#include "OSGFieldLinks.h"
#include "OSGLog.h"
#include "OSGPointerlessCopy.h"
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
    std::size_t const firstOfCall = _copies.size();
    _onlyStart = firstOfCall == 0 ? source : nullptr;
    FieldContainer *const copy = copyOf(source, false);
    finish(firstOfCall);
    return copy;
}

FieldContainer *DeepCloner::resolve(FieldContainer *source)
{
    std::size_t const firstOfCall = _copies.size();
    _onlyStart = firstOfCall == 0 ? source : nullptr;
    FieldContainer *const target = targetOf(source, false);
    finish(firstOfCall);
    return target;
}

void DeepCloner::finish(std::size_t firstOfCall)
{
    try
    {
        copyWhatIsOpen();
        directWeakLooks();
    }
    catch(...)
    {
        takeBack(firstOfCall);
        throw;
    }
}

// Copies may point to one another in circles, which references alone would not end.
void DeepCloner::takeBack(std::size_t firstOfCall) noexcept
{
    for(std::size_t i = firstOfCall; i < _copies.size(); ++i)
    {
        _bySource.erase(_copies[i].source);
        try
        {
            _copies[i].copy->resolveLinks();
        }
        catch(std::bad_alloc const &)
        {
            // It could not be noted as edited; the others are still taken apart.
        }
    }
    _copies.erase(_copies.begin() + static_cast<std::ptrdiff_t>(firstOfCall), _copies.end());
    _numLinked = std::min(_numLinked, firstOfCall);
    _numKnown = std::min(_numKnown, firstOfCall);
    _weak.clear();
}

DeepCloner::TypePlan const &DeepCloner::planOf(FieldContainerType const &type)
{
    if(type.getId() >= _plans.size())
        _plans.resize(type.getId() + 1);
    TypePlan &plan = _plans[type.getId()];
    if(plan.isMade)
        return plan;
    plan.pointerFields.clear();
    for(FieldDescriptionBase const *field : type.getFieldDescs())
    {
        if(field->getPointers() != nullptr)
            plan.pointerFields.push_back(field);
    }
    plan.fate = _ignore.holds(type)                             ? Fate::Ignored
                : type.isSharedByClones() || _share.holds(type) ? Fate::Shared
                                                                : Fate::Copied;
    plan.isMade = true;
    return plan;
}

// Null for a class that cannot be copied. A container with a single reference is reached once: it
// has no copy yet, and only uncounted pointers can ask for that copy again. The container with
// which a call begins is reached without a pointer, so its references do not tell.
FieldContainer *DeepCloner::copyOf(FieldContainer const *source, bool isReachedOnce)
{
    bool const isNew = isReachedOnce && _onlyStart != nullptr && source != _onlyStart;
    auto const known = isNew ? _bySource.end() : _bySource.find(source);
    if(known != _bySource.end())
        return known->second;
    PointerlessCopy const withoutPointers(*source);
    UnrecordedRefPtr<FieldContainer> const copy(source->shallowCopy());
    if(copy == nullptr)
        return nullptr;
    _copies.push_back({source, copy});
    if(!isReachedOnce)
        _bySource.emplace(source, copy);
    return copy;
}

FieldContainer *DeepCloner::targetOf(FieldContainer *source, bool isReachedOnce)
{
    if(source == nullptr)
        return nullptr;
    switch(planOf(source->getType()).fate)
    {
    case Fate::Ignored:
        return nullptr;
    case Fate::Shared:
        return source;
    case Fate::Copied:
        break;
    }
    FieldContainer *const copy = copyOf(source, isReachedOnce);
    return copy != nullptr ? copy : source;
}

FieldContainer *DeepCloner::targetOf(FieldContainer *source, FieldDescriptionBase const &field)
{
    // An uncounted pointer is no reason to copy what it points to.
    if(field.getFieldType().getClass() == FieldClass::UncountedPointer)
        return source;
    return targetOf(source, source != nullptr && source->getRefCount() == 1);
}

void DeepCloner::copyWhatIsOpen()
{
    while(_numLinked < _copies.size())
    {
        FieldContainer const *const source = _copies[_numLinked].source;
        FieldContainer *const copy = _copies[_numLinked].copy;
        // By index: the plans move when a further type is met.
        UInt32 const type = source->getType().getId();
        planOf(source->getType());
        for(std::size_t i = 0; i < _plans[type].pointerFields.size(); ++i)
            copyPointers(*source, *copy, *_plans[type].pointerFields[i]);
        ++_numLinked;
    }
}

void DeepCloner::copyPointers(FieldContainer const &source, FieldContainer &copy,
                              FieldDescriptionBase const &field)
{
    PointerFieldAccess const &access = *field.getPointers();
    bool const looks = field.getFieldType().getClass() == FieldClass::UncountedPointer;
    UInt32 const size = access.size(source);
    if(size == 0)
        return;
    _targets.clear();
    for(UInt32 i = 0; i < size; ++i)
    {
        FieldContainer *const pointer = access.get(source, i);
        FieldContainer *const target = targetOf(pointer, field);
        // A child has one parent: a shared one stays below the source.
        if(access.isChildField && target == pointer)
            continue;
        _targets.push_back(target);
        if(looks && pointer != nullptr)
            _weak.push_back({&copy, &field, i, pointer});
    }
    FieldLinks(copy, field).restore(_targets.data(), static_cast<UInt32>(_targets.size()));
}

void DeepCloner::directWeakLooks()
{
    if(_weak.empty())
        return;
    for(; _numKnown < _copies.size(); ++_numKnown)
        _bySource.emplace(_copies[_numKnown].source, _copies[_numKnown].copy);
    for(WeakLook const &look : _weak)
    {
        auto const known = _bySource.find(look.source);
        if(planOf(look.source->getType()).fate == Fate::Ignored)
            FieldLinks(*look.copy, *look.field).replace(look.index, nullptr);
        else if(known != _bySource.end())
            FieldLinks(*look.copy, *look.field).replace(look.index, known->second);
    }
    _weak.clear();
}

namespace
{
NameList names_in(std::string const &text)
{
    constexpr char const *Separators = " ,\t\n\r";
    NameList names;
    std::size_t begin = text.find_first_not_of(Separators);
    while(begin != std::string::npos)
    {
        std::size_t const end = std::min(text.find_first_of(Separators, begin), text.size());
        names.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(Separators, end);
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
