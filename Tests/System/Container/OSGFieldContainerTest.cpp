#include "OSGFieldContainer.h"

#include <gtest/gtest.h>

#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGGroup.h"
#include "OSGManyFields.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGPointLight.h"
#include "OSGThread.h"
#include "OSGTransform.h"

namespace OSG
{
namespace
{
using NamePtr = UnrecordedRefPtr<Name>;

FieldContainerFactoryBase &factory() { return *FieldContainerFactoryBase::the(); }

TEST(FieldContainer, HasAnIdUnderWhichTheFactoryFindsIt)
{
    NamePtr const name(Name::create());
    EXPECT_NE(name->getId(), 0u);
    EXPECT_EQ(factory().getContainer(name->getId()), name);
    EXPECT_EQ(factory().getMappedContainer(name->getId()), name);
}

TEST(FieldContainer, TheIdOfADeadContainerNamesNothing)
{
    UInt32 id = 0;
    {
        NamePtr const name(Name::create());
        id = name->getId();
    }
    EXPECT_EQ(factory().getContainer(id), nullptr);
    EXPECT_EQ(factory().getContainer(0), nullptr);
    EXPECT_EQ(factory().getContainer(0xFFFFFFFF), nullptr);
}

TEST(FieldContainer, IdsOfTheDeadReturnFirstInFirstOut)
{
    // Ids that earlier tests left behind are used up first.
    std::vector<NamePtr> kept;
    std::size_t free = 0;
    do
    {
        for(std::size_t i = 0; i < free + 2; ++i)
            kept.push_back(NamePtr(Name::create()));
        std::vector<UInt32> const given = factory().getIds();
        free = given.back() - given.size();
    } while(free != 0 || kept.back()->getId() != factory().getNumContainers());
    UInt32 const first = kept[0]->getId();
    UInt32 const second = kept[1]->getId();
    kept[0] = nullptr;
    kept[1] = nullptr;
    EXPECT_EQ(NamePtr(Name::create())->getId(), first);
    EXPECT_EQ(NamePtr(Name::create())->getId(), second);
}

TEST(FieldContainer, CreateHandsOneReferenceOver)
{
    TransitPtr<Name> made = Name::create();
    EXPECT_EQ(made->getRefCount(), 1);
    NamePtr const name(std::move(made));
    EXPECT_EQ(name->getRefCount(), 1);
}

TEST(FieldContainer, WhatNobodyReceivesEnds)
{
    UInt32 const before = factory().getNumContainers();
    Name::create();
    EXPECT_EQ(factory().getNumContainers(), before);
}

TEST(FieldContainer, RecordedAndUnrecordedReferencesKeepItAliveTogether)
{
    UInt32 const before = factory().getNumContainers();
    NamePtr unrecorded(Name::create());
    RecordedRefPtr<Name> recorded(unrecorded.get());
    EXPECT_EQ(recorded->getRefCount(), 2);
    unrecorded = nullptr;
    EXPECT_EQ(factory().getNumContainers(), before + 1);
    recorded = nullptr;
    EXPECT_EQ(factory().getNumContainers(), before);
}

TEST(FieldContainer, AWeakPointerReadsAsNullOnceTheObjectHasDied)
{
    NamePtr name(Name::create());
    WeakRefPtr<Name> const weak(name.get());
    EXPECT_EQ(weak.get(), name);
    name = nullptr;
    EXPECT_EQ(weak.get(), nullptr);
}

TEST(FieldContainer, ALightAndItsBeaconEndTogetherInEitherOrder)
{
    UInt32 const before = factory().getNumContainers();
    for(bool beaconFirst : {false, true})
    {
        UnrecordedRefPtr<Node> const root(Node::create());
        UnrecordedRefPtr<Node> const beacon(Node::create());
        UnrecordedRefPtr<Node> const lit(Node::create());
        UnrecordedRefPtr<PointLight> const light(PointLight::create());
        light->setBeacon(beacon);
        lit->setCore(light);
        root->addChild(beaconFirst ? beacon : lit);
        root->addChild(beaconFirst ? lit : beacon);
    }
    EXPECT_EQ(factory().getNumContainers(), before);
}

TEST(FieldContainer, OneThatLooksWeaklyAtItselfEndsOnce)
{
    UInt32 const before = factory().getNumContainers();
    {
        UnrecordedRefPtr<Node> const node(Node::create());
        UnrecordedRefPtr<PointLight> const light(PointLight::create());
        node->setCore(light);
        light->setBeacon(node);
    }
    EXPECT_EQ(factory().getNumContainers(), before);
}

TEST(FieldContainer, AWeakFieldReadsAsNullOnceItsTargetHasDied)
{
    UnrecordedRefPtr<PointLight> const light(PointLight::create());
    {
        UnrecordedRefPtr<Node> const beacon(Node::create());
        light->setBeacon(beacon);
        EXPECT_EQ(light->getBeacon(), beacon);
    }
    EXPECT_EQ(light->getBeacon(), nullptr);
    EXPECT_EQ(light->getField("beacon")->getPointer(0), nullptr);
}

namespace
{
/// Commits, and edits afterwards, whenever the change of it is published.
class CommittingTransform : public Transform
{
  public:
    static UnrecordedRefPtr<CommittingTransform> make()
    {
        return UnrecordedRefPtr<CommittingTransform>(new CommittingTransform);
    }

