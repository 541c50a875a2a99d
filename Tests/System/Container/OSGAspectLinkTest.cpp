#include "OSGAspectLink.h"

#include <barrier>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGName.h"
#include "OSGPointLight.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
constexpr UInt32 OtherAspect = 1;

ChangeList &changes() { return *Thread::getCurrentChangeList(); }
FieldContainerFactoryBase &factory() { return *FieldContainerFactoryBase::the(); }

/// The copy of `container` in the other aspect.
template <class T>
T *other(T *container)
{
    return dynamic_cast<T *>(container->getAspectStore()->getPtr(OtherAspect));
}

/// A receiver on the other aspect in a thread of its own. The calling thread is the giver, and
/// waits in every call.
class Receiver
{
  public:
    Receiver()
        : _giver(&changes())
        , _thread([this] { run(); })
    {
        _meeting.arrive_and_wait();
        ask([this] { _link = std::make_unique<AspectLink>(_giver, 0); });
    }
    ~Receiver()
    {
        ask([this] { _link.reset(); });
        ask(nullptr);
        _thread.join();
    }

    void receive()
    {
        ask([this] { _link->receive(); });
    }
    /// Runs `work` in the receiver's thread.
    void ask(std::function<void()> work)
    {
        _work = std::move(work);
        _meeting.arrive_and_wait();
        _meeting.arrive_and_wait();
    }
    UInt32 getNumCopies() const { return _link->getNumCopies(); }

  private:
    void run()
    {
        Thread::setCurrentAspect(OtherAspect);
        _meeting.arrive_and_wait();
        for(bool more = true; more;)
        {
            _meeting.arrive_and_wait();
            more = static_cast<bool>(_work);
            if(more)
                _work();
            _meeting.arrive_and_wait();
        }
    }

    std::barrier<> _meeting{2};
    std::function<void()> _work;
    std::unique_ptr<AspectLink> _link;
    ChangeList *_giver;
    std::thread _thread;
};

/// A node that remembers what `changed` was told.
class WatchedGroup : public Group
{
  public:
    static UnrecordedRefPtr<WatchedGroup> make()
    {
        auto *const group = new WatchedGroup;
        group->enterSystem(0);
        return UnrecordedRefPtr<WatchedGroup>(group);
    }
    FieldContainer *createAspectCopy(FieldContainer const *) const override
    {
        auto *const copy = new WatchedGroup;
        copy->enterAspect(this);
        return copy;
    }
    void changed(BitVector whichField, UInt32 origin, BitVector details) override
    {
        told.push_back({whichField, origin, details});
        Group::changed(whichField, origin, details);
    }

    struct Told
    {
        BitVector mask;
        BitVector origin;
        BitVector details;
    };
    std::vector<Told> told;
};
} // namespace

TEST(AspectLink, BeginsWithACopyOfTheScene)
{
    NodePtr const root = make_group({make_transform(translation(1.f, 2.f, 3.f)), make_group()});
    setName(root, "root");
    changes().commitChanges();
    Receiver const receiver;

    Node *const copy = other(root.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, root);
    EXPECT_EQ(copy->getId(), root->getId());
    EXPECT_STREQ(getName(copy), "root");
    EXPECT_EQ(copy->getAttachments(0), other(root->getAttachments(0)));
    ASSERT_EQ(copy->getNChildren(), 2u);
    EXPECT_EQ(copy->getChild(0), other(root->getChild(0)));
    EXPECT_EQ(copy->getChild(0)->getParent(), copy);
    EXPECT_EQ(copy->getChild(0)->getCore(), other(root->getChild(0)->getCore()));
    EXPECT_EQ(copy->getChild(0)->getCore()->getParents().size(), 1u);
    auto const &core = dynamic_cast<Transform &>(*copy->getChild(0)->getCore());
    EXPECT_TRUE(core.getMatrix().equals(translation(1.f, 2.f, 3.f), 0.f));
    EXPECT_EQ(root->getChild(0)->getParent(), root);
}

TEST(AspectLink, EndsWithItsCopies)
{
    NodePtr const root = make_group({make_group()});
    {
        Receiver const receiver;
        EXPECT_EQ(receiver.getNumCopies(), factory().getNumContainers());
        EXPECT_EQ(root->getAspectStore()->getRefCount(), 2);
    }
    EXPECT_EQ(root->getAspectStore()->getRefCount(), 1);
    EXPECT_EQ(other(root.get()), nullptr);
    EXPECT_EQ(root->getNChildren(), 1u);
}

