#include "OSGSelectionHandlers.h"
#include "OSGChangeList.h"
#include "OSGThread.h"

#include <limits>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGBillboard.h"
#include "OSGComponentTransform.h"
#include "OSGConstantSizeTransform.h"
#include "OSGDistanceLOD.h"
#include "OSGFastSelectionFunctor.h"
#include "OSGInverseTransform.h"
#include "OSGMoveManipulator.h"
#include "OSGRotateManipulator.h"
#include "OSGScaleManipulator.h"
#include "OSGSwitch.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::string const Singular = "TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n";
std::string const ZeroW = "TransformationMatrix<>::multFull(Pnt3, Pnt3): w == 0.0\n";
std::string const Cycle = "Traversal: a subtree is added below itself or too deep, it ends here\n";
Real32 const Nan = std::numeric_limits<Real32>::quiet_NaN();

std::string const StaleBox =
    "SelectionAction: a node's volume is out of date and hides nothing; call "
    "updateVolume after commitChanges\n";

/// What else a selection warns of in a scene whose boxes nobody has computed.
std::vector<std::string> other_warnings(LogCapture const &log)
{
    std::vector<std::string> texts = log.texts(LOG_WARNING);
    EXPECT_EQ(std::erase(texts, StaleBox), 1u);
    return texts;
}

NodePtr inner_shape() { return make_node(make_geometry(inner_triangle())); }
NodePtr far_shape()
{
    return make_node(make_geometry(triangle({90, 90, 90}, {91, 90, 90}, {90, 91, 90})));
}
NodePtr point_shape(Pnt3f const &point)
{
    return make_node(make_geometry(one_primitive(PointsPrimitive, {point})));
}

/// A box of the node's own that lies far outside the frustum.
void put_aside(Node *node) { node->editVolume() = BoxVolume({50, 50, 50}, {60, 60, 60}); }

// --- transforms ---

template <class Core>
UnrecordedRefPtr<NodeCore> with_matrix(Matrix const &matrix)
{
    UnrecordedRefPtr<Core> const core(Core::create());
    core->setMatrix(matrix);
    return UnrecordedRefPtr<NodeCore>(core.get());
}

template <class Core>
UnrecordedRefPtr<NodeCore> with_rendered_matrix(Matrix const &matrix)
{
    UnrecordedRefPtr<Core> const core(Core::create());
    core->setRenderedMatrix(matrix);
    return UnrecordedRefPtr<NodeCore>(core.get());
}

struct TransformCase
{
    char const *name;
    UnrecordedRefPtr<NodeCore> (*make)(Matrix const &matrix);
};

void PrintTo(TransformCase const &c, std::ostream *out) { *out << c.name; }

class TransformCores : public testing::TestWithParam<TransformCase>
{
};

TEST_P(TransformCores, CarryTheFrustumDownAndTheHitsUp)
{
    Matrix const matrix = translation(5, 6, 7);
    NodePtr const shape = point_shape({-4.5f, -5.5f, -7.5f});
    NodePtr const root = make_node(GetParam().make(matrix), {shape});
    Selection selection;
    Hits const &hits = selection.of(root);
    ASSERT_THAT(hits, SizeIs(1));
    EXPECT_EQ(hits[0].node, shape);
    EXPECT_EQ(hits[0].matrix, matrix);
    EXPECT_EQ(hits[0].point, Pnt3f(0.5f, 0.5f, -0.5f));
    EXPECT_TRUE(selection.action->emptyNode());
}

TEST_P(TransformCores, LeaveTheFrustumAsItWasForWhatFollows)
{
    NodePtr const after = inner_shape();
    NodePtr const root =
        make_group({make_node(GetParam().make(translation(5, 6, 7)), {inner_shape()}), after});
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(after.get(), after.get()));
}

TEST_P(TransformCores, AreSkippedWhereTheirBoxLiesOutside)
{
    NodePtr const root = make_node(GetParam().make(Matrix()), {inner_shape()});
    put_aside(root);
    Selection selection;
    EXPECT_THAT(selection.of(root), IsEmpty());
    EXPECT_TRUE(selection.action->emptyNode());
    EXPECT_EQ(selection.action->topFrustum().frt(), box_frustum().frt());
}