    Name *edited = nullptr;

  protected:
    void changed(BitVector whichField, UInt32 origin, BitVector details) override
    {
        Transform::changed(whichField, origin, details);
        Thread::getCurrentChangeList()->commitChanges();
        edited->setName("edited");
    }
};
} // namespace

TEST(FieldContainer, AnEditAfterANestedCommitIsPublishedToo)
{
    ChangeList &changes = *Thread::getCurrentChangeList();
    NamePtr const name(Name::create());
    changes.commitChanges();
    UnrecordedRefPtr<CommittingTransform> const transform = CommittingTransform::make();
    transform->edited = name;
    transform->setMatrix(Matrix());
    changes.commitChanges();
    EXPECT_EQ(name->getName(), "edited");
    EXPECT_EQ(name->getChangeMask(), 0u);
    EXPECT_FALSE(changes.hasOpenEdits());
}

TEST(FieldContainer, AnEditIsOpenUntilTheCommit)
{
    ChangeList &changes = *Thread::getCurrentChangeList();
    changes.commitChanges();
    NamePtr const name(Name::create());
    changes.commitChanges();
    EXPECT_EQ(name->getChangeMask(), 0u);
    name->setName("pump");
    EXPECT_EQ(name->getChangeMask(), BitVector(Name::NameFieldMask));
    name->setInternal(true);
    EXPECT_EQ(name->getChangeMask(), Name::NameFieldMask | Name::InternalFieldMask);
    EXPECT_TRUE(changes.hasOpenEdits());
    changes.commitChanges();
    EXPECT_EQ(name->getChangeMask(), 0u);
    EXPECT_FALSE(changes.hasOpenEdits());
}

TEST(FieldContainer, OneThatDiesWithOpenEditsLeavesTheChangeList)
{
    {
        NamePtr const name(Name::create());
        name->setName("gone");
    }
    Thread::getCurrentChangeList()->commitChanges();
}

TEST(FieldContainer, DelayedReferencesAreDroppedAtTheCommit)
{
    UInt32 const before = factory().getNumContainers();
    Name *const name = Name::create().release();
    ChangeList &changes = *Thread::getCurrentChangeList();
    changes.addDelayedSubRef<UnrecordedRefCountPolicy>(name);
    EXPECT_EQ(factory().getNumContainers(), before + 1);
    changes.commitChanges();
    EXPECT_EQ(factory().getNumContainers(), before);
}

TEST(FieldContainer, IdsOfTheFieldsEndWhereTheLibraryContinuesThem)
{
    EXPECT_EQ(Attachment::NextFieldId, 5u);
    EXPECT_EQ(Attachment::NextFieldMask, BitVector(32));
}

TEST(FieldContainer, AbstractClassesCannotBeMade)
{
    EXPECT_EQ(Attachment::getClassType().getPrototype(), nullptr);
    EXPECT_FALSE(NodeCore::create());
    EXPECT_EQ(NodeCore::createEmpty(), nullptr);
    EXPECT_FALSE(factory().createContainer("NodeCore"));
    EXPECT_FALSE(factory().createContainer("no such type"));
}

TEST(FieldContainer, AnEmptyOneIsMadeWithoutThePrototype)
{
    ChangeList const &changes = *Thread::getCurrentChangeList();
    FieldContainer *const prototype = ManyFields::getClassType().getPrototype();
    dynamic_cast<ManyFields &>(*prototype).setOneUInt32(7);
    UInt64 const created = changes.getNumCreated();
    UnrecordedRefPtr<ManyFields> const copied(ManyFields::create());
    UnrecordedRefPtr<ManyFields> const empty(ManyFields::createEmpty());
    UnrecordedRefPtr<ManyFields> const local(ManyFields::createEmptyLocal(6));
    EXPECT_EQ(copied->getOneUInt32(), 7u);
    EXPECT_EQ(empty->getOneUInt32(), 0u);
    EXPECT_EQ(local->getOneUInt32(), 0u);
    EXPECT_EQ(empty->getSharedMask(), ~BitVector(0));
    EXPECT_EQ(local->getSharedMask(), ~BitVector(6));
    EXPECT_EQ(changes.getNumCreated(), created + 3);
    UnrecordedRefPtr<ManyFields> const silent(ManyFields::createEmptyLocal(~BitVector(0)));
    EXPECT_EQ(changes.getNumCreated(), created + 3);
    EXPECT_EQ(factory().getContainer(silent->getId()), silent);
    EXPECT_EQ(silent->getAspectStore()->getPtr(0), silent);
    dynamic_cast<ManyFields &>(*prototype).setOneUInt32(0);
}

TEST(FieldContainer, ANewOneHasNoOpenEdits)
{
    Thread::getCurrentChangeList()->commitChanges();
    UnrecordedRefPtr<Node> const node(Node::create());
    UnrecordedRefPtr<Node> const copy(dynamic_transit_cast<Node>(node->shallowCopy()));
    EXPECT_EQ(node->getChangeMask(), 0u);
    EXPECT_EQ(copy->getChangeMask(), 0u);
    EXPECT_FALSE(Thread::getCurrentChangeList()->hasOpenEdits());
}

TEST(FieldContainer, ACopyHasOpenEditsForThePointersThatItsSourceHas)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    node->setCore(UnrecordedRefPtr<Transform>(Transform::create()));
    Thread::getCurrentChangeList()->commitChanges();
    UnrecordedRefPtr<Node> const copy(dynamic_transit_cast<Node>(node->shallowCopy()));
    EXPECT_EQ(copy->getChangeMask(), Node::CoreFieldMask);
}

TEST(FieldContainer, NodesAndGroupsAreSmall)
{
    // Scenes are made of millions of them.
    EXPECT_LE(sizeof(FieldContainer), 40u);
    EXPECT_LE(sizeof(Group), 56u);
    EXPECT_LE(sizeof(Node), 112u);
}

TEST(FieldContainer, LocalAndDependentOnesAreMadeFromThePrototype)
{
    UnrecordedRefPtr<ManyFields> const local(ManyFields::createLocal(4));
    UnrecordedRefPtr<ManyFields> const dependent(ManyFields::createDependent(4));
    EXPECT_EQ(local->getSharedMask(), ~BitVector(4));
    EXPECT_EQ(dependent->getSharedMask(), BitVector(4));
    UnrecordedRefPtr<FieldContainer> const copy(dependent->shallowCopy());
    EXPECT_EQ(copy->getSharedMask(), ~BitVector(0));
}

namespace
{
/// Writes down how it ends.
class Mortal : public Transform
{
  public:
    static UnrecordedRefPtr<Mortal> make(std::vector<std::string> &ends)
    {
        auto *const made = new Mortal(ends);
        made->enterSystem(0);
        return UnrecordedRefPtr<Mortal>(made);
    }
    FieldContainer *createAspectCopy(FieldContainer const *) const override
    {
        auto *const copy = new Mortal(_ends);
        copy->enterAspect(this);
        return copy;
    }

