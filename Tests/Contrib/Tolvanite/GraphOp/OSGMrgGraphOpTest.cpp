#include "OSGMrgGraphOp.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGBillboard.h"
#include "OSGComponentTransform.h"
#include "OSGConstSizeTransform.h"
#include "OSGDirectionalLight.h"
#include "OSGDistanceLOD.h"
#include "OSGGraphOpFactory.h"
#include "OSGInverseTransform.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiCore.h"
#include "OSGPointLight.h"
#include "OSGScreenLOD.h"
#include "OSGSpotLight.h"
#include "OSGSwitch.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using OperationPtr = UnrecordedRefPtr<MrgGraphOp>;

NodePtr make_material_group(Material *material, Children const &children)
{
    NodePtr const node = make<MaterialGroup>(children);
    core_of<MaterialGroup>(node)->setMaterial(material);
    return node;
}

Pnt3f first_position(Node const *node)
{
    return core_of<Geometry>(node)->beginTriangles().getPosition(0);
}

Material *material_of(Node const *node) { return core_of<Geometry>(node)->getMaterial(); }

// --- as an operation ---

TEST(Mrg, IsRegisteredUnderItsName)
{
    UnrecordedRefPtr<GraphOp> const made(GraphOpFactoryBase::the()->create("Mrg"));
    EXPECT_NE(dynamic_cast<MrgGraphOp *>(made.get()), nullptr);
    EXPECT_STREQ(MrgGraphOp::getClassname(), "MrgGraphOp");
}

TEST(Mrg, SaysWhatItDoes)
{
    OperationPtr const operation(MrgGraphOp::create());
    EXPECT_EQ(
        operation->usage(),
        "Merge: merge all geometries in a subtree\n  Tries to merge all Geometries in a subtree "
        "into the minimal number.\n  of Nodes. Flattens Transformations and transforms indices on "
        "the way.\nParams: name (type, default)\n (The following params are useful for "
        "transforming tangent space vectors.)\n  color_is_vector  (bool, false): transform color "
        "as if it were a normal\n  secondary_color_is_vector  (bool, false): transform secondary "
        "color as if it were a normal\n  texcoord_is_vector  (bool, false): transform texcoord0 as "
        "if it were a normal\n  texcoord0_is_vector  (bool, false): transform texcoord0 as if it "
        "were a normal\n  texcoord1_is_vector  (bool, false): transform texcoord1 as if it were a "
        "normal\n  texcoord2_is_vector  (bool, false): transform texcoord2 as if it were a "
        "normal\n  texcoord3_is_vector  (bool, false): transform texcoord3 as if it were a "
        "normal\n");
}

TEST(Mrg, UnknownParametersGiveOneWarning)
{
    OperationPtr const operation(MrgGraphOp::create());
    LogCapture const log;
    operation->setParams("color_is_vector=1, texcoord_is_vector texcoord3_is_vector=false");
    EXPECT_THAT(log.texts(), IsEmpty());
    operation->setParams("colour texcoord0_is_vector texcoord4_is_vector=1");
    EXPECT_THAT(
        log.texts(LOG_WARNING),
        ElementsAre("MrgGraphOp doesn't have parameters 'colour texcoord4_is_vector=1'.\n"));
}

TEST(Mrg, LogsTheNumbersOfNodesAsProgress)
{
    NodePtr const root = make_group({make_group({make_triangle()})});
    LogCapture const log(LOG_PROGRESS);
    run<MrgGraphOp>(root);
    EXPECT_THAT(log.texts(LOG_PROGRESS),
                ElementsAre("MrgGraphOp::traverse: Number of nodes before merge: 3\n",
                            "MrgGraphOp::traverse: Number of nodes after merge: 2\n"));
}

// --- groups ---

TEST(Mrg, TheChildrenOfAGroupComeLastInTheNodeAbove)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    NodePtr const c = make_triangle();
    NodePtr const root = make_group({make_group({a, b}), c});
    EXPECT_TRUE(run<MrgGraphOp>(root));
    EXPECT_THAT(children_of(root), ElementsAre(c, a, b));
}

TEST(Mrg, AGroupWithoutChildrenGoes)
{
    NodePtr const root = make_group({make_group(), make_triangle()});
    run<MrgGraphOp>(root);
    EXPECT_EQ(root->getNChildren(), 1u);
}

TEST(Mrg, GeometriesAreNotJoined)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_node(a->getCore());
    NodePtr const root = make_group({a, b});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(a, b));
}

