#include "OSGTypeBase.h"

#include <mutex>
#include <unordered_map>
#include <vector>

#include "OSGLog.h"
#include "OSGStartUpRecord.h"

namespace OSG
{
TypeBase::TypeBase(char const *name, char const *parentName, UInt32 nameSpace)
    : _name(name)
    , _parentName(parentName)
    , _id(0)
    , _nameSpace(nameSpace)
{
    record_start_up(StartUpKind::Type, name);
    _id = TypeFactory::the().registerType(this);
}

TypeBase::~TypeBase() { TypeFactory::the().takeBack(this); }
DataType::~DataType() = default;

bool TypeBase::isDerivedFrom(TypeBase const &other) const
{
    for(TypeBase const *type = this; type != nullptr; type = type->_parent)
    {
        if(type == &other)
            return true;
    }
    return false;
}

struct TypeFactory::Data
{
    mutable std::mutex guard;
    std::vector<TypeBase *> types;
    std::unordered_map<std::string, TypeBase *> byName; // "name:namespace"
    std::size_t resolved = 0;

    static std::string key(char const *name, UInt32 nameSpace)
    {
        return std::string(name) + ':' + std::to_string(nameSpace);
    }

    // registerType cannot do this, because it is called while the type is still being constructed.
    void indexNames()
    {
        for(; resolved < types.size(); ++resolved)
        {
            TypeBase *type = types[resolved];
            byName.emplace(key(type->getCName(), type->getNameSpace()), type);
        }
    }
};

TypeFactory::TypeFactory()
    : _data(new Data)
{
}

TypeFactory &TypeFactory::the()
{
    static TypeFactory *const factory = new TypeFactory;
    return *factory;
}

UInt32 TypeFactory::registerType(TypeBase *type)
{
    std::lock_guard<std::mutex> hold(_data->guard);
    _data->types.push_back(type);
    return static_cast<UInt32>(_data->types.size() - 1);
}

// Only the last type can be taken back, and only before its name has been indexed.
void TypeFactory::takeBack(TypeBase const *type)
{
    std::lock_guard<std::mutex> hold(_data->guard);
    if(_data->resolved < _data->types.size() && _data->types.back() == type)
        _data->types.pop_back();
}

UInt32 TypeFactory::getNumTypes() const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    return static_cast<UInt32>(_data->types.size());
}

TypeBase *TypeFactory::findType(UInt32 id) const
{
    std::lock_guard<std::mutex> hold(_data->guard);
    return id < _data->types.size() ? _data->types[id] : nullptr;
}

TypeBase *TypeFactory::findType(char const *name, UInt32 nameSpace) const
{
    if(name == nullptr)
        return nullptr;
    std::lock_guard<std::mutex> hold(_data->guard);
    _data->indexNames();
    auto const found = _data->byName.find(Data::key(name, nameSpace));
    return found != _data->byName.end() ? found->second : nullptr;
}

void TypeFactory::resolve()
{
    std::lock_guard<std::mutex> hold(_data->guard);
    _data->indexNames();
    for(TypeBase *type : _data->types)
    {
        if(type->_parent != nullptr || type->_parentName == nullptr)
            continue;
        auto const parent = _data->byName.find(Data::key(type->_parentName, type->_nameSpace));
        if(parent != _data->byName.end())
            type->_parent = parent->second;
        else
            OSG_LOG_WARNING("Type %s: no type %s for its parent\n", type->_name, type->_parentName);
    }
}
} // namespace OSG