  protected:
    explicit Mortal(std::vector<std::string> &ends)
        : _ends(ends)
    {
    }
    void onDestroyAspect(UInt32 id, UInt32 aspect) override
    {
        _ends.push_back("aspect " + std::to_string(aspect) + (id == getId() ? "" : " unknown"));
    }
    void onDestroy(UInt32) override { _ends.push_back("all"); }

  private:
    std::vector<std::string> &_ends;
};
} // namespace

TEST(FieldContainer, EachCopyEndsAndTheLastOneEndsTheContainer)
{
    std::vector<std::string> ends;
    UnrecordedRefPtr<Mortal> source = Mortal::make(ends);
    UInt32 const id = source->getId();
    Thread::setCurrentAspect(2);
    UnrecordedRefPtr<FieldContainer> copy(source->createAspectCopy(source));
    Thread::setCurrentAspect(0);
    source = nullptr;
    EXPECT_EQ(ends, std::vector<std::string>{"aspect 0"});
    EXPECT_EQ(factory().getContainer(id), nullptr);
    EXPECT_EQ(copy->getId(), id);
    copy = nullptr;
    EXPECT_EQ(ends, (std::vector<std::string>{"aspect 0", "aspect 2", "all"}));

    ends.clear();
    Mortal::make(ends);
    EXPECT_EQ(ends, (std::vector<std::string>{"aspect 0", "all"}));
}

TEST(FieldContainer, AStoreIsMadeWhenItIsWanted)
{
    NamePtr const name(Name::create());
    EXPECT_EQ(name->findAspectStore(), nullptr);
    AspectStore *const store = name->getAspectStore();
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(name->findAspectStore(), store);
    EXPECT_EQ(store->getRefCount(), 1);
    EXPECT_EQ(factory().getContainer(name->getId()), name);
}

TEST(FieldContainer, TheFactoryMakesContainersByTheNameOfTheirType)
{
    TransitPtr<FieldContainer> const made = factory().createContainer("Node");
    ASSERT_TRUE(made);
    EXPECT_TRUE(made->getType() == Node::getClassType());
    EXPECT_TRUE(made->getType().isDerivedFrom(AttachmentContainer::getClassType()));
    EXPECT_FALSE(made->getType().isDerivedFrom(NodeCore::getClassType()));
}

TEST(FieldContainer, TypesComeWithParentsBeforeChildren)
{
    std::vector<FieldContainerType *> const types = factory().getTypes();
    for(std::size_t i = 0; i < types.size(); ++i)
    {
        if(types[i]->getParent() == nullptr)
            continue;
        auto const parent = std::find(types.begin(), types.begin() + i, types[i]->getParent());
        EXPECT_NE(parent, types.begin() + i) << types[i]->getName();
    }
}
} // namespace
} // namespace OSG
