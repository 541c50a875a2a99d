#pragma once

/// \file
/// Fields that follow other fields.
///
///   SingletonHolder<FieldConnectorFactoryBase>::the()->connect(lamp, "position", marker,
///   "origin");
///
/// From then on each commit that publishes a change of the lamp's position sets the marker's
/// origin, in the same commit. Connections may form chains and circles: a value that is there
/// already is not set again. They belong to the aspect in which they were made; other aspects
/// receive what they set. They are neither copied nor saved.

#include <memory>
#include <vector>

#include "OSGFieldContainer.h"
#include "OSGSingletonHolder.h"

namespace OSG
{
/// Brings the values of one field into another one.
class OSG_SYSTEM_API BasicFieldConnector : public MemObject
{
  public:
    BasicFieldConnector(FieldContainer *source, FieldDescriptionBase const &sourceField,
                        FieldContainer *target, FieldDescriptionBase const &targetField);
    virtual ~BasicFieldConnector();
    BasicFieldConnector(BasicFieldConnector const &) = delete;
    BasicFieldConnector &operator=(BasicFieldConnector const &) = delete;

    /// Null once it has died. Neither end is kept alive.
    FieldContainer *getSource() const { return _source.get(); }
    FieldContainer *getTarget() const { return _target.get(); }
    FieldDescriptionBase const &getSourceField() const { return _sourceField; }
    FieldDescriptionBase const &getTargetField() const { return _targetField; }
    /// Whether a change of these fields of the source concerns the connector.
    bool matches(BitVector changed) const { return (changed & _sourceField.getFieldMask()) != 0; }

    /// Sets the target to the values of the source, unless it has them. Nothing where one end has
    /// died.
    void process();

  protected:
    virtual void transfer(GetFieldHandlePtr const &source, EditFieldHandle &target) = 0;

  private:
    WeakRefPtr<FieldContainer> _source;
    WeakRefPtr<FieldContainer> _target;
    FieldDescriptionBase const &_sourceField;
    FieldDescriptionBase const &_targetField;
};

/// Made on first use, never destroyed; guarded by a lock of its own.
class OSG_SYSTEM_API FieldConnectorFactoryBase
{
  public:
    static FieldConnectorFactoryBase *the();

    /// A connector between two fields: value fields of the same type, or pointer fields of the same
    /// cardinality where what the source points to suits the target. Null for others, for children,
    /// and where something is null.
    std::unique_ptr<BasicFieldConnector>
    createConnector(FieldContainer *source, FieldDescriptionBase const *sourceField,
                    FieldContainer *target, FieldDescriptionBase const *targetField) const;

    /// Makes a connector that commits run. Connecting the same fields twice is connecting them
    /// once. False where they cannot be connected.
    bool connect(FieldContainer *source, char const *sourceField, FieldContainer *target,
                 char const *targetField);
    /// Ends that connection; false where there is none.
    bool disconnect(FieldContainer *source, char const *sourceField, FieldContainer *target,
                    char const *targetField);
    /// Ends all connections from `source`.
    void disconnect(FieldContainer *source);

    /// Called at a commit for a container that is the source of connections.
    void process(FieldContainer *source, BitVector changed);

  private:
    FieldConnectorFactoryBase();
    ~FieldConnectorFactoryBase() = default;
    struct Data;
    Data *_data;
};

template <>
OSG_SYSTEM_API FieldConnectorFactoryBase *SingletonHolder<FieldConnectorFactoryBase>::the();
} // namespace OSG