INSTANTIATE_TEST_SUITE_P(
    SelectionHandlers, TransformCores,
    testing::Values(TransformCase{"Transform", with_matrix<Transform>},
                    TransformCase{"ComponentTransform", with_matrix<ComponentTransform>},
                    TransformCase{"MoveManipulator", with_matrix<MoveManipulator>},
                    TransformCase{"RotateManipulator", with_matrix<RotateManipulator>},
                    TransformCase{"ScaleManipulator", with_matrix<ScaleManipulator>},
                    TransformCase{"InverseTransform", with_rendered_matrix<InverseTransform>},
                    TransformCase{"Billboard", with_rendered_matrix<Billboard>},
                    TransformCase{"ConstantSizeTransform",
                                  with_rendered_matrix<ConstantSizeTransform>}),
    [](auto const &instance) { return std::string(instance.param.name); });

TEST(SelectionHandlers, NestedTransformsMultiply)
{
    NodePtr const shape = point_shape({1, 1, 1});
    NodePtr const root = make_transform(translation(0.5f, 0.5f, -0.5f),
                                        {make_transform(scaling(0.25f, 0.25f, 0.25f), {shape})});
    Selection selection;
    Hits const &hits = selection.of(root);
    ASSERT_THAT(hits, SizeIs(1));
    EXPECT_EQ(hits[0].point, Pnt3f(0.75f, 0.75f, -0.25f));
    EXPECT_EQ(hits[0].distance, 1.f); // in the space of the point
}

TEST(SelectionHandlers, BelowAMirrorNothingIsInside)
{
    NodePtr const shape = inner_shape();
    NodePtr const root = make_transform(translation(1, 0, 0) * scaling(-1, 1, 1), {shape});
    Selection selection;
    EXPECT_THAT(selection.of(root), IsEmpty());
}

TEST(SelectionHandlers, ASingularTransformLeavesTheFrustumAndSaysSo)
{
    LogCapture log;
    NodePtr const shape = inner_shape();
    NodePtr const root = make_transform(scaling(1, 1, 0), {shape});
    Selection selection;
    Hits const &hits = selection.of(root);
    EXPECT_THAT(other_warnings(log), ElementsAre(Singular));
    ASSERT_THAT(nodes(hits), ElementsAre(shape.get(), shape.get()));
    EXPECT_EQ(hits[1].point[2], 0.f); // the matrix flattens the point all the same
    EXPECT_TRUE(selection.action->emptyNode());
}

TEST(SelectionHandlers, ATransformThatIsNoNumberLeavesTheFrustumAndSaysSo)
{
    LogCapture log;
    Matrix matrix;
    matrix[1][1] = Nan;
    NodePtr const shape = inner_shape();
    NodePtr const root = make_group({make_transform(matrix, {shape}), inner_shape()});
    Selection selection;
    Hits const &hits = selection.of(root);
    EXPECT_THAT(other_warnings(log), ElementsAre(Singular));
    EXPECT_THAT(hits, SizeIs(4));
    for(HitT const &hit : hits)
        EXPECT_EQ(hit.distance, hit.distance);
    EXPECT_TRUE(selection.action->emptyNode());
    EXPECT_EQ(selection.action->topMatrix(), Matrix());
}

TEST(SelectionHandlers, AHitPointOfZeroWStaysUndividedAndWarns)
{
    LogCapture log;
    Matrix projection; // w = 0 everywhere, so that it has no inverse either
    projection[3][3] = 0;
    NodePtr const root = make_transform(projection, {point_shape({0.25f, 0.5f, -0.5f})});
    Selection selection;
    Hits const &hits = selection.of(root);
    ASSERT_THAT(hits, SizeIs(1));
    EXPECT_EQ(hits[0].point, Pnt3f(0.25f, 0.5f, -0.5f));
    EXPECT_THAT(other_warnings(log), ElementsAre(Singular, ZeroW));
}

// --- culling ---

TEST(SelectionHandlers, AGeometryWithoutAValidBoxIsTested)
{
    NodePtr const root = inner_shape();
    ASSERT_FALSE(root->getVolume().isValid());
    Selection selection;
    EXPECT_THAT(selection.of(root), SizeIs(2));
    put_aside(root);
    root->editVolume().setValid(false);
    EXPECT_THAT(selection.of(root), SizeIs(2));
}

