#pragma once

/// \file
/// All containers of the process by id, and their types by name.

#include <vector>

#include "OSGMemManager.h"
#include "OSGRefCountPtr.h"
#include "OSGSingletonHolder.h"
#include "OSGSystemApi.h"

namespace OSG
{
class AspectStore;
class FieldContainer;
class FieldContainerType;

/// Guarded by a lock of its own; made on first use, never destroyed.
class OSG_SYSTEM_API FieldContainerFactoryBase
{
  public:
    static FieldContainerFactoryBase *the();

    // --- containers ---
    /// Gives a container its id. Ids of dead containers return first in, first
    /// out; 0 is never given.
    UInt32 registerContainer(FieldContainer *const &container);
    void deregisterContainer(UInt32 id);
    /// A copy that ends: gives the id back at once where the container lives in one aspect alone.
    /// Otherwise the result is the store of the copies, and the id is for the last of them to give
    /// back. Nothing happens for id 0.
    AspectStore *leave(UInt32 id);
    /// Asks the processor to have at hand what leave() will need soon.
    void expectToLeave(UInt32 id) const;
    /// The copy of the calling thread's aspect; null for an id that no container has.
    FieldContainer *getContainer(UInt32 id) const;
    /// The container that stands for an id of a file or stream being read (StreamIdMap); the same
    /// as getContainer where the calling thread has no map.
    FieldContainer *getMappedContainer(UInt32 id) const;
    UInt32 getNumContainers() const;
    /// The ids that are given, ascending.
    std::vector<UInt32> getIds() const;
    using StoreList = std::vector<AspectStore *, MemAllocator<AspectStore *>>;
    /// The aspect stores of all containers, by ascending id; the caller releases each.
    StoreList holdStores();
    /// The store of a registered container, which gets one here if it has none.
    AspectStore *makeStore(FieldContainer const &container);
    /// The store of the container with that id; null where it has none.
    AspectStore *findStore(UInt32 id) const;

    // --- types ---
    /// Null where no container type has that name.
    FieldContainerType *findType(char const *name) const;
    /// All container types, parents before children, otherwise in the order of their construction.
    std::vector<FieldContainerType *> getTypes() const;
    /// A new object of the type by its prototype; null for unknown and abstract types.
    TransitPtr<FieldContainer> createContainer(char const *typeName) const;

  private:
    FieldContainerFactoryBase();
    ~FieldContainerFactoryBase() = default;
    AspectStore *makeStoreUnderLock(FieldContainer const &container, UInt32 id);
    struct Data;
    Data *_data;
};

template <>
OSG_SYSTEM_API FieldContainerFactoryBase *SingletonHolder<FieldContainerFactoryBase>::the();
} // namespace OSG