TEST(Mrg, GroupsThatCarryMeaningAreDissolvedTooSaveThoseThatAreNamed)
{
    Children const dissolved = {make_visit(nullptr), make<ScreenLOD>(),
                                make<MaterialChunkOverrideGroup>(), make<InverseTransform>()};
    Children const kept = {
        make<Switch>({make_triangle()}),      make<MultiSwitch>({make_triangle()}),
        make<DistanceLOD>({make_triangle()}), make<Billboard>({make_triangle()}),
        make<MultiCore>({make_triangle()}),   make_node(nullptr, {make_triangle()})};
    NodePtr const root = make_group(dissolved);
    for(NodePtr const &node : kept)
        root->addChild(node);
    for(NodePtr const &node : dissolved)
        node->addChild(make_triangle());
    run<MrgGraphOp>(root);
    EXPECT_EQ(root->getNChildren(), kept.size() + dissolved.size());
    for(NodePtr const &node : kept)
        EXPECT_EQ(node->getParent(), root);
    for(NodePtr const &node : dissolved)
    {
        EXPECT_EQ(node->getParent(), nullptr);
        EXPECT_EQ(node->getNChildren(), 0u);
    }
}

template <class Core>
class NotEntered : public testing::Test
{
};
using CoresNotEntered = testing::Types<Switch, MultiSwitch, DistanceLOD>;
TYPED_TEST_SUITE(NotEntered, CoresNotEntered);

TYPED_TEST(NotEntered, IsWhatLiesBelow)
{
    NodePtr const inner = make_group({make_group({make_triangle()})});
    NodePtr const placed = make<TypeParam>({make_group(), inner});
    NodePtr const root = make_group({placed});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(placed));
    EXPECT_EQ(placed->getNChildren(), 2u);
    EXPECT_EQ(inner->getNChildren(), 1u);
    EXPECT_EQ(inner->getChild(0)->getNChildren(), 1u);
}

TEST(Mrg, ARootOfThatKindIsNotEnteredEither)
{
    NodePtr const root = make<Switch>({make_group()});
    EXPECT_TRUE(run<MrgGraphOp>(root));
    EXPECT_EQ(root->getNChildren(), 1u);
}

TEST(Mrg, EntersWhatHasChildrenAndHandsTheResultOn)
{
    OperationPtr const operation(MrgGraphOp::create());
    NodePtr const leaf = make_group();
    NodePtr const inner = make_group({make_triangle()});
    EXPECT_EQ(operation->traverseEnter(leaf), ActionBase::Skip);
    EXPECT_EQ(operation->traverseEnter(inner), ActionBase::Continue);
    EXPECT_EQ(operation->traverseEnter(make<Switch>({make_group()})), ActionBase::Skip);
    EXPECT_EQ(operation->traverseLeave(inner, ActionBase::Skip), ActionBase::Skip);
    EXPECT_EQ(operation->traverseLeave(inner, ActionBase::Continue), ActionBase::Continue);
}

// --- material groups ---

TEST(Mrg, TheGeometriesOfAMaterialGroupTakeItsMaterialAndComeUp)
{
    auto const own = make_material();
    auto const given = make_material();
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    core_of<Geometry>(a)->setMaterial(own);
    NodePtr const root = make_group({make_material_group(given, {a, b})});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(a, b));
    EXPECT_EQ(material_of(a), given);
    EXPECT_EQ(material_of(b), given);
}

TEST(Mrg, AMaterialGroupWithoutMaterialTakesMaterialsAway)
{
    NodePtr const shape = make_triangle();
    core_of<Geometry>(shape)->setMaterial(make_material());
    NodePtr const root = make_group({make_material_group(nullptr, {shape})});
    run<MrgGraphOp>(root);
    EXPECT_EQ(material_of(shape), nullptr);
}

TEST(Mrg, AMaterialGroupWithoutChildrenGoes)
{
    NodePtr const root = make_group({make<MaterialGroup>()});
    run<MrgGraphOp>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(Mrg, AMaterialGroupWithAnotherChildStaysAndGivesItsGeometriesAway)
{
    auto const material = make_material();
    NodePtr const shape = make_triangle();
    NodePtr const other = make<Switch>({make_triangle()});
    NodePtr const group = make_material_group(material, {shape, other});
    NodePtr const root = make_group({group});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(group, shape));
    EXPECT_THAT(children_of(group), ElementsAre(other));
    EXPECT_EQ(material_of(shape), material);
}

