#include "OSGDeepClone.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGPointLight.h"
#include "OSGSimpleMaterial.h"
#include "OSGSwitch.h"
#include "OSGThread.h"
#include "OSGTypePredicates.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
NodePtr node_clone(TransitPtr<FieldContainer> clone)
{
    return NodePtr(dynamic_transit_cast<Node>(std::move(clone)));
}

UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

/// A node with a material group over a simple material, and a name.
struct Painted
{
    UnrecordedRefPtr<SimpleMaterial> material{SimpleMaterial::create()};
    UnrecordedRefPtr<MaterialGroup> group{MaterialGroup::create()};
    NodePtr node;

    Painted()
    {
        group->setMaterial(material);
        node = make_node(group);
        setName(node, "painted");
    }

    static Material *materialOf(Node const *node)
    {
        return dynamic_cast<MaterialGroup &>(*node->getCore()).getMaterial();
    }
};
} // namespace

TEST(DeepClone, CopiesATreeWithItsCoresAndAttachments)
{
    NodePtr const root =
        make_group({make_transform(translation(1.f, 2.f, 3.f)), make_group({make_group()})});
    setName(root, "root");
    setName(root->getChild(0), "moved");

    NodePtr const clone = node_clone(deepClone(root));
    ASSERT_NE(clone, nullptr);
    EXPECT_NE(clone, root);
    EXPECT_STREQ(getName(clone), "root");
    EXPECT_NE(clone->getAttachments(0), root->getAttachments(0));
    ASSERT_EQ(clone->getNChildren(), 2u);
    EXPECT_EQ(clone->getChild(0)->getParent(), clone);
    EXPECT_STREQ(getName(clone->getChild(0)), "moved");
    EXPECT_EQ(clone->getChild(1)->getNChildren(), 1u);
    auto const &core = dynamic_cast<Transform &>(*clone->getChild(0)->getCore());
    EXPECT_TRUE(core.getMatrix().equals(translation(1.f, 2.f, 3.f), 0.f));
    ASSERT_EQ(core.getParents().size(), 1u);
    EXPECT_EQ(core.getParents()[0], clone->getChild(0));

    EXPECT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(root->getChild(0)->getParent(), root);
    EXPECT_EQ(root->getChild(0)->getCore()->getParents().size(), 1u);
}

TEST(DeepClone, OfNothingIsNothing)
{
    EXPECT_FALSE(deepClone(nullptr));
    EXPECT_FALSE(deepClone(nullptr, "Material", "Image"));
    EXPECT_FALSE(deepCloneEx(nullptr, {"Material"}));
}

TEST(DeepClone, HandsOneReferenceOver)
{
    NodePtr const root = make_group({make_group()});
    UInt32 const before = num_containers();
    {
        TransitPtr<FieldContainer> const clone = deepClone(root);
        EXPECT_EQ(clone->getRefCount(), 1);
        EXPECT_EQ(num_containers(), before + 4);
    }
    EXPECT_EQ(num_containers(), before);
}

TEST(DeepClone, CopiesOnceWhatIsReachedTwice)
{
    Painted const first;
    NodePtr const second = make_node(first.group);
    NodePtr const root = make_group({first.node, second});
    NodePtr const clone = node_clone(deepClone(root));
    EXPECT_EQ(clone->getChild(0)->getCore(), clone->getChild(1)->getCore());
    EXPECT_NE(clone->getChild(0)->getCore(), root->getChild(0)->getCore());
    EXPECT_EQ(clone->getChild(0)->getCore()->getParents().size(), 2u);
    EXPECT_NE(Painted::materialOf(clone->getChild(0)), first.material);
}

TEST(DeepClone, SharesTypesByIdentityWithThoseDerivedFromThem)
{
    Painted const painted;
    NodePtr const clone = node_clone(deepClone(painted.node, "Material"));
    EXPECT_NE(clone->getCore(), painted.group);
    EXPECT_EQ(Painted::materialOf(clone), painted.material);
}

TEST(DeepClone, LeavesIgnoredTypesOut)
{
    Painted const painted;
    NodePtr const clone = node_clone(deepClone(painted.node, "", "Material Attachment"));
    EXPECT_EQ(Painted::materialOf(clone), nullptr);
    EXPECT_TRUE(clone->getMFAttachments()->empty());
    EXPECT_STREQ(getName(painted.node), "painted");

    NodePtr const bare = node_clone(deepClone(painted.node, "", "NodeCore"));
    EXPECT_EQ(bare->getCore(), nullptr);
    EXPECT_EQ(painted.group->getParents().size(), 1u);
}

