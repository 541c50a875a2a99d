#include "OSGFieldConnector.h"

#include <cmath>
#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGManyFields.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGSimpleMaterial.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
FieldConnectorFactoryBase &connectors()
{
    return *SingletonHolder<FieldConnectorFactoryBase>::the();
}
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

class FieldConnector : public testing::Test
{
  protected:
    using ManyPtr = UnrecordedRefPtr<ManyFields>;

    bool connect(char const *from, char const *to)
    {
        return connectors().connect(source, from, target, to);
    }

    ManyPtr source{ManyFields::create()};
    ManyPtr target{ManyFields::create()};
};
} // namespace

TEST_F(FieldConnector, CarriesAValueWithTheCommit)
{
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    EXPECT_TRUE(source->isConnected());
    source->setOneReal32(3.f);
    EXPECT_EQ(target->getOneReal32(), 0.f);
    commit();
    EXPECT_EQ(target->getOneReal32(), 3.f);
    EXPECT_EQ(target->getChangeMask(), 0u);
}

TEST_F(FieldConnector, CarriesListsAndPointers)
{
    NodePtr const node = make_group();
    ASSERT_TRUE(connect("manyString", "manyString"));
    ASSERT_TRUE(connect("onePointer", "oneWeak"));
    ASSERT_TRUE(connect("manyWeak", "manyRecorded"));
    source->editManyString() = {"a", "b"};
    source->setOnePointer(node);
    source->editMFManyWeak()->push_back(node);
    source->editMFManyWeak()->push_back(nullptr);
    commit();
    EXPECT_EQ(target->getManyString(), source->getManyString());
    EXPECT_EQ(target->getOneWeak(), node);
    ASSERT_EQ(target->getMFManyRecorded()->size(), 2u);
    EXPECT_EQ(target->getManyRecorded(0), node);
}

TEST_F(FieldConnector, OtherFieldsAreNotConcerned)
{
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    source->setOneReal32(1.f);
    commit();
    target->setOneReal32(2.f);
    source->setOneUInt32(5);
    commit();
    EXPECT_EQ(target->getOneReal32(), 2.f);
    EXPECT_EQ(target->getOneUInt32(), 0u);
}

TEST_F(FieldConnector, FieldsThatDoNotSuitAreNotConnected)
{
    struct Case
    {
        char const *from;
        char const *to;
    };
    for(auto const &[from, to] :
        {Case{"oneReal32", "oneUInt32"}, Case{"oneReal32", "manyReal32"},
         Case{"onePointer", "manyPointer"}, Case{"onePointer", "oneUInt32"},
         Case{"oneUInt32", "onePointer"}, Case{"nothing", "oneUInt32"}, Case{"oneUInt32", ""}})
        EXPECT_FALSE(connect(from, to)) << from << to;
    EXPECT_FALSE(connectors().connect(source, "oneReal32", nullptr, "oneReal32"));
    EXPECT_FALSE(connectors().connect(nullptr, "oneReal32", target, "oneReal32"));
    EXPECT_FALSE(source->isConnected());

    NodePtr const node = make_group({make_group()});
    EXPECT_FALSE(connectors().connect(source, "manyPointer", node, "children"));
    EXPECT_FALSE(connectors().connect(source, "onePointer", node, "core"));
}

TEST_F(FieldConnector, LinksAreMadeByTheirClasses)
{
    NodePtr const one = make_group();
    NodePtr const two = make_group();
    ASSERT_TRUE(connectors().connect(one, "core", two, "core"));
    one->setCore(UnrecordedRefPtr<Transform>(Transform::create()));
    commit();
    EXPECT_EQ(two->getCore(), one->getCore());
    EXPECT_EQ(one->getCore()->getParents().size(), 2u);
}

TEST_F(FieldConnector, ChainsEndInOneCommit)
{
    ManyPtr const last(ManyFields::create());
    ASSERT_TRUE(connect("oneInt32", "oneInt32"));
    ASSERT_TRUE(connectors().connect(target, "oneInt32", last, "oneInt32"));
    source->setOneInt32(-4);
    commit();
    EXPECT_EQ(last->getOneInt32(), -4);
}

TEST_F(FieldConnector, CirclesEndEvenWithValuesThatEqualNothing)
{
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    ASSERT_TRUE(connectors().connect(target, "oneReal32", source, "oneReal32"));
    ASSERT_TRUE(connectors().connect(source, "oneReal32", source, "oneReal32"));
    target->setOneReal32(std::nanf(""));
    commit();
    EXPECT_TRUE(std::isnan(source->getOneReal32()));
    source->setOneReal32(2.f);
    commit();
    EXPECT_EQ(target->getOneReal32(), 2.f);
}

TEST_F(FieldConnector, AConnectionIsThereOnceAndEndsOnce)
{
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    EXPECT_FALSE(connectors().disconnect(source, "oneUInt32", target, "oneReal32"));
    EXPECT_TRUE(connectors().disconnect(source, "oneReal32", target, "oneReal32"));
    EXPECT_FALSE(connectors().disconnect(source, "oneReal32", target, "oneReal32"));
    EXPECT_FALSE(source->isConnected());
    source->setOneReal32(1.f);
    commit();
    EXPECT_EQ(target->getOneReal32(), 0.f);
}

TEST_F(FieldConnector, NeitherEndIsKeptAlive)
{
    commit();
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    target = nullptr;
    source->setOneReal32(1.f);
    commit();
    source = nullptr;
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before - 2);
    connectors().disconnect(nullptr);
}

TEST_F(FieldConnector, CopiesAreNotConnected)
{
    ASSERT_TRUE(connect("oneReal32", "oneReal32"));
    UnrecordedRefPtr<FieldContainer> const copy(source->shallowCopy());
    EXPECT_FALSE(copy->isConnected());
}

TEST_F(FieldConnector, MadeByTheFactoryItWorksByHand)
{
    auto const connector =
        connectors().createConnector(source, source->getFieldDescription("onePnt3f"), target,
                                     target->getFieldDescription("onePnt3f"));
    ASSERT_NE(connector, nullptr);
    EXPECT_EQ(connector->getSource(), source);
    EXPECT_EQ(connector->getTarget(), target);
    EXPECT_TRUE(connector->matches(ManyFields::OnePnt3fFieldMask | 1));
    EXPECT_FALSE(connector->matches(~ManyFields::OnePnt3fFieldMask));
    source->setOnePnt3f(Pnt3f(1.f, 2.f, 3.f));
    connector->process();
    EXPECT_EQ(target->getOnePnt3f(), Pnt3f(1.f, 2.f, 3.f));
    commit();
    connector->process();
    EXPECT_EQ(target->getChangeMask(), 0u);
    source = nullptr;
    connector->process();
    EXPECT_EQ(connector->getSource(), nullptr);
    EXPECT_EQ(connectors().createConnector(target, nullptr, target, nullptr), nullptr);
}
} // namespace OSG::Test
