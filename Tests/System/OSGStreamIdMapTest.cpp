#include "OSGStreamIdMap.h"

#include <gtest/gtest.h>
#include <thread>

#include "OSGFieldContainerFactory.h"
#include "OSGName.h"

namespace OSG::Test
{
namespace
{
FieldContainer *mapped(UInt32 id)
{
    return FieldContainerFactoryBase::the()->getMappedContainer(id);
}
} // namespace

TEST(StreamIdMap, AnswersForTheFactoryWhileItLives)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    UnrecordedRefPtr<Name> const other(Name::create());
    {
        StreamIdMap ids;
        EXPECT_EQ(mapped(other->getId()), nullptr);
        ids.add(other->getId(), name);
        EXPECT_EQ(mapped(other->getId()), name);
        EXPECT_EQ(ids.find(other->getId()), name);
    }
    EXPECT_EQ(mapped(other->getId()), other);
    EXPECT_EQ(StreamIdMap::current(), nullptr);
}

TEST(StreamIdMap, TheInnermostAnswers)
{
    UnrecordedRefPtr<Name> const name(Name::create());
    StreamIdMap outer;
    outer.add(7, name);
    {
        StreamIdMap const inner;
        EXPECT_EQ(StreamIdMap::current(), &inner);
        EXPECT_EQ(mapped(7), nullptr);
    }
    EXPECT_EQ(mapped(7), name);
}

TEST(StreamIdMap, HoldsWhatWasAdded)
{
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    {
        StreamIdMap ids;
        ids.add(1, UnrecordedRefPtr<Name>(Name::create()));
        EXPECT_NE(mapped(1), nullptr);
        EXPECT_EQ(mapped(1)->getRefCount(), 1);
    }
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before);
}

TEST(StreamIdMap, ZeroIsNothingAndTheLastOfTwoStands)
{
    UnrecordedRefPtr<Name> const first(Name::create());
    UnrecordedRefPtr<Name> const second(Name::create());
    StreamIdMap ids;
    ids.add(0, first);
    ids.add(3, first);
    ids.add(3, second);
    EXPECT_EQ(mapped(0), nullptr);
    EXPECT_EQ(mapped(3), second);
}

TEST(StreamIdMap, OtherThreadsDoNotSeeIt)
{
    StreamIdMap const ids;
    StreamIdMap const *seen = &ids;
    std::thread([&seen] { seen = StreamIdMap::current(); }).join();
    EXPECT_EQ(seen, nullptr);
}
} // namespace OSG::Test