TEST(AspectLink, CarriesCommittedEdits)
{
    NodePtr const root = make_group();
    changes().commitChanges();
    Receiver receiver;
    root->setTravMask(7);
    setName(root, "root");
    changes().commitChanges();
    EXPECT_EQ(other(root.get())->getTravMask(), 0xFFFFFFFFu);
    receiver.receive();
    EXPECT_EQ(other(root.get())->getTravMask(), 7u);
    EXPECT_STREQ(getName(other(root.get())), "root");
}

TEST(AspectLink, WaitsForTheCommit)
{
    NodePtr const root = make_group();
    changes().commitChanges();
    Receiver receiver;
    root->setTravMask(7);
    receiver.receive();
    EXPECT_EQ(other(root.get())->getTravMask(), 0xFFFFFFFFu);
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(other(root.get())->getTravMask(), 7u);
}

TEST(AspectLink, CarriesNewContainersAndTheirLinks)
{
    NodePtr const root = make_group();
    changes().commitChanges();
    Receiver receiver;
    NodePtr const child = make_transform(translation(4.f, 5.f, 6.f), {make_group()});
    root->addChild(child);
    changes().commitChanges();
    receiver.receive();
    ASSERT_EQ(other(root.get())->getNChildren(), 1u);
    EXPECT_EQ(other(root.get())->getChild(0), other(child.get()));
    EXPECT_EQ(other(child.get())->getParent(), other(root.get()));
    EXPECT_EQ(other(child.get())->getNChildren(), 1u);
    EXPECT_EQ(other(child.get())->getCore(), other(child->getCore()));
    EXPECT_EQ(other(child.get())->getCore()->getParents().size(), 1u);
}

TEST(AspectLink, AChildThatMovesHasOneParent)
{
    NodePtr const child = make_group();
    NodePtr const left = make_group({child});
    NodePtr const right = make_group();
    NodePtr const root = make_group({left, right});
    changes().commitChanges();
    Receiver receiver;
    // The new parent's change stands before the old one's in the second round.
    for(Node *to : {right.get(), left.get()})
    {
        right->setTravMask(right->getTravMask() - 1);
        left->setTravMask(left->getTravMask() - 1);
        to->addChild(child);
        changes().commitChanges();
        receiver.receive();
        EXPECT_EQ(other(child.get())->getParent(), other(to));
        EXPECT_EQ(other(right.get())->getNChildren(), right->getNChildren());
        EXPECT_EQ(other(left.get())->getNChildren(), left->getNChildren());
        EXPECT_EQ(other(child.get())->getRefCount(), 2);
    }
}

TEST(AspectLink, AChangedCoreLeavesTheOldOne)
{
    NodePtr const root = make_group();
    UnrecordedRefPtr<NodeCore> const old(root->getCore());
    changes().commitChanges();
    Receiver receiver;
    UnrecordedRefPtr<Group> const core(Group::create());
    root->setCore(core);
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(other(root.get())->getCore(), other(core.get()));
    EXPECT_TRUE(other(old.get())->getParents().empty());
    root->setCore(nullptr);
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(other(root.get())->getCore(), nullptr);
    EXPECT_TRUE(other(core.get())->getParents().empty());
}

TEST(AspectLink, WeakPointersLookAtTheCopy)
{
    NodePtr beacon = make_group();
    UnrecordedRefPtr<PointLight> const light(PointLight::create());
    light->setBeacon(beacon);
    changes().commitChanges();
    Receiver receiver;
    EXPECT_EQ(other(light.get())->getBeacon(), other(beacon.get()));
    beacon = nullptr;
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(other(light.get())->getBeacon(), nullptr);
}

TEST(AspectLink, ACopyLivesUntilTheEndOfItsSourceIsReceived)
{
    NodePtr root = make_group();
    changes().commitChanges();
    Receiver receiver;
    UInt32 const containers = factory().getNumContainers();
    UInt32 const id = root->getId();
    UnrecordedRefPtr<NodeCore> const core(root->getCore());
    root = nullptr;
    EXPECT_EQ(factory().getNumContainers(), containers);
    EXPECT_EQ(factory().getContainer(id), nullptr);
    receiver.ask([id] { EXPECT_NE(factory().getContainer(id), nullptr); });
    EXPECT_EQ(other(core.get())->getParents().size(), 1u);
    receiver.receive();
    receiver.ask([id] { EXPECT_EQ(factory().getContainer(id), nullptr); });
    EXPECT_EQ(factory().getNumContainers(), containers - 1);
    EXPECT_TRUE(other(core.get())->getParents().empty());
}

