#pragma once

/// \file
/// Run-time types: objects with a name, a dense id and, once the system runs, a parent.

#include <string>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"

namespace OSG
{
/// Base of all run-time types. A type is a static object. Its constructor only records names and
/// takes the next id, so types may be constructed in any order. startUp calls
/// `TypeFactory::resolve`, which finds the parents. Types are never unregistered.
class OSG_BASE_API TypeBase
{
  public:
    /// The moments at which the init function of a container type is called.
    enum InitPhase
    {
        FactoryPre = 0, ///< never passed to init functions; the types are only recorded
        SystemPre = 1,  ///< the type's fields are described and its prototype stands
        SystemPost = 2  ///< all types are up: the place to register at actions and factories
    };

    /// The names are literals and are not copied. `parentName` may be null.
    TypeBase(char const *name, char const *parentName, UInt32 nameSpace = 0);
    virtual ~TypeBase();
    TypeBase(TypeBase const &) = delete;
    TypeBase &operator=(TypeBase const &) = delete;

    UInt32 getId() const { return _id; }
    char const *getCName() const { return _name; }
    std::string getName() const { return _name; }
    char const *getCParentName() const { return _parentName; }
    UInt32 getNameSpace() const { return _nameSpace; }

    /// Null before startUp, and for a type without parent.
    TypeBase const *getParent() const { return _parent; }
    /// True for the type itself and for each of its ancestors.
    bool isDerivedFrom(TypeBase const &other) const;

  private:
    friend class TypeFactory;

    char const *_name;
    char const *_parentName;
    TypeBase const *_parent = nullptr;
    UInt32 _id;
    UInt32 _nameSpace;
};

/// The type of a value. Types are compared by identity.
class OSG_BASE_API DataType : public TypeBase
{
  public:
    using TypeBase::TypeBase;
    ~DataType() override;

    bool operator==(DataType const &other) const { return this == &other; }
    bool operator!=(DataType const &other) const { return this != &other; }
};

/// All types of the process by id and by name. Made on first use, never destroyed.
class OSG_BASE_API TypeFactory
{
  public:
    static TypeFactory &the();

    UInt32 registerType(TypeBase *type);
    /// Gives the id of a type back whose construction has failed. No other type gives its id back.
    void takeBack(TypeBase const *type);
    UInt32 getNumTypes() const;
    /// Null for an id that no type has.
    TypeBase *findType(UInt32 id) const;
    /// The first type of that name; null where there is none.
    TypeBase *findType(char const *name, UInt32 nameSpace = 0) const;
    /// Finds the parents that are not known yet. May be called again after types were added.
    void resolve();

  private:
    TypeFactory();
    ~TypeFactory() = default;
    struct Data;
    Data *_data;
};
} // namespace OSG