TEST(Mrg, AGeometryWithChildrenIsNoLeafForAMaterialGroup)
{
    NodePtr const shape = make_node(make_triangle()->getCore(), {make<Switch>({make_triangle()})});
    NodePtr const group = make_material_group(make_material(), {shape});
    NodePtr const root = make_group({group});
    run<MrgGraphOp>(root);
    EXPECT_EQ(shape->getParent(), group);
    EXPECT_EQ(material_of(shape), nullptr);
}

TEST(Mrg, TheLaterOfTwoMaterialGroupsGivesASharedCoreItsMaterial)
{
    auto const first = make_material();
    auto const second = make_material();
    NodePtr const a = make_triangle();
    NodePtr const b = make_node(a->getCore());
    NodePtr const root =
        make_group({make_material_group(first, {a}), make_material_group(second, {b})});
    run<MrgGraphOp>(root);
    EXPECT_EQ(material_of(a), second);
    EXPECT_EQ(material_of(b), second);
}

TEST(Mrg, OfNestedMaterialGroupsTheOuterOneCounts)
{
    auto const outer = make_material();
    NodePtr const shape = make_triangle();
    NodePtr const root =
        make_group({make_material_group(outer, {make_material_group(make_material(), {shape})})});
    run<MrgGraphOp>(root);
    EXPECT_EQ(material_of(shape), outer);
}

// --- transforms ---

TEST(Mrg, ATransformIsBakedIntoItsGeometries)
{
    NodePtr const shape = make_triangle(Pnt3f(1, 0, 0));
    UnrecordedRefPtr<NodeCore> const before(shape->getCore());
    NodePtr const root = make_group({make_transform(translation(5, 6, 7), {shape})});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(first_position(shape), Pnt3f(6, 6, 7));
    EXPECT_NE(shape->getCore(), before);
    EXPECT_EQ(before->getRefCount(), 1);
}

TEST(Mrg, TheMaterialStaysSharedAndACoreThatOthersShowStaysAsItIs)
{
    auto const material = make_material();
    NodePtr const shape = make_triangle();
    core_of<Geometry>(shape)->setMaterial(material);
    NodePtr const other = make_node(shape->getCore());
    NodePtr const root = make_group({make_transform(translation(1, 0, 0), {shape}), other});
    run<MrgGraphOp>(root);
    EXPECT_EQ(material_of(shape), material);
    EXPECT_NE(shape->getCore(), other->getCore());
    EXPECT_EQ(first_position(other), Pnt3f(0, 0, 0));
    EXPECT_NE(core_of<Geometry>(shape)->getPositions(), core_of<Geometry>(other)->getPositions());
}

TEST(Mrg, ATransformWithoutChildrenGoes)
{
    NodePtr const root = make_group({make_transform(translation(1, 0, 0))});
    run<MrgGraphOp>(root);
    EXPECT_EQ(root->getNChildren(), 0u);
}

TEST(Mrg, ATransformWithAnotherChildStaysForItAndGivesItsGeometriesAway)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    NodePtr const group = make<Billboard>({make_triangle()});
    NodePtr const transform = make_transform(translation(1, 0, 0), {a, group, b});
    NodePtr const root = make_group({transform});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(transform, a, b));
    EXPECT_THAT(children_of(transform), ElementsAre(group));
    EXPECT_EQ(first_position(b), Pnt3f(1, 0, 0));
}

TEST(Mrg, ATransformWithTwoGeometriesAndAGroupOfOthersIsDoneWithinAPass)
{
    NodePtr const a = make_triangle();
    NodePtr const b = make_triangle();
    NodePtr const c = make_triangle();
    NodePtr const root =
        make_group({make_transform(translation(2, 0, 0), {a, b, make_group({c})})});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(a, b, c));
    for(NodePtr const &shape : {a, b, c})
        EXPECT_EQ(first_position(shape), Pnt3f(2, 0, 0));
}

TEST(Mrg, NestedTransformsApplyOneAfterTheOther)
{
    NodePtr const shape = make_triangle(Pnt3f(1, 1, 1));
    NodePtr const root = make_group(
        {make_transform(translation(10, 0, 0), {make_transform(scaling(2, 3, 4), {shape})})});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(first_position(shape), Pnt3f(12, 3, 4));
}

TEST(Mrg, AComponentTransformIsBakedAsATransformIs)
{
    NodePtr const shape = make_triangle();
    NodePtr const transform = make<ComponentTransform>({shape});
    core_of<Transform>(transform)->setMatrix(translation(3, 0, 0));
    NodePtr const root = make_group({transform});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(first_position(shape), Pnt3f(3, 0, 0));
}

