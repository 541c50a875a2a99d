#pragma once

/// \file
/// Run-time types: named objects with a dense id and, once the system is up, a parent.

#include <string>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"

namespace OSG
{
/// Base of all run-time types. A type is a static object: its constructor only records names and
/// takes the next id, so that types may be constructed in any order. `TypeFactory::resolve` (called
/// by startUp) looks the parents up. Types are never unregistered.
class OSG_BASE_API TypeBase
{
  public:
    /// When the init function of a container type is called.
    enum InitPhase
    {
        FactoryPre = 0, ///< never passed to init functions; the types are only recorded
        SystemPre = 1,  ///< the type's fields are described and its prototype stands
        SystemPost = 2  ///< all types are up: the place to register at actions and factories
    };

    /// Names are not copied; they are literals. `parentName` may be null.
    TypeBase(char const *name, char const *parentName, UInt32 nameSpace = 0);
    virtual ~TypeBase();
    TypeBase(TypeBase const &) = delete;
    TypeBase &operator=(TypeBase const &) = delete;

    UInt32 getId() const { return _id; }
    char const *getCName() const { return _name; }
    std::string getName() const { return _name; }
    char const *getCParentName() const { return _parentName; }
    UInt32 getNameSpace() const { return _nameSpace; }

    /// Null before startUp and for the roots.
    TypeBase const *getParent() const { return _parent; }
    /// True for the type itself and for every type on the way to its root.
    bool isDerivedFrom(TypeBase const &other) const;

  private:
    friend class TypeFactory;

    char const *_name;
    char const *_parentName;
    TypeBase const *_parent = nullptr;
    UInt32 _id;
    UInt32 _nameSpace;
};

/// A type that values can have. Compared by identity.
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
    /// A type that could not be made to the end gives its id back; others keep theirs for ever.
    void takeBack(TypeBase const *type);
    UInt32 getNumTypes() const;
    /// Null for an id that no type has.
    TypeBase *findType(UInt32 id) const;
    /// The first type of that name; null where there is none.
    TypeBase *findType(char const *name, UInt32 nameSpace = 0) const;
    /// Looks up the parents that are not known yet. May be called again when types were added.
    void resolve();

  private:
    TypeFactory();
    ~TypeFactory() = default;
    struct Data;
    Data *_data;
};
} // namespace OSG
