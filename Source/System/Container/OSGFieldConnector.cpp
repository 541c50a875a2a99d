#include "OSGFieldConnector.h"

#include <algorithm>
#include <mutex>
#include <unordered_map>

#include "OSGBinaryDataHandler.h"
#include "OSGPointerFieldHandles.h"

namespace OSG
{
BasicFieldConnector::BasicFieldConnector(FieldContainer *source,
                                         FieldDescriptionBase const &sourceField,
                                         FieldContainer *target,
                                         FieldDescriptionBase const &targetField)
    : _source(source)
    , _target(target)
    , _sourceField(sourceField)
    , _targetField(targetField)
{
}
BasicFieldConnector::~BasicFieldConnector() = default;

namespace
{
bool same_bytes(FieldContainer &one, FieldContainer &other, FieldDescriptionBase const &oneField,
                FieldDescriptionBase const &otherField)
{
    MemoryBinaryDataHandler oneBytes;
    MemoryBinaryDataHandler otherBytes;
    one.copyToBin(oneBytes, oneField.getFieldMask());
    other.copyToBin(otherBytes, otherField.getFieldMask());
    return oneBytes.getBytes() == otherBytes.getBytes();
}

bool same_pointers(GetFieldHandle const &one, GetFieldHandle const &other)
{
    if(one.size() != other.size())
        return false;
    for(UInt32 i = 0; i < one.size(); ++i)
    {
        if(one.getPointer(i) != other.getPointer(i))
            return false;
    }
    return true;
}

class ValueConnector : public BasicFieldConnector
{
  public:
    using BasicFieldConnector::BasicFieldConnector;

  protected:
    void transfer(GetFieldHandlePtr const &source, EditFieldHandle &target) override
    {
        target.copyValues(source);
    }
};

class PointerConnector : public BasicFieldConnector
{
  public:
    using BasicFieldConnector::BasicFieldConnector;

  protected:
    void transfer(GetFieldHandlePtr const &source, EditFieldHandle &target) override
    {
        target.shareValues(source);
    }
};
} // namespace

void BasicFieldConnector::process()
{
    UnrecordedRefPtr<FieldContainer> const source(getSource());
    UnrecordedRefPtr<FieldContainer> const target(getTarget());
    if(source == nullptr || target == nullptr)
        return;
    GetFieldHandlePtr const from = source->getField(_sourceField.getFieldId());
    GetFieldHandlePtr const to = target->getField(_targetField.getFieldId());
    // A value that is not equal to itself would go round in a circle for ever: bytes are.
    bool const same =
        from->isPointerField()
            ? same_pointers(*from, *to)
            : from->equal(*to) || same_bytes(*source, *target, _sourceField, _targetField);
    if(!same)
        transfer(from, *target->editField(_targetField.getFieldId()));
}

struct FieldConnectorFactoryBase::Data
{
    using ConnectorPtr = std::shared_ptr<BasicFieldConnector>;
    using Connectors = std::vector<ConnectorPtr, MemAllocator<ConnectorPtr>>;

    std::mutex guard;
    std::unordered_map<FieldContainer const *, Connectors, std::hash<FieldContainer const *>,
                       std::equal_to<FieldContainer const *>,
                       MemAllocator<std::pair<FieldContainer const *const, Connectors>>>
        bySource;
};

FieldConnectorFactoryBase::FieldConnectorFactoryBase()
    : _data(new Data)
{
}

FieldConnectorFactoryBase *FieldConnectorFactoryBase::the()
{
    static FieldConnectorFactoryBase *const factory = new FieldConnectorFactoryBase;
    return factory;
}

template <>
FieldConnectorFactoryBase *SingletonHolder<FieldConnectorFactoryBase>::the()
{
    return FieldConnectorFactoryBase::the();
}

std::unique_ptr<BasicFieldConnector> FieldConnectorFactoryBase::createConnector(
    FieldContainer *source, FieldDescriptionBase const *sourceField, FieldContainer *target,
    FieldDescriptionBase const *targetField) const
{
    if(source == nullptr || sourceField == nullptr || target == nullptr || targetField == nullptr)
        return nullptr;
    FieldType const &from = sourceField->getFieldType();
    FieldType const &to = targetField->getFieldType();
    if(from.getClass() == FieldClass::Value)
        return from == to
                   ? std::make_unique<ValueConnector>(source, *sourceField, target, *targetField)
                   : nullptr;
    if(!EditPointerFieldHandle::isShareable(from, to) ||
       target->getField(targetField->getFieldId())->isChildField())
        return nullptr;
    return std::make_unique<PointerConnector>(source, *sourceField, target, *targetField);
}

bool FieldConnectorFactoryBase::connect(FieldContainer *source, char const *sourceField,
                                        FieldContainer *target, char const *targetField)
{
    if(source == nullptr || target == nullptr)
        return false;
    std::shared_ptr<BasicFieldConnector> connector =
        createConnector(source, source->getFieldDescription(sourceField), target,
                        target->getFieldDescription(targetField));
    if(connector == nullptr)
        return false;
    disconnect(source, sourceField, target, targetField);
    std::lock_guard const hold(_data->guard);
    _data->bySource[source].push_back(std::move(connector));
    source->_isConnected = true;
    return true;
}

bool FieldConnectorFactoryBase::disconnect(FieldContainer *source, char const *sourceField,
                                           FieldContainer *target, char const *targetField)
{
    std::lock_guard const hold(_data->guard);
    auto const found = _data->bySource.find(source);
    if(found == _data->bySource.end() || target == nullptr)
        return false;
    FieldDescriptionBase const *const from = source->getFieldDescription(sourceField);
    FieldDescriptionBase const *const to = target->getFieldDescription(targetField);
    auto const same = [=](std::shared_ptr<BasicFieldConnector> const &connector)
    {
        return connector->getTarget() == target && &connector->getSourceField() == from &&
               &connector->getTargetField() == to;
    };
    Data::Connectors &connectors = found->second;
    auto const place = std::find_if(connectors.begin(), connectors.end(), same);
    if(place == connectors.end())
        return false;
    connectors.erase(place);
    source->_isConnected = !connectors.empty();
    if(connectors.empty())
        _data->bySource.erase(found);
    return true;
}

void FieldConnectorFactoryBase::disconnect(FieldContainer *source)
{
    if(source == nullptr)
        return;
    // Connectors may hold the last reference of a container that is connected itself. They end
    // after the lock, because the end of that container comes here again.
    Data::Connectors ended;
    std::lock_guard const hold(_data->guard);
    auto const found = _data->bySource.find(source);
    if(found == _data->bySource.end())
        return;
    ended.swap(found->second);
    _data->bySource.erase(found);
    source->_isConnected = false;
}

void FieldConnectorFactoryBase::process(FieldContainer *source, BitVector changed)
{
    Data::Connectors connectors;
    {
        std::lock_guard const hold(_data->guard);
        auto const found = _data->bySource.find(source);
        if(found == _data->bySource.end())
            return;
        for(auto const &connector : found->second)
        {
            if(connector->matches(changed))
                connectors.push_back(connector);
        }
    }
    for(auto const &connector : connectors)
        connector->process();
}
} // namespace OSG
