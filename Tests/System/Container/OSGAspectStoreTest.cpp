#include "OSGAspectStore.h"

#include <gtest/gtest.h>

#include "OSGName.h"
#include "OSGThread.h"

namespace OSG
{
namespace
{
/// Works on another aspect while it lives.
class OtherAspect
{
  public:
    OtherAspect() { Thread::setCurrentAspect(1); }
    ~OtherAspect() { Thread::setCurrentAspect(0); }
};

TEST(AspectStore, AContainerIsRegisteredForItsAspectAlone)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    EXPECT_EQ(name->getAspectStore()->getPtr(0), name);
    EXPECT_EQ(name->getAspectStore()->getPtr(1), nullptr);
    EXPECT_EQ(name->getAspectStore()->getRefCount(), 1);
}

TEST(AspectStore, ACopyForAnotherAspectSharesStoreAndId)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    name->setName("pump");
    OtherAspect const inOther;
    UnrecordedRefPtr<FieldContainer> const copy(name->createAspectCopy(name));
    EXPECT_EQ(copy->getId(), name->getId());
    EXPECT_EQ(copy->getAspectStore(), name->getAspectStore());
    EXPECT_EQ(name->getAspectStore()->getPtr(1), copy);
    EXPECT_EQ(name->getAspectStore()->getRefCount(), 2);
    EXPECT_EQ(dynamic_cast<Name *>(copy.get())->getName(), "pump");

    std::vector<Int64> offsets;
    name->getAspectStore()->fillOffsetArray(offsets, name);
    ASSERT_EQ(offsets.size(), 2u);
    EXPECT_EQ(offsets[0], 0);
    EXPECT_EQ(reinterpret_cast<char *>(name.get()) + offsets[1],
              reinterpret_cast<char *>(copy.get()));
}

TEST(AspectStore, SynchronisingCarriesTheFieldsOfTheMask)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    OtherAspect const inOther;
    UnrecordedRefPtr<FieldContainer> const copy(name->createAspectCopy(name));
    name->setName("pump");
    name->setInternal(true);
    AspectOffsets offsets;
    copy->execSyncV(*name, Name::NameFieldMask, offsets, 0, 0);
    EXPECT_EQ(dynamic_cast<Name *>(copy.get())->getName(), "pump");
    EXPECT_FALSE(dynamic_cast<Name *>(copy.get())->getInternal());
}
} // namespace
} // namespace OSG