TEST(AspectLink, WhatTheReceiverCountsOutlivesItsSource)
{
    NodePtr root = make_group();
    changes().commitChanges();
    Receiver receiver;
    NodePtr kept;
    receiver.ask([&] { kept = other(root.get()); });
    root = nullptr;
    receiver.receive();
    EXPECT_TRUE(kept->isAlive());
    receiver.ask([&] { kept = nullptr; });
}

TEST(AspectLink, WhatWasMadeAndEndedInBetweenNeverArrives)
{
    Receiver receiver;
    UInt32 const copies = receiver.getNumCopies();
    {
        NodePtr const node = make_group();
        changes().commitChanges();
    }
    receiver.receive();
    EXPECT_EQ(receiver.getNumCopies(), copies);
}

TEST(AspectLink, DelayedReferencesEndTheirContainerAtTheCommit)
{
    Node *const node = Node::create().release();
    changes().commitChanges();
    Receiver receiver;
    UInt32 const copies = receiver.getNumCopies();
    changes().addDelayedSubRef<UnrecordedRefCountPolicy>(node);
    receiver.receive();
    EXPECT_EQ(receiver.getNumCopies(), copies);
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(receiver.getNumCopies(), copies - 1);
}

TEST(AspectLink, ChangedIsToldTheCollectedMaskOnceAfterAllHaveTheirValues)
{
    UnrecordedRefPtr<WatchedGroup> const group = WatchedGroup::make();
    NodePtr const node = make_node(group);
    changes().commitChanges();
    Receiver receiver;
    WatchedGroup &copy = *other(group.get());
    copy.told.clear();
    group->told.clear();

    setName(group, "first");
    changes().commitChanges(3, 4);
    setName(group, "group");
    changes().commitChanges();
    ASSERT_EQ(group->told.size(), 2u);
    EXPECT_EQ(group->told[0].mask, BitVector(Group::AttachmentsFieldMask));
    EXPECT_EQ(group->told[0].origin, 3u);
    EXPECT_EQ(group->told[0].details, 4u);
    receiver.receive();
    ASSERT_EQ(copy.told.size(), 1u);
    EXPECT_EQ(copy.told[0].mask, BitVector(Group::AttachmentsFieldMask));
    EXPECT_EQ(copy.told[0].origin, BitVector(ChangeList::Sync));
    EXPECT_STREQ(getName(&copy), "group");

    receiver.receive();
    EXPECT_EQ(copy.told.size(), 1u);
}

TEST(AspectLink, SynchronisingIsNoEditOfTheReceiver)
{
    NodePtr const root = make_group();
    changes().commitChanges();
    Receiver receiver;
    root->addChild(make_group());
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(other(root.get())->getChangeMask(), 0u);
    receiver.ask([] { EXPECT_FALSE(changes().hasOpenEdits()); });
}

TEST(AspectLink, LocalFieldsStay)
{
    UnrecordedRefPtr<Name> const name(Name::createLocal(Name::NameFieldMask));
    UnrecordedRefPtr<Name> const dependent(Name::createDependent(Name::NameFieldMask));
    changes().commitChanges();
    Receiver receiver;
    for(Name *edited : {name.get(), dependent.get()})
    {
        edited->setName("pump");
        edited->setInternal(true);
    }
    changes().commitChanges();
    receiver.receive();
    EXPECT_EQ(other(name.get())->getName(), "");
    EXPECT_TRUE(other(name.get())->getInternal());
    EXPECT_EQ(other(dependent.get())->getName(), "pump");
    EXPECT_FALSE(other(dependent.get())->getInternal());
}

TEST(AspectLink, BothDirectionsAtOnce)
{
    NodePtr const root = make_group({make_group()});
    changes().commitChanges();
    Receiver receiver;
    ChangeList *theirs = nullptr;
    receiver.ask([&] { theirs = &changes(); });
    {
        AspectLink back(theirs, OtherAspect);
        EXPECT_EQ(back.getNumCopies(), 0u);
        NodePtr added;
        receiver.ask(
            [&]
            {
                added = make_group();
                other(root.get())->addChild(added);
                other(root->getChild(0))->setTravMask(9);
                changes().commitChanges();
            });
        back.receive();
        EXPECT_EQ(root->getNChildren(), 2u);
        EXPECT_EQ(root->getChild(1)->getParent(), root);
        EXPECT_EQ(root->getChild(0)->getTravMask(), 9u);
        EXPECT_EQ(back.getNumCopies(), 2u);
        root->getChild(1)->setTravMask(11);
        changes().commitChanges();
        receiver.receive();
        EXPECT_EQ(added->getTravMask(), 11u);
        receiver.ask([&] { added = nullptr; });
        receiver.receive();
        EXPECT_EQ(root->getNChildren(), 2u);
    }
}