TEST(Mrg, AConstSizeTransformIsBakedAsATransformIsAndLosesItsSize)
{
    NodePtr const shape = make_triangle();
    NodePtr const transform = make<ConstSizeTransform>({shape});
    core_of<Transform>(transform)->setMatrix(translation(3, 0, 0));
    NodePtr const root = make_group({transform});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(first_position(shape), Pnt3f(3, 0, 0));
}

TEST(Mrg, ATransformAtTheRootStays)
{
    NodePtr const shape = make_triangle();
    NodePtr const root = make_transform(translation(1, 0, 0), {shape});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(first_position(shape), Pnt3f(0, 0, 0));
}

TEST(Mrg, PositionsOfAnotherTypeComeUpWithoutTheMatrix)
{
    NodePtr const shape = make_triangle();
    auto const flat = make_property<GeoVec2fProperty>(std::vector<Vec2f>{{1, 2}, {3, 4}, {5, 6}});
    core_of<Geometry>(shape)->setPositions(flat);
    NodePtr const root = make_group({make_transform(translation(9, 9, 9), {shape})});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    auto const *const now =
        dynamic_cast<GeoVec2fProperty *>(core_of<Geometry>(shape)->getPositions());
    ASSERT_NE(now, nullptr);
    EXPECT_EQ(now->getValues()[0], Vec2f(1, 2));
}

TEST(Mrg, AGeometryWithoutPositionsIsMovedUpAllTheSame)
{
    NodePtr const shape = make<Geometry>();
    NodePtr const root = make_group({make_transform(translation(9, 9, 9), {shape})});
    EXPECT_TRUE(run<MrgGraphOp>(root));
    EXPECT_THAT(children_of(root), ElementsAre(shape));
}

// --- lights and lists ---

template <class Core>
class Lights : public testing::Test
{
};
using LightCores = testing::Types<DirectionalLight, PointLight, SpotLight>;
TYPED_TEST_SUITE(Lights, LightCores);

TYPED_TEST(Lights, KeepTheirPlaceAndSoDoTheirBeacons)
{
    NodePtr const beaconGroup = make_group();
    NodePtr const beaconTransform = make_transform(Matrix(), {make_triangle()});
    NodePtr const groupLight = make<TypeParam>({make_triangle()});
    NodePtr const transformLight = make<TypeParam>();
    core_of<Light>(groupLight)->setBeacon(beaconGroup);
    core_of<Light>(transformLight)->setBeacon(beaconTransform);
    NodePtr const root = make_group({beaconGroup, groupLight, beaconTransform, transformLight});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root),
                ElementsAre(beaconGroup, groupLight, beaconTransform, transformLight));
    EXPECT_EQ(beaconTransform->getNChildren(), 1u);
}

TEST(Mrg, ABeaconThatIsAGeometryKeepsItsCoreAndItsTransform)
{
    NodePtr const beacon = make_triangle();
    NodePtr const light = make<PointLight>();
    core_of<Light>(light)->setBeacon(beacon);
    NodePtr const transform = make_transform(translation(1, 0, 0), {beacon});
    NodePtr const root = make_group({transform, light});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(transform, light));
    EXPECT_THAT(children_of(transform), ElementsAre(beacon));
    EXPECT_EQ(first_position(beacon), Pnt3f(0, 0, 0));
}

TEST(Mrg, ABeaconMovesUpWithTheGroupAboveIt)
{
    NodePtr const beacon = make_group();
    NodePtr const light = make<PointLight>();
    core_of<Light>(light)->setBeacon(beacon);
    NodePtr const root = make_group({make_group({beacon}), light});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(light, beacon));
}

TEST(Mrg, ALightBelowASwitchProtectsItsBeaconToo)
{
    NodePtr const beacon = make_group();
    NodePtr const light = make<PointLight>();
    core_of<Light>(light)->setBeacon(beacon);
    NodePtr const root = make_group({make<Switch>({light}), beacon});
    run<MrgGraphOp>(root);
    EXPECT_EQ(beacon->getParent(), root);
}

