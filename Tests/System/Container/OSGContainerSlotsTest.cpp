/// \file
/// Checks the order of the virtual operations of a container. Hosts that were compiled before
/// depend on this order.

#include <cstring>
#include <gtest/gtest.h>

#include "OSGFieldContainer.h"

#ifdef __GXX_ABI_VERSION

namespace OSG::Test
{
namespace
{
/// Slot of a virtual member function, counted from 0, as this ABI stores it in the pointer.
template <class MemberFunction>
std::ptrdiff_t slot_of(MemberFunction function)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &function, sizeof(offset));
    return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
}

/// Gives the tests access to protected members.
struct Opened : FieldContainer
{
    static std::ptrdiff_t onDestroySlot() { return slot_of(&Opened::onDestroy); }
    static std::ptrdiff_t onDestroyAspectSlot() { return slot_of(&Opened::onDestroyAspect); }
};

template <class R, class... A>
using Function = R (FieldContainer::*)(A...);
template <class R, class... A>
using ConstFunction = R (FieldContainer::*)(A...) const;

TEST(ContainerSlots, VirtualOperationsStandInTheirOrder)
{
    using F = FieldContainer;
    using Type = FieldContainerType;
    using Handler = ExceptionBinaryDataHandler;
    std::ptrdiff_t const slots[] = {
        slot_of(static_cast<ConstFunction<Type const &>>(&F::getType)),
        slot_of(static_cast<Function<Type &>>(&F::getType)),
        slot_of(&F::getContainerSize),
        slot_of(&F::changed),
        slot_of(&F::getNumFields),
        slot_of(static_cast<Function<EditFieldHandlePtr, UInt32>>(&F::editField)),
        slot_of(static_cast<Function<EditFieldHandlePtr, char const *>>(&F::editField)),
        slot_of(static_cast<ConstFunction<GetFieldHandlePtr, UInt32>>(&F::getField)),
        slot_of(static_cast<ConstFunction<GetFieldHandlePtr, char const *>>(&F::getField)),
        slot_of(static_cast<ConstFunction<FieldDescriptionBase const *, UInt32>>(
            &F::getFieldDescription)),
        slot_of(static_cast<ConstFunction<FieldDescriptionBase const *, char const *>>(
            &F::getFieldDescription)),
        slot_of(static_cast<Function<UInt64, BitVector>>(&F::getBinSize)),
        slot_of(static_cast<Function<void, Handler &, BitVector>>(&F::copyToBin)),
        slot_of(static_cast<Function<void, Handler &, BitVector>>(&F::copyFromBin)),
        slot_of(&F::dump),
        15, // the destructor, which has two slots
        16,
        Opened::onDestroySlot(),
        Opened::onDestroyAspectSlot(),
        slot_of(&F::deregister),
        slot_of(&F::registerChangedContainerV),
        slot_of(&F::findNamedComponent),
        slot_of(&F::shallowCopy),
        slot_of(&F::shallowCopyLocal),
        slot_of(&F::shallowCopyDependent),
        slot_of(&F::invalidateVolume),
        slot_of(&F::unlinkChild),
        slot_of(&F::execSyncV),
        slot_of(&F::resolveLinks),
        slot_of(&F::createAspectCopy),
        slot_of(&F::linkParent),
        slot_of(&F::unlinkParent)};
    std::ptrdiff_t expected = 0;
    for(std::ptrdiff_t slot : slots)
        EXPECT_EQ(slot, expected++);
}
} // namespace
} // namespace OSG::Test

#endif
