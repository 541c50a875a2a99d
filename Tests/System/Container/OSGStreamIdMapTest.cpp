#include "OSGStreamIdMap.h"

#include <gtest/gtest.h>
#include <thread>

#include "OSGBinaryDataHandler.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGSimpleMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGThread.h"

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

namespace
{
/// Reads `ids` into the pointer fields of `mask`.
void read_pointers(FieldContainer &container, BitVector mask, std::vector<UInt32> const &ids)
{
    MemoryBinaryDataHandler bytes;
    bytes.putValues(ids.data(), ids.size());
    container.copyFromBin(bytes, mask);
}
} // namespace

TEST(StreamIdMap, AContainerOfAnotherClassIsReadAsNull)
{
    UnrecordedRefPtr<MaterialGroup> const group(MaterialGroup::create());
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    group->setMaterial(material);
    StreamIdMap ids;
    ids.add(5, group);
    ids.add(6, material);
    read_pointers(*group, MaterialGroup::MaterialFieldMask, {5});
    EXPECT_EQ(group->getMaterial(), nullptr);
    read_pointers(*group, MaterialGroup::MaterialFieldMask, {6});
    EXPECT_EQ(group->getMaterial(), material);
    read_pointers(*group, MaterialGroup::MaterialFieldMask, {0});
    EXPECT_EQ(group->getMaterial(), nullptr);
}

TEST(StreamIdMap, WhatAReadReplacesLosesItsReferenceAtTheCommit)
{
    ChangeList &changes = *Thread::getCurrentChangeList();
    changes.commitChanges();
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    {
        UnrecordedRefPtr<MaterialGroup> const group(MaterialGroup::create());
        UnrecordedRefPtr<SwitchMaterial> const choice(SwitchMaterial::create());
        group->setMaterial(UnrecordedRefPtr<SimpleMaterial>(SimpleMaterial::create()));
        choice->editMFMaterials()->push_back(
            UnrecordedRefPtr<SimpleMaterial>(SimpleMaterial::create()));
        read_pointers(*group, MaterialGroup::MaterialFieldMask, {0});
        read_pointers(*choice, SwitchMaterial::MaterialsFieldMask, {0});
        EXPECT_EQ(group->getMaterial(), nullptr);
        EXPECT_TRUE(choice->getMFMaterials()->empty());
        EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before + 4);
        changes.commitChanges();
        EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before + 2);
    }
}

TEST(StreamIdMap, OtherThreadsDoNotSeeIt)
{
    StreamIdMap const ids;
    StreamIdMap const *seen = &ids;
    std::thread([&seen] { seen = StreamIdMap::current(); }).join();
    EXPECT_EQ(seen, nullptr);
}
} // namespace OSG::Test
