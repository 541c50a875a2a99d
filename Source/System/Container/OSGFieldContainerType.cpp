#include "OSGFieldContainerType.h"

#include <cstring>
#include <mutex>

#include "OSGFieldContainer.h"
#include "OSGThread.h"

namespace OSG
{
namespace
{
// Dense ids by name, 0 for "NULL". Never destroyed: types of any library take part.
UInt32 group_id(char const *name)
{
    static std::mutex *const guard = new std::mutex;
    static std::vector<std::string> *const names = new std::vector<std::string>{"NULL"};
    std::lock_guard<std::mutex> hold(*guard);
    for(std::size_t i = 0; i < names->size(); ++i)
    {
        if((*names)[i] == name)
            return static_cast<UInt32>(i);
    }
    names->push_back(name);
    return static_cast<UInt32>(names->size() - 1);
}

ReflexiveContainerType const *parent_of(ReflexiveContainerType const *type)
{
    return static_cast<ReflexiveContainerType const *>(type->getParent());
}
} // namespace

ReflexiveContainerType::ReflexiveContainerType(char const *name, char const *parentName,
                                               char const *groupName, UInt32 nameSpace)
    : DataType(name, parentName, nameSpace)
    , _groupName(groupName)
    , _groupId(group_id(groupName))
{
}

ReflexiveContainerType::~ReflexiveContainerType()
{
    for(FieldDescriptionBase *description : _own)
        delete description;
}

// The fields of a description have ids that follow one another.
FieldDescriptionBase const *ReflexiveContainerType::getFieldDesc(UInt32 id) const
{
    for(ReflexiveContainerType const *type = this; type != nullptr; type = parent_of(type))
    {
        if(type->_own.empty())
            continue;
        UInt32 const place = id - type->_own.front()->getFieldId();
        if(place < type->_own.size() && type->_own[place]->getFieldId() == id)
            return type->_own[place];
    }
    return findFieldDesc([id](FieldDescriptionBase const &field)
                         { return field.getFieldId() == id; });
}

FieldDescriptionBase const *ReflexiveContainerType::getFieldDesc(char const *name) const
{
    if(name == nullptr)
        return nullptr;
    return findFieldDesc([name](FieldDescriptionBase const &field)
                         { return std::strcmp(field.getCName(), name) == 0; });
}

template <class Predicate>
FieldDescriptionBase const *ReflexiveContainerType::findFieldDesc(Predicate const &isMeant) const
{
    for(ReflexiveContainerType const *type = this; type != nullptr; type = parent_of(type))
    {
        for(FieldDescriptionBase const *description : type->_own)
        {
            if(isMeant(*description))
                return description;
        }
    }
    return nullptr;
}

std::vector<FieldDescriptionBase const *> ReflexiveContainerType::getFieldDescs() const
{
    std::vector<FieldDescriptionBase const *> all;
    for(ReflexiveContainerType const *type = this; type != nullptr; type = parent_of(type))
        all.insert(all.begin(), type->_own.begin(), type->_own.end());
    return all;
}

UInt32 ReflexiveContainerType::getNumFieldDescs() const
{
    UInt32 count = 0;
    for(ReflexiveContainerType const *type = this; type != nullptr; type = parent_of(type))
        count += static_cast<UInt32>(type->_own.size());
    return count;
}

UInt32 ReflexiveContainerType::addInitialDesc(FieldDescriptionBase *description)
{
    if(description == nullptr || !description->isValid())
    {
        delete description;
        return 0;
    }
    try
    {
        _own.push_back(description);
    }
    catch(...)
    {
        delete description;
        throw;
    }
    return description->getFieldId();
}

FieldContainerType::FieldContainerType(char const *name, char const *parentName,
                                       char const *groupName, UInt32 nameSpace,
                                       CreateFunction create, InitFunction init, InitFunction exit,
                                       DescriptionInserter inserter, bool, UInt64, std::string xml,
                                       std::string documentation)
    : ReflexiveContainerType(name, parentName, groupName, nameSpace)
    , _create(create)
    , _init(init)
    , _exit(exit)
    , _inserter(inserter)
    , _xml(std::move(xml))
    , _documentation(std::move(documentation))
{
}

FieldContainerType::~FieldContainerType() = default;

void FieldContainerType::setPrototype(FieldContainer *prototype)
{
    UnrecordedRefCountPolicy::addRef(prototype);
    FieldContainer *const old = _prototype;
    _prototype = prototype;
    UnrecordedRefCountPolicy::subRef(old);
}

TransitPtr<FieldContainer> FieldContainerType::createContainer() const
{
    if(_prototype == nullptr)
        return nullptr;
    return _prototype->shallowCopy();
}

TransitPtr<FieldContainer> FieldContainerType::createEmptyContainer() const
{
    if(_prototype == nullptr)
        return nullptr;
    return TransitPtr<FieldContainer>(_create(Thread::getCurrentLocalFlags()));
}

bool FieldContainerType::isSharedByClones() const
{
    auto const *const parent = dynamic_cast<FieldContainerType const *>(getParent());
    return _isSharedByClones || (parent != nullptr && parent->isSharedByClones());
}

void FieldContainerType::describeFields()
{
    if(_stage != Stage::Recorded)
        return;
    if(_inserter != nullptr)
        _inserter(*this);
    _stage = Stage::Described;
}

void FieldContainerType::makePrototype()
{
    if(_stage != Stage::Described)
        return;
    // All ones: a prototype is no object of the scene and is not reported as created.
    if(_create != nullptr)
        setPrototype(_create(~UInt64(0)));
    _stage = Stage::HasPrototype;
}

void FieldContainerType::initialize(InitPhase phase)
{
    if(_stage == Stage::Up)
        return;
    if(phase == SystemPost)
        _stage = Stage::Up;
    if(_init != nullptr)
        _init(phase);
}

void FieldContainerType::terminate()
{
    if(_exit != nullptr && _stage == Stage::Up)
        _exit(SystemPost);
    setPrototype(nullptr);
    if(_stage == Stage::Up || _stage == Stage::HasPrototype)
        _stage = Stage::Described;
}
} // namespace OSG