TEST(SelectionHandlers, BoxesThatACommitHasMadeInvalidAreNamedInOneWarning)
{
    LogCapture log;
    NodePtr const root = inner_shape();
    root->updateVolume();
    Selection selection;
    EXPECT_THAT(selection.of(root), SizeIs(2));
    EXPECT_THAT(log.texts(LOG_WARNING), IsEmpty());
    Thread::getCurrentChangeList()->commitChanges(); // of the new geometry
    EXPECT_THAT(selection.of(root), SizeIs(2));
    EXPECT_THAT(selection.of(root), SizeIs(2));
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(StaleBox));
}

TEST(SelectionHandlers, BoxesAreTakenAsTheyStand)
{
    NodePtr const root = inner_shape();
    put_aside(root);
    Selection selection;
    EXPECT_THAT(selection.of(root), IsEmpty());
}

TEST(SelectionHandlers, ASelectionUpdatesNoBox)
{
    NodePtr const root = make_transform(Matrix(), {inner_shape()});
    Selection selection;
    selection.of(root);
    EXPECT_FALSE(root->getVolume().isValid());
}

TEST(SelectionHandlers, AGeometryThatIsSkippedHidesItsChildren)
{
    NodePtr const root = inner_shape();
    root->addChild(inner_shape());
    put_aside(root);
    Selection selection;
    EXPECT_THAT(selection.of(root), IsEmpty());
}

TEST(SelectionHandlers, ChildrenOfAGeometryAreWalked)
{
    NodePtr const child = inner_shape();
    NodePtr const root = far_shape();
    root->addChild(child);
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(child.get(), child.get()));
}

TEST(SelectionHandlers, GroupsAreWalkedWhateverTheirBox)
{
    NodePtr const root = make_group({inner_shape()});
    put_aside(root);
    Selection selection;
    EXPECT_THAT(selection.of(root), SizeIs(2));
}

TEST(SelectionHandlers, SwitchesAndLevelsOfDetailShowAllTheirChildren)
{
    UnrecordedRefPtr<Switch> const choice(Switch::create());
    choice->setChoice(0);
    UnrecordedRefPtr<DistanceLOD> const levels(DistanceLOD::create());
    for(NodeCore *core : {static_cast<NodeCore *>(choice), static_cast<NodeCore *>(levels)})
    {
        NodePtr const root = make_node(core, {inner_shape(), inner_shape()});
        Selection selection;
        EXPECT_THAT(selection.of(root), SizeIs(4));
    }
}

TEST(SelectionHandlers, ANodeWithoutACoreIsWalkedThrough)
{
    NodePtr const root = make_node(nullptr, {inner_shape()});
    Selection selection;
    EXPECT_THAT(selection.of(root), SizeIs(2));
}

// --- switches ---

struct ChoiceCase
{
    char const *name;
    Int32 mode;
    std::vector<UInt32> choices;
    std::vector<int> shown;
};

void PrintTo(ChoiceCase const &c, std::ostream *out) { *out << c.name; }

class MultiSwitchModes : public testing::TestWithParam<ChoiceCase>
{
};

TEST_P(MultiSwitchModes, ShowTheChildrenThatTheyName)
{
    Children const children = {inner_shape(), inner_shape(), inner_shape()};
    NodePtr const root = make_multi_switch(GetParam().mode, GetParam().choices, children);
    Selection selection;
    selection.of(root);
    std::vector<Node *> expected;
    for(int child : GetParam().shown)
        expected.push_back(children[static_cast<std::size_t>(child)]);
    std::vector<Node *> seen = nodes(selection.functor.hits(SelectionFunctor::BackHits));
    EXPECT_EQ(seen, expected);
}

INSTANTIATE_TEST_SUITE_P(
    SelectionHandlers, MultiSwitchModes,
    testing::Values(ChoiceCase{"all", -3, {1}, {0, 1, 2}}, ChoiceCase{"none", -2, {1}, {}},
                    ChoiceCase{"anyOther", 1, {2}, {0, 1, 2}},
                    ChoiceCase{"firstAndThird", -1, {0, 2}, {0, 2}},
                    ChoiceCase{"oneOnly", -1, {1}, {1}}, ChoiceCase{"noChoices", -1, {}, {0, 1, 2}},
                    ChoiceCase{"outOfOrderHidesTheRest", -1, {1, 0, 2}, {1}},
                    ChoiceCase{"twiceTheSameHidesTheRest", -1, {0, 0, 1}, {0}},
                    ChoiceCase{"twiceTheSameLaterHidesTheRest", -1, {1, 1, 2}, {1}},
                    ChoiceCase{"beyondTheChildrenHidesTheRest", -1, {0, 7, 2}, {0}},
                    ChoiceCase{"minusOneHidesTheRest", -1, {1, 4294967295u, 2}, {1}},
                    // Without a valid choice no added node takes the place of the children.
                    ChoiceCase{"nothingChosenShowsAll", -1, {7}, {0, 1, 2}}),
    [](auto const &instance) { return std::string(instance.param.name); });

