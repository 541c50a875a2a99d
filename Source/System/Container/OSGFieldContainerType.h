#pragma once

/// \file
/// Run-time types of containers: fields, prototype, description.

#include <string>
#include <vector>

#include "OSGFieldDescription.h"
#include "OSGMemManager.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
class FieldContainer;
class FieldContainerType;

/// A type whose objects have described fields. Field ids are counted through the parents.
class OSG_SYSTEM_API ReflexiveContainerType : public DataType
{
  public:
    ReflexiveContainerType(char const *name, char const *parentName, char const *groupName,
                           UInt32 nameSpace);
    ~ReflexiveContainerType() override;

    /// Description of the field with that id, its own or a parent's; null where there is none.
    FieldDescriptionBase const *getFieldDesc(UInt32 id) const;
    /// The same by name; null has no field.
    FieldDescriptionBase const *getFieldDesc(char const *name) const;
    /// The type's own fields in id order, without the parents'.
    std::vector<FieldDescriptionBase *> const &getOwnFieldDescs() const { return _own; }
    /// All fields in id order, the parents' first.
    std::vector<FieldDescriptionBase const *> getFieldDescs() const;
    /// Number of fields, the parents' included.
    UInt32 getNumFieldDescs() const;

    /// Called by a class's description inserter; takes over `description`. Null, and a
    /// description without a name, are refused: it is deleted, and the result is 0. Otherwise its
    /// id.
    UInt32 addInitialDesc(FieldDescriptionBase *description);

    /// Types with the same group name have the same id; "NULL" is id 0.
    UInt32 getGroupId() const { return _groupId; }
    char const *getGroupName() const { return _groupName; }

  private:
    template <class Predicate>
    FieldDescriptionBase const *findFieldDesc(Predicate const &isMeant) const;

    std::vector<FieldDescriptionBase *> _own;
    char const *_groupName;
    UInt32 _groupId;
};

/// The type of a container class. Recorded when it is constructed, brought up by startUp: then its
/// fields are described, its prototype is made and its init function is called.
class OSG_SYSTEM_API FieldContainerType : public ReflexiveContainerType
{
  public:
    using CreateFunction = FieldContainer *(*)(UInt64 localFlags);
    using InitFunction = void (*)(InitPhase phase);
    using DescriptionInserter = void (*)(FieldContainerType &type);

    /// `create` makes an object without a prototype; null for an abstract class, which then has no
    /// prototype either. `exit` is called at shutDown. `xml` is the whole description of the class,
    /// `documentation` its prose. `descriptionsAddable` and `flags` are for
    /// descriptions that are added later, of which there are none yet.
    FieldContainerType(char const *name, char const *parentName, char const *groupName,
                       UInt32 nameSpace, CreateFunction create, InitFunction init,
                       InitFunction exit, DescriptionInserter inserter, bool descriptionsAddable,
                       UInt64 flags, std::string xml, std::string documentation);
    ~FieldContainerType() override;

    /// What `create` copies. Null for an abstract type, before startUp and after shutDown.
    FieldContainer *getPrototype() const { return _prototype; }
    /// Replaces the prototype, which is referenced; the old one is released.
    void setPrototype(FieldContainer *prototype);
    bool isAbstract() const { return _create == nullptr; }

    /// A new object by the type's prototype, null where there is none.
    TransitPtr<FieldContainer> createContainer() const;
    /// A new object as its class makes it, whatever the prototype has been set to; null where there
    /// is no prototype.
    TransitPtr<FieldContainer> createEmptyContainer() const;

    /// Whether deepClone points to objects of this type, and of derived ones, in place of copying
    /// them.
    bool isSharedByClones() const;
    void setSharedByClones(bool isShared) { _isSharedByClones = isShared; }

    std::string const &getFcdXml() const { return _xml; }
    std::string const &getDocumentation() const { return _documentation; }

    // --- called by startUp and shutDown, parents before children ---
    void describeFields();
    void makePrototype();
    void initialize(InitPhase phase);
    void terminate();

  private:
    enum class Stage
    {
        Recorded,
        Described,
        HasPrototype,
        Up
    };

    CreateFunction _create;
    InitFunction _init;
    InitFunction _exit;
    DescriptionInserter _inserter;
    FieldContainer *_prototype = nullptr;
    std::string _xml;
    std::string _documentation;
    Stage _stage = Stage::Recorded;
    bool _isSharedByClones = false;
};
} // namespace OSG