TEST(AspectLink, EachOfSeveralReceiversHasItsOwnCopies)
{
    NodePtr const root = make_group();
    changes().commitChanges();
    Receiver first;
    root->setTravMask(1);
    changes().commitChanges();
    {
        // A link of this thread, on a third aspect.
        Thread::setCurrentAspect(2);
        AspectLink link(&changes(), 0);
        auto *const third = dynamic_cast<Node *>(root->getAspectStore()->getPtr(2));
        EXPECT_EQ(third->getTravMask(), 1u);
        Thread::setCurrentAspect(0);
        root->setTravMask(2);
        changes().commitChanges();
        EXPECT_EQ(third->getTravMask(), 1u);
        Thread::setCurrentAspect(2);
        link.receive();
        EXPECT_EQ(third->getTravMask(), 2u);
        EXPECT_EQ(other(root.get())->getTravMask(), 0xFFFFFFFFu);
    }
    Thread::setCurrentAspect(0);
    first.receive();
    EXPECT_EQ(other(root.get())->getTravMask(), 2u);
}

TEST(AspectLink, AnUnfinishedLogIsReplacedByALookAtEverything)
{
    NodePtr const root = make_group({make_group()});
    NodePtr gone = make_group();
    changes().commitChanges();
    Receiver receiver;
    set_mem_limit(1);
    gone = nullptr;
    set_mem_limit(0);
    root->setTravMask(3);
    changes().commitChanges();
    UInt32 const copies = receiver.getNumCopies();
    receiver.receive();
    EXPECT_EQ(receiver.getNumCopies(), copies - 2);
    EXPECT_EQ(other(root.get())->getTravMask(), 3u);
    EXPECT_EQ(other(root.get())->getNChildren(), 1u);
}

TEST(AspectLink, AGiverThatEndsFirstLeavesTheCopies)
{
    NodePtr const root = make_group();
    std::unique_ptr<AspectLink> link;
    ChangeList *theirs = nullptr;
    std::barrier<> meeting(2);
    std::thread giver(
        [&]
        {
            theirs = &changes();
            meeting.arrive_and_wait();
            meeting.arrive_and_wait();
        });
    meeting.arrive_and_wait();
    Thread::setCurrentAspect(OtherAspect);
    link = std::make_unique<AspectLink>(theirs, 0);
    meeting.arrive_and_wait();
    giver.join();
    link->receive();
    EXPECT_NE(other(root.get()), nullptr);
    link.reset();
    Thread::setCurrentAspect(0);
    EXPECT_EQ(other(root.get()), nullptr);
}

// The receiver reads its copies while the giver edits the sources; what it reads is one committed
// state, whatever the giver is doing.
TEST(AspectLink, TheTwoThreadsWorkAtOnce)
{
    constexpr int rounds = 50;
    constexpr UInt32 width = 40;
    NodePtr const root = make_group();
    for(UInt32 i = 0; i < width; ++i)
        root->addChild(make_transform(Matrix()));
    changes().commitChanges();
    ChangeList *const mine = &changes();
    std::barrier<> meeting(2);
    UInt32 const id = root->getId();

    std::thread receiver(
        [&]
        {
            Thread::setCurrentAspect(OtherAspect);
            AspectLink link(mine, 0);
            meeting.arrive_and_wait();
            for(int round = 0; round < rounds; ++round)
            {
                auto &copy = dynamic_cast<Node &>(*factory().getContainer(id));
                EXPECT_EQ(copy.getNChildren(), width);
                copy.updateVolume();
                for(UInt32 i = 0; i < copy.getNChildren(); ++i)
                {
                    auto &core = dynamic_cast<Transform &>(*copy.getChild(i)->getCore());
                    EXPECT_EQ(core.getMatrix()[3][0], static_cast<Real32>(round));
                }
                changes().commitChanges();
                meeting.arrive_and_wait();
                link.receive();
                meeting.arrive_and_wait();
            }
        });

    meeting.arrive_and_wait();
    for(int round = 1; round <= rounds; ++round)
    {
        // The first child goes, a new one comes.
        root->subChild(0u);
        root->addChild(make_transform(Matrix()));
        for(UInt32 i = 0; i < width; ++i)
        {
            auto &core = dynamic_cast<Transform &>(*root->getChild(i)->getCore());
            core.editMatrix().setTranslate(static_cast<Real32>(round), 0.f, 0.f);
        }
        root->updateVolume();
        changes().commitChanges();
        meeting.arrive_and_wait();
        meeting.arrive_and_wait();
    }
    receiver.join();
    EXPECT_EQ(root->getAspectStore()->getRefCount(), 1);
}
} // namespace OSG::Test