TEST(DeepClone, IgnoringGoesBeforeSharing)
{
    Painted const painted;
    NodePtr const clone = node_clone(deepClone(painted.node, "SimpleMaterial", "Material"));
    EXPECT_EQ(Painted::materialOf(clone), nullptr);
}

struct NamesCase
{
    char const *description;
    char const *names;
};

class DeepCloneNames : public testing::TestWithParam<NamesCase>
{
};

TEST_P(DeepCloneNames, AreSeparatedByBlanksOrCommas)
{
    LogCapture const log;
    Painted const painted;
    NodePtr const clone = node_clone(deepClone(painted.node, GetParam().names));
    EXPECT_EQ(Painted::materialOf(clone), painted.material);
    EXPECT_EQ(clone->getAttachments(0), painted.node->getAttachments(0));
    EXPECT_TRUE(log.messages().empty());
}

INSTANTIATE_TEST_SUITE_P(, DeepCloneNames,
                         testing::Values(NamesCase{"comma", "Material,Name"},
                                         NamesCase{"comma_and_blank", "Material, Name"},
                                         NamesCase{"blank", "Material Name"},
                                         NamesCase{"many", " ,, Material ,\t,Name , "},
                                         NamesCase{"twice", "Material Name Material"}),
                         [](auto const &row) { return std::string(row.param.description); });

TEST(DeepClone, PassesOverUnknownNamesWithAWarning)
{
    LogCapture const log;
    Painted const painted;
    NodePtr const clone = node_clone(deepClone(painted.node, "Nothing, Material"));
    EXPECT_EQ(Painted::materialOf(clone), painted.material);
    EXPECT_EQ(log.texts(),
              std::vector<std::string>{"deepClone: no container type has the name Nothing\n"});
}

TEST(DeepClone, TakesTypesByThemselves)
{
    Painted const painted;
    NodePtr const clone =
        node_clone(deepClone(painted.node, {&Material::getClassType()}, {&Name::getClassType()}));
    EXPECT_EQ(Painted::materialOf(clone), painted.material);
    EXPECT_EQ(getName(clone), nullptr);
}

TEST(DeepClone, TakesGroupsByIdAndByName)
{
    Painted const painted;
    std::vector<ReflexiveContainerType const *> const none;
    NodePtr const byId = node_clone(deepClone(painted.node, none, none, {Name::getClassGroupId()}));
    EXPECT_EQ(byId->getAttachments(0), painted.node->getAttachments(0));
    NodePtr const byName = node_clone(deepCloneEx(painted.node, {"Material"}, {}, {}, {"Name"}));
    EXPECT_EQ(Painted::materialOf(byName), painted.material);
    EXPECT_TRUE(byName->getMFAttachments()->empty());

    LogCapture const log;
    NodePtr const neither = node_clone(deepCloneEx(painted.node, {}, {}, {"nothing"}, {}));
    EXPECT_NE(neither->getAttachments(0), painted.node->getAttachments(0));
    EXPECT_EQ(log.texts(), std::vector<std::string>{
                               "deepClone: no group of container types has the name nothing\n"});
}

TEST(DeepClone, ChildrenOfASharedTypeStayWithTheirParent)
{
    NodePtr const root = make_group({make_group(), make_group()});
    NodePtr const clone = node_clone(deepClone(root, "Node"));
    EXPECT_EQ(clone->getNChildren(), 0u);
    EXPECT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(root->getChild(1)->getParent(), root);
}

TEST(DeepClone, AWeakPointerFollowsIntoTheClone)
{
    NodePtr const beacon = make_group();
    UnrecordedRefPtr<PointLight> const light(PointLight::create());
    light->setBeacon(beacon);
    NodePtr const root = make_group({make_node(light), beacon});
    NodePtr const clone = node_clone(deepClone(root));
    auto const &copied = dynamic_cast<PointLight &>(*clone->getChild(0)->getCore());
    EXPECT_EQ(copied.getBeacon(), clone->getChild(1));

    NodePtr const without = node_clone(deepClone(root, "", "Node"));
    EXPECT_EQ(without->getNChildren(), 0u);
}