TEST(Mrg, TheCallersExcludeListDoesNotCountAndIsAfterwardsWhatItWas)
{
    NodePtr const group = make_group({make_triangle()});
    NodePtr const light = make<PointLight>();
    NodePtr const root = make_group({group, light});
    OperationPtr const operation(MrgGraphOp::create());
    operation->addToExcludeList(group);
    operation->addToExcludeList(root);
    operation->traverse(root);
    EXPECT_EQ(group->getParent(), nullptr) << "it was dissolved";
    EXPECT_THAT(operation->getExcludeList().getList(), ElementsAre(group, root));
    EXPECT_FALSE(operation->isInExcludeList(light));
}

TEST(Mrg, ThePreserveListIsNeverRead)
{
    NodePtr const group = make_group({make_triangle()});
    NodePtr const root = make_group({group});
    OperationPtr const operation(MrgGraphOp::create());
    operation->addToPreserveList(group);
    operation->traverse(root);
    EXPECT_EQ(group->getParent(), nullptr);
    EXPECT_TRUE(operation->isInPreserveList(group));
}

TEST(Mrg, AClonedOneHasNeitherListsNorParameters)
{
    OperationPtr const operation(MrgGraphOp::create());
    NodePtr const node = make_group();
    operation->addToExcludeList(node);
    UnrecordedRefPtr<GraphOp> const cloned(operation->clone());
    EXPECT_EQ(cloned->getRefCount(), 1);
    EXPECT_FALSE(cloned->isInExcludeList(node));
}

// --- passes ---

TEST(Mrg, NullDoesNotGoThrough)
{
    LogCapture const log(LOG_PROGRESS);
    EXPECT_FALSE(run<MrgGraphOp>(nullptr));
    EXPECT_THAT(log.texts(), ElementsAre("MrgGraphOp::traverse: Number of nodes before merge: 0\n",
                                         "MrgGraphOp::traverse: Number of nodes after merge: 0\n"));
}

TEST(Mrg, ALeafIsLeftAlone)
{
    NodePtr const root = make_triangle();
    EXPECT_TRUE(run<MrgGraphOp>(root));
    EXPECT_EQ(first_position(root), Pnt3f(0, 0, 0));
}

/// Counts the walks over its root.
class CountingMrg : public MrgGraphOp
{
  public:
    static UnrecordedRefPtr<CountingMrg> make()
    {
        return UnrecordedRefPtr<CountingMrg>(new CountingMrg);
    }
    ResultE traverseLeave(Node *node, ResultE result) override
    {
        passes += node->getParent() == nullptr ? 1 : 0;
        return MrgGraphOp::traverseLeave(node, result);
    }

    int passes = 0;

  private:
    CountingMrg()
        : MrgGraphOp("Counting")
    {
    }
};

TEST(Mrg, APassThatLowersTheCountIsFollowedByOneMore)
{
    auto const operation = CountingMrg::make();
    NodePtr const root = make_group({make_group({make_triangle()})});
    operation->traverse(root);
    EXPECT_EQ(operation->passes, 2);
    operation->traverse(root);
    EXPECT_EQ(operation->passes, 3);
}

TEST(Mrg, AVisitedTreeIsNotEnteredNotEvenInACycle)
{
    NodePtr const visit = make_visit(nullptr);
    NodePtr const root = make_group({make<Billboard>({visit, make_triangle()})});
    core_of<VisitSubTree>(visit)->setSubTreeRoot(root);
    EXPECT_TRUE(run<MrgGraphOp>(root));
    EXPECT_EQ(visit->getParent(), nullptr) << "a group like others";
    core_of<VisitSubTree>(visit)->setSubTreeRoot(nullptr);
}

TEST(Mrg, AHundredThousandLevelsAreGood)
{
    NodePtr const shape = make_triangle();
    NodePtr const groups = make_chain(100000, shape, [] { return make_group(); });
    EXPECT_TRUE(run<MrgGraphOp>(groups));
    EXPECT_THAT(children_of(groups), ElementsAre(shape));
    NodePtr const lights = make_chain(100000, shape, [] { return make<PointLight>(); });
    EXPECT_TRUE(run<MrgGraphOp>(lights));
    EXPECT_EQ(lights->getChild(0)->getNChildren(), 1u);
}

TEST(Mrg, TransformsAThousandDeepAreBakedOneByOne)
{
    NodePtr const shape = make_triangle();
    NodePtr const root =
        make_group({make_chain(1000, shape, [] { return make_transform(translation(1, 0, 0)); })});
    run<MrgGraphOp>(root);
    EXPECT_THAT(children_of(root), ElementsAre(shape));
    EXPECT_EQ(first_position(shape), Pnt3f(1000, 0, 0));
}
} // namespace
} // namespace OSG::Test