TEST(SelectionHandlers, NoChoicesShowNoneOnRequest)
{
    NodePtr const root = make_multi_switch(-1, {}, {inner_shape()});
    Selection selection;
    selection.functor.setContinueOnEmptyMultiSwitchChoices(false);
    EXPECT_THAT(selection.of(root), IsEmpty());
}

TEST(SelectionHandlers, AMultiSwitchWithoutChildrenIsPassedOver)
{
    NodePtr const after = inner_shape();
    NodePtr const root = make_group({make_multi_switch(-1, {0}), after});
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(after.get(), after.get()));
}

TEST(SelectionHandlers, AMultiSwitchIsNotCulledByItsBox)
{
    NodePtr const root = make_multi_switch(-3, {}, {inner_shape()});
    put_aside(root);
    Selection selection;
    EXPECT_THAT(selection.of(root), SizeIs(2));
}

// --- shared subtrees ---

TEST(SelectionHandlers, HitsCarryThePathOfVisitedTrees)
{
    NodePtr const shared = inner_shape();
    NodePtr const inner = make_visit(shared);
    NodePtr const outer = make_visit(inner);
    NodePtr const plain = inner_shape();
    NodePtr const root = make_group({outer, plain});
    Selection selection;
    Hits const &hits = selection.of(root);
    ASSERT_THAT(hits, SizeIs(4));
    for(HitT const &hit : hits)
    {
        if(hit.node == shared)
            EXPECT_THAT(hit.visitSubTreeNodes, ElementsAre(outer.get(), inner.get()));
        else
            EXPECT_THAT(hit.visitSubTreeNodes, IsEmpty());
    }
}

TEST(SelectionHandlers, AVisitedTreeTakesThePlaceOfTheChildren)
{
    NodePtr const shared = inner_shape();
    NodePtr const root = make_visit(shared);
    root->addChild(inner_shape());
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(shared.get(), shared.get()));
}

TEST(SelectionHandlers, ATreeVisitedTwiceUnderTransformsIsFoundAtBothPlaces)
{
    NodePtr const shared = point_shape({0.5f, 0.5f, -0.25f});
    NodePtr const root = make_group(
        {make_visit(shared), make_transform(translation(0, 0, -0.5f), {make_visit(shared)})});
    Selection selection;
    Hits const &hits = selection.of(root);
    ASSERT_THAT(distances(hits), ElementsAre(0.25f, 0.75f));
    EXPECT_EQ(hits[1].point, Pnt3f(0.5f, 0.5f, -0.75f));
    EXPECT_THAT(selection.functor.hits(SelectionFunctor::FrontHits), SizeIs(1));
}

TEST(SelectionHandlers, AVisitIsCulledByItsBox)
{
    NodePtr const shared = inner_shape();
    NodePtr const root = make_visit(shared);
    put_aside(root);
    Selection selection;
    EXPECT_THAT(selection.of(root), IsEmpty());
}

TEST(SelectionHandlers, AVisitOfNothingShowsNothing)
{
    LogCapture log;
    NodePtr const visit = make_visit(nullptr);
    visit->addChild(inner_shape());
    NodePtr const after = inner_shape();
    NodePtr const root = make_group({visit, after});
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(after.get(), after.get()));
    EXPECT_THAT(selection.action->getVisitSubTreeNodes(), IsEmpty());
    EXPECT_THAT(other_warnings(log), IsEmpty());
}

TEST(SelectionHandlers, ATreeThatVisitsItselfEndsWithOneWarning)
{
    LogCapture log;
    NodePtr const shape = inner_shape();
    NodePtr const root = make_group({shape});
    NodePtr const visit = make_visit(root);
    root->addChild(visit);
    root->addChild(make_visit(root));
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(shape.get(), shape.get()));
    EXPECT_THAT(other_warnings(log), ElementsAre(Cycle));
    EXPECT_THAT(selection.action->getVisitSubTreeNodes(), IsEmpty());
    static_cast<VisitSubTree *>(visit->getCore())->setSubTreeRoot(nullptr);
    static_cast<VisitSubTree *>(root->getChild(2)->getCore())->setSubTreeRoot(nullptr);
}