TEST(DeepClone, AWeakPointerPullsNothingIntoTheClone)
{
    NodePtr const beacon = make_group();
    UnrecordedRefPtr<PointLight> const light(PointLight::create());
    light->setBeacon(beacon);
    NodePtr const root = make_group({make_node(light)});
    UInt32 const before = num_containers();
    NodePtr const clone = node_clone(deepClone(root));
    EXPECT_EQ(num_containers(), before + 4);
    EXPECT_EQ(dynamic_cast<PointLight &>(*clone->getChild(0)->getCore()).getBeacon(), beacon);

    UnrecordedRefPtr<FieldContainer> const ignoring(deepClone(light, "", "Node"));
    EXPECT_EQ(dynamic_cast<PointLight &>(*ignoring).getBeacon(), nullptr);
}

TEST(DeepClone, CyclesStayCycles)
{
    UInt32 const before = num_containers();
    {
        UnrecordedRefPtr<VisitSubTree> const visit(VisitSubTree::create());
        NodePtr const root = make_group({make_group({make_node(visit)})});
        visit->setSubTreeRoot(root);
        NodePtr const clone = node_clone(deepClone(root));
        Node *const inner = clone->getChild(0)->getChild(0);
        auto &copied = dynamic_cast<VisitSubTree &>(*inner->getCore());
        EXPECT_EQ(copied.getSubTreeRoot(), clone);
        EXPECT_EQ(copied.getParents().size(), 1u);
        visit->setSubTreeRoot(nullptr);
        copied.setSubTreeRoot(nullptr);
    }
    EXPECT_EQ(num_containers(), before);
}

TEST(DeepClone, ATreeThatIsReachedAheadOfItsParentHangsBelowItAfterwards)
{
    NodePtr const shared = make_group({make_group()});
    NodePtr const root = make_group({make_visit(shared), make_group({shared})});
    NodePtr const clone = node_clone(deepClone(root));
    Node *const copied = clone->getChild(1)->getChild(0);
    EXPECT_EQ(copied->getNChildren(), 1u);
    EXPECT_EQ(copied->getParent(), clone->getChild(1));
    EXPECT_EQ(dynamic_cast<VisitSubTree &>(*clone->getChild(0)->getCore()).getSubTreeRoot(),
              copied);
}

TEST(DeepClone, ChainsOfAnyDepthAreCopied)
{
    constexpr UInt32 depth = 100000;
    NodePtr const root = make_chain(depth, make_group(), [] { return make_group(); });
    NodePtr const clone = node_clone(deepClone(root));
    UInt32 levels = 0;
    for(Node const *node = clone; node->getNChildren() == 1; node = node->getChild(0))
        ++levels;
    EXPECT_EQ(levels, depth);
}

TEST(DeepClone, OfAnyContainerNotOnlyOfNodes)
{
    Painted const painted;
    UnrecordedRefPtr<FieldContainer> const clone(deepClone(painted.group));
    auto const &group = dynamic_cast<MaterialGroup &>(*clone);
    EXPECT_NE(group.getMaterial(), painted.material);
    EXPECT_TRUE(group.getParents().empty());
}

TEST(DeepCloner, SharesAmongItsClonesWhatTheirSourcesShare)
{
    Painted const painted;
    NodePtr const other = make_node(painted.group);
    DeepCloner cloner({}, {});
    auto *const one = dynamic_cast<Node *>(cloner.clone(painted.node));
    auto *const two = dynamic_cast<Node *>(cloner.clone(other));
    EXPECT_EQ(one->getCore(), two->getCore());
    EXPECT_EQ(cloner.resolve(nullptr), nullptr);
    EXPECT_EQ(cloner.resolve(painted.node), one);
}

TEST(DeepCloner, ResolvesByItsChoices)
{
    Painted const painted;
    DeepCloner cloner({{&Material::getClassType()}, {}}, {{}, {Name::getClassGroupId()}});
    EXPECT_EQ(cloner.resolve(painted.material), painted.material);
    EXPECT_EQ(cloner.resolve(painted.node->getAttachments(0)), nullptr);
    EXPECT_NE(cloner.resolve(painted.group), painted.group);
}

TEST(TypePredicates, PicksTheBasesOfAType)
{
    TypePredicates::IsBaseOf const isBase(SimpleMaterial::getClassType());
    EXPECT_TRUE(isBase(&SimpleMaterial::getClassType()));
    EXPECT_TRUE(isBase(&Material::getClassType()));
    EXPECT_TRUE(isBase(&FieldContainer::getClassType()));
    EXPECT_FALSE(isBase(&Node::getClassType()));
    EXPECT_FALSE(isBase(nullptr));
}
} // namespace OSG::Test