// --- degenerate frusta ---

Frustum flat_frustum()
{
    Frustum frustum = box_frustum();
    frustum.multFull(scaling(1, 1, 0));
    return frustum;
}
Frustum mirrored_frustum()
{
    Frustum frustum = box_frustum();
    frustum.multFull(translation(1, 0, 0) * scaling(-1, 1, 1));
    return frustum;
}
Frustum frustum_of(Pnt3f const &corner)
{
    return Frustum(corner, corner, corner, corner, corner, corner, corner, corner);
}

NodePtr all_kinds()
{
    return make_transform(
        translation(0, 0, 0),
        {make_node(make_geometry({{TrianglesPrimitive, LinesPrimitive, PointsPrimitive},
                                  {6, 4, 2},
                                  {{0.1f, 0.1f, -0.1f},
                                   {0.3f, 0.1f, -0.1f},
                                   {0.1f, 0.3f, -0.9f},
                                   {-5, -5, -0.5f},
                                   {5, -5, -0.5f},
                                   {0, 5, -0.5f},
                                   {0.2f, 0.2f, -0.2f},
                                   {0.2f, 0.2f, -0.8f},
                                   {0.2f, 0.2f, 2},
                                   {0.2f, 0.2f, -8},
                                   {0.3f, 0.3f, -0.3f},
                                   {0.3f, 0.3f, -0.7f}}}))});
}

TEST(SelectionHandlers, AMirroredFrustumGivesNoHits)
{
    NodePtr const root = all_kinds();
    EXPECT_THAT(Selection(mirrored_frustum()).of(root), IsEmpty());
}

TEST(SelectionHandlers, AFrustumThatIsNoNumberGivesNoHits)
{
    NodePtr const root = all_kinds();
    EXPECT_THAT(Selection(frustum_of({Nan, Nan, Nan})).of(root), IsEmpty());
}

TEST(SelectionHandlers, FrustaWithoutVolumeGiveHitsThatAreNumbers)
{
    NodePtr const root = all_kinds();
    for(Frustum const &frustum : {flat_frustum(), frustum_of({0.5f, 0.5f, -0.5f}), Frustum()})
    {
        Selection selection(frustum);
        for(HitT const &hit : selection.of(root))
        {
            EXPECT_EQ(hit.distance, hit.distance);
            EXPECT_EQ(hit.point, hit.point);
        }
    }
}

// --- depth ---

TEST(SelectionHandlers, AHundredThousandTransformsAboveOneAnotherAreWalked)
{
    NodePtr const shape = inner_shape();
    NodePtr const root = make_chain(100000, shape, [] { return make_transform(Matrix()); });
    Selection selection;
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(shape.get(), shape.get()));
    EXPECT_TRUE(selection.action->emptyNode());
    FastSelectionFunctor const quick(selection.action);
    selection.action->apply(root);
    EXPECT_THAT(quick.hits(SelectionFunctor::AllHits), SizeIs(1));
}

TEST(SelectionHandlers, AWalkThatAnExceptionEndsLeavesTheActionAsItWas)
{
    NodePtr const shape = make_node(make_geometry(inner_triangle()));
    NodePtr const switched = make_node(UnrecordedRefPtr<Switch>(Switch::create()));
    NodePtr const moved = make_transform(translation(0, 0, 0.1f), {switched});
    NodePtr const visit = make_visit(moved);
    Selection selection;
    selection.action->registerEnterFunction(Switch::getClassType(),
                                            [](NodeCore *, Action *) -> ActionBase::ResultE
                                            { throw std::bad_alloc(); });
    std::size_t const hits = Selection().of(shape).size();
    EXPECT_THROW(selection.of(visit), std::bad_alloc);
    EXPECT_TRUE(selection.action->getVisitSubTreeNodes().empty());
    EXPECT_EQ(selection.action->getActNode(), nullptr);
    // The top is the host's frustum again, not the frustum of the space in which the walk ended.
    Hits const &after = selection.of(shape);
    ASSERT_EQ(after.size(), hits);
    EXPECT_EQ(after[0].distance, Selection().of(shape)[0].distance);
    EXPECT_TRUE(after[0].visitSubTreeNodes.empty());
}
} // namespace
} // namespace OSG::Test
