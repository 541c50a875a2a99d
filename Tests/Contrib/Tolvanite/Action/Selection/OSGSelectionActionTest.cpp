#include "OSGSelectionAction.h"

#include <cmath>
#include <type_traits>

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "OSGMemManager.h"
#include "OSGSwitch.h"
#include "RandomNumbers.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// Gives the tests access to protected members.
struct OpenAction : SelectionAction
{
    OpenAction() = default;
    explicit OpenAction(Frustum const &frustum)
        : SelectionAction(frustum)
    {
    }
    OpenAction(OpenAction const &) = default;
    ~OpenAction() override = default;

    using SelectionAction::findMissed;
    using SelectionAction::getDefaultEnterFunctors;
    using SelectionAction::getDefaultLeaveFunctors;
    using SelectionAction::start;
    using SelectionAction::stop;
};

static_assert(std::is_base_of_v<Action, SelectionAction> &&
              std::is_base_of_v<MemoryObject, SelectionAction>);
static_assert(!std::is_constructible_v<SelectionAction> &&
              !std::is_copy_constructible_v<SelectionAction>);

Frustum moved_box(Real32 x)
{
    Frustum frustum = box_frustum();
    frustum.multFull(translation(x, 0, 0));
    return frustum;
}

/// Removes the prototype and the default tables at the end of a test.
class SelectionActionStatics : public testing::Test
{
  protected:
    ~SelectionActionStatics() override
    {
        SelectionAction::setPrototype(nullptr);
        SelectionAction::terminateEnter();
        SelectionAction::terminateLeave();
    }
};

// --- creation ---

TEST(SelectionAction, StartsWithEmptyStacksAndNoActor)
{
    ActionPtr const action(SelectionAction::create());
    EXPECT_TRUE(action->emptyFrustum());
    EXPECT_TRUE(action->emptyMatrix());
    EXPECT_TRUE(action->emptyNode());
    EXPECT_THAT(action->getVisitSubTreeNodes(), IsEmpty());
    EXPECT_EQ(action->getActor(), nullptr);
    EXPECT_EQ(action->frustumVolume(), FrustumVolume());
}

TEST(SelectionAction, CreateHandsOverOneReference)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    EXPECT_EQ(action->getRefCount(), 1);
}

TEST(SelectionAction, CreatedFromAFrustumItHasACopyOnTopAndItsPlanes)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    EXPECT_EQ(action->topFrustum().frt(), box_frustum().frt());
    EXPECT_EQ(action->frustumVolume(), box_frustum().Volume());
}

TEST(SelectionAction, KnowsItsClassName)
{
    EXPECT_STREQ(SelectionAction::getClassname(), "SelectionAction");
}

// --- stacks ---

TEST(SelectionAction, PoppingAFrustumBringsThePlanesBackThatAreBelow)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    action->pushFrustum(moved_box(3));
    EXPECT_EQ(action->frustumVolume(), moved_box(3).Volume());
    action->popFrustum();
    EXPECT_EQ(action->frustumVolume(), box_frustum().Volume());
    EXPECT_EQ(action->topFrustum().nlb(), box_frustum().nlb());
}

TEST(SelectionAction, PoppingTheLastFrustumLeavesDefaultPlanes)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    action->popFrustum();
    EXPECT_TRUE(action->emptyFrustum());
    EXPECT_EQ(action->frustumVolume(), FrustumVolume());
}

TEST(SelectionAction, MatricesAreStackedAsCopies)
{
    ActionPtr const action(SelectionAction::create());
    Matrix matrix = translation(1, 2, 3);
    action->pushMatrix(matrix);
    matrix.setIdentity();
    action->pushMatrix(matrix);
    action->popMatrix();
    EXPECT_EQ(action->topMatrix(), translation(1, 2, 3));
    action->popMatrix();
    EXPECT_TRUE(action->emptyMatrix());
}

TEST(SelectionAction, NodesAreStackedWithoutBeingCounted)
{
    ActionPtr const action(SelectionAction::create());
    NodePtr const first = make_group();
    NodePtr const second = make_group();
    action->pushNode(first);
    action->pushNode(second);
    EXPECT_EQ(action->topNode(), second);
    EXPECT_EQ(second->getRefCount(), 1);
    action->popNode();
    EXPECT_EQ(action->topNode(), first);
    action->popNode();
    EXPECT_TRUE(action->emptyNode());
}

TEST(SelectionAction, ThePathOfVisitedTreesGrowsAndShrinksAtItsEnd)
{
    ActionPtr const action(SelectionAction::create());
    NodePtr const outer = make_group();
    NodePtr const inner = make_group();
    action->pushVisitSubTreeNode(outer);
    action->pushVisitSubTreeNode(inner);
    EXPECT_THAT(action->getVisitSubTreeNodes(), ElementsAre(outer.get(), inner.get()));
    action->popVisitSubTreeNode();
    EXPECT_THAT(action->getVisitSubTreeNodes(), ElementsAre(outer.get()));
}

// --- reinitialize ---

TEST(SelectionAction, ReinitializeEmptiesTheStacksOfFrustaNodesAndMatrices)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    NodePtr const node = make_group();
    action->pushMatrix(Matrix());
    action->pushNode(node);
    action->reinitialize();
    EXPECT_TRUE(action->emptyFrustum());
    EXPECT_TRUE(action->emptyMatrix());
    EXPECT_TRUE(action->emptyNode());
}

TEST(SelectionAction, ReinitializeLeavesPlanesPathActorAndHits)
{
    Selection selection;
    NodePtr const root = make_node(make_geometry(inner_triangle()));
    selection.of(root);
    selection.action->pushVisitSubTreeNode(root);
    selection.action->reinitialize();
    EXPECT_EQ(selection.action->frustumVolume(), box_frustum().Volume());
    EXPECT_THAT(selection.action->getVisitSubTreeNodes(), ElementsAre(root.get()));
    EXPECT_EQ(selection.action->getActor(), &selection.functor);
    EXPECT_EQ(selection.functor.hits(SelectionFunctor::AllHits).size(), 2u);
    selection.action->pushFrustum(moved_box(5));
    EXPECT_EQ(selection.action->frustumVolume(), moved_box(5).Volume());
}

TEST(SelectionAction, ReinitializeGivesTheMemoryOfTheStacksBack)
{
    ActionPtr const action(SelectionAction::create());
    UInt64 const before = get_mem_bytes();
    for(int i = 0; i < 10000; ++i)
    {
        action->pushFrustum(box_frustum());
        action->pushMatrix(Matrix());
        action->pushNode(nullptr);
    }
    EXPECT_GT(get_mem_bytes(), before + 10000 * (sizeof(Frustum) + sizeof(Matrix)));
    action->reinitialize();
    EXPECT_LE(get_mem_bytes(), before);
}

// --- order ---

TEST(SelectionAction, NoActionEqualsAnyNotEvenItself)
{
    ActionPtr const action(SelectionAction::create());
    ActionPtr const other(SelectionAction::create());
    EXPECT_FALSE(*action == *action);
    EXPECT_TRUE(*action != *action);
    EXPECT_FALSE(*action == *other);
    EXPECT_TRUE(*action != *other);
}

TEST(SelectionAction, OfTwoActionsExactlyOneIsBelowTheOther)
{
    ActionPtr const action(SelectionAction::create());
    ActionPtr const other(SelectionAction::create());
    EXPECT_FALSE(*action < *action);
    EXPECT_NE(*action < *other, *other < *action);
    EXPECT_EQ(*action < *other, action.get() < other.get());
}

TEST(SelectionAction, ScaleAndEnterLeaveDoNothing)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    action->scale(3.f);
    EXPECT_EQ(action->setEnterLeave(1.f, 2.f), ActionBase::Continue);
    EXPECT_EQ(action->topFrustum().frt(), box_frustum().frt());
}

// --- running ---

TEST(SelectionAction, StartPrimesTheMatricesAndLeavesTheFrusta)
{
    OpenAction action(box_frustum());
    SelectionFunctor functor(&action, 7, SelectionFunctor::NearPlane);
    action.pushNode(nullptr);
    action.pushMatrix(translation(1, 1, 1));
    action.pushVisitSubTreeNode(nullptr);
    EXPECT_EQ(action.start(), ActionBase::Continue);
    EXPECT_TRUE(action.emptyNode());
    EXPECT_EQ(action.topMatrix(), Matrix());
    action.popMatrix();
    EXPECT_TRUE(action.emptyMatrix());
    EXPECT_FALSE(action.emptyFrustum());
    EXPECT_EQ(action.getVisitSubTreeNodes().size(), 1u);
}

TEST(SelectionAction, StopReturnsWhatItIsGiven)
{
    OpenAction action;
    SelectionFunctor functor(&action, 7, SelectionFunctor::NearPlane);
    EXPECT_EQ(action.stop(ActionBase::Continue), ActionBase::Continue);
    EXPECT_EQ(action.stop(ActionBase::Skip), ActionBase::Skip);
}

TEST(SelectionAction, AfterAWalkAllStacksAreWhereTheyWereAfterItsStart)
{
    Selection selection;
    NodePtr const shared = make_node(make_geometry(inner_triangle()));
    NodePtr const root =
        make_transform(translation(0.1f, 0, 0),
                       {make_visit(shared), make_transform(translation(9, 0, 0), {make_group()})});
    selection.of(root);
    EXPECT_FALSE(selection.functor.hits(SelectionFunctor::AllHits).empty());
    EXPECT_TRUE(selection.action->emptyNode());
    EXPECT_THAT(selection.action->getVisitSubTreeNodes(), IsEmpty());
    EXPECT_EQ(selection.action->topMatrix(), Matrix());
    selection.action->popMatrix();
    EXPECT_TRUE(selection.action->emptyMatrix());
    EXPECT_EQ(selection.action->topFrustum().frt(), box_frustum().frt());
    selection.action->popFrustum();
    EXPECT_TRUE(selection.action->emptyFrustum());
}

TEST(SelectionAction, ASecondApplyStartsAnewWithTheSameFrustum)
{
    Selection selection;
    NodePtr const first = make_node(make_geometry(inner_triangle()));
    NodePtr const second = make_node(make_geometry(inner_triangle()));
    EXPECT_THAT(nodes(selection.of(first)), ElementsAre(first.get(), first.get()));
    EXPECT_THAT(nodes(selection.of(second)), ElementsAre(second.get(), second.get()));
}

TEST(SelectionAction, ApplyOverARangeWalksAllRootsInOneSelection)
{
    Selection selection;
    NodePtr const first = make_node(make_geometry(inner_triangle()));
    NodePtr const second = make_node(make_geometry(inner_triangle()));
    std::vector<Node *> roots = {first, second};
    selection.action->apply(roots.begin(), roots.end());
    EXPECT_EQ(selection.functor.hits(SelectionFunctor::AllHits).size(), 4u);
}

TEST(SelectionAction, NodesOutsideTheTraversalMaskAreNotWalked)
{
    Selection selection;
    NodePtr const seen = make_node(make_geometry(inner_triangle()));
    NodePtr const hidden = make_node(make_geometry(inner_triangle()));
    hidden->setTravMask(2);
    NodePtr const root = make_group({hidden, seen});
    selection.action->setTravMask(5);
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(seen.get(), seen.get()));
}

TEST(SelectionAction, ANullRootGivesNoHits)
{
    Selection selection;
    EXPECT_THAT(selection.of(nullptr), IsEmpty());
}

TEST(SelectionActionDeathTest, WithoutAnActorApplyFails)
{
    ActionPtr const action(SelectionAction::create(box_frustum()));
    NodePtr const root = make_group();
    EXPECT_DEATH(action->apply(root), "");
}

// --- prototype ---

TEST_F(SelectionActionStatics, ThereIsNoPrototypeAtFirst)
{
    EXPECT_EQ(SelectionAction::getPrototype(), nullptr);
}

TEST_F(SelectionActionStatics, APrototypeIsCopiedAndTheFrustumPutOnTop)
{
    ActionPtr const prototype(SelectionAction::create(moved_box(7)));
    NodePtr const node = make_group();
    prototype->pushMatrix(translation(4, 5, 6));
    prototype->pushNode(node);
    prototype->setTravMask(12);
    SelectionAction::setPrototype(prototype);
    ActionPtr const copy(SelectionAction::create(box_frustum()));
    EXPECT_EQ(copy->frustumVolume(), box_frustum().Volume());
    EXPECT_EQ(copy->topMatrix(), translation(4, 5, 6));
    EXPECT_EQ(copy->topNode(), node);
    EXPECT_EQ(copy->getTravMask(), 12u);
    EXPECT_EQ(copy->getRefCount(), 1);
    copy->popFrustum();
    EXPECT_EQ(copy->frustumVolume(), moved_box(7).Volume());
}

TEST_F(SelectionActionStatics, WithoutAFrustumThePrototypeIsCopiedAsItIs)
{
    ActionPtr const prototype(SelectionAction::create(moved_box(7)));
    SelectionAction::setPrototype(prototype);
    ActionPtr const copy(SelectionAction::create());
    EXPECT_NE(copy, prototype);
    EXPECT_EQ(copy->topFrustum().frt(), moved_box(7).frt());
}

TEST_F(SelectionActionStatics, ACopySharesTheFunctorThatStillNamesTheSource)
{
    Selection source;
    SelectionAction::setPrototype(source.action);
    ActionPtr const copy(SelectionAction::create(box_frustum()));
    EXPECT_EQ(copy->getActor(), &source.functor);
    EXPECT_EQ(source.functor.getAction(), source.action);
}

TEST_F(SelectionActionStatics, TheSharedFunctorWorksOnTheCopyThatIsWalked)
{
    Selection source(moved_box(100));
    SelectionAction::setPrototype(source.action);
    ActionPtr const copy(SelectionAction::create(box_frustum()));
    NodePtr const shape = make_node(make_geometry(inner_triangle()));
    NodePtr const root = make_transform(translation(0.1f, 0, 0), {shape});
    copy->apply(root);
    EXPECT_THAT(nodes(source.functor.hits(SelectionFunctor::AllHits)),
                ElementsAre(shape.get(), shape.get()));
    EXPECT_TRUE(copy->emptyNode());
}

// --- default handlers ---

int entered = 0;
ActionBase::ResultE count_enter(NodeCore *, Action *)
{
    ++entered;
    return ActionBase::Continue;
}
ActionBase::ResultE skip(NodeCore *, Action *) { return ActionBase::Skip; }

TEST_F(SelectionActionStatics, ThereAreNoDefaultsAtFirst)
{
    OpenAction action;
    EXPECT_EQ(action.getDefaultEnterFunctors(), nullptr);
    EXPECT_EQ(action.getDefaultLeaveFunctors(), nullptr);
    EXPECT_TRUE(SelectionAction::terminateEnter());
    EXPECT_TRUE(SelectionAction::terminateLeave());
}

TEST_F(SelectionActionStatics, ATypeOfIdTenMakesElevenEntriesOfWhichTenPassThrough)
{
    FieldContainerType const &type = Switch::getClassType();
    SelectionAction::registerEnterDefault(type, &skip);
    OpenAction action;
    Action::FunctorStore const &store = *action.getDefaultEnterFunctors();
    ASSERT_EQ(store.size(), type.getId() + 1);
    for(UInt32 id = 0; id < type.getId(); ++id)
        EXPECT_TRUE(store[id] == &Action::_defaultEnterFunction);
    EXPECT_TRUE(store[type.getId()] == &skip);
}

TEST_F(SelectionActionStatics, LeaveDefaultsHaveATableOfTheirOwn)
{
    FieldContainerType const &type = Switch::getClassType();
    SelectionAction::registerLeaveDefault(type, &skip);
    OpenAction action;
    EXPECT_EQ(action.getDefaultEnterFunctors(), nullptr);
    Action::FunctorStore const &store = *action.getDefaultLeaveFunctors();
    ASSERT_EQ(store.size(), type.getId() + 1);
    EXPECT_TRUE(store[0] == &Action::_defaultLeaveFunction);
}

TEST_F(SelectionActionStatics, ASecondRegistrationReplacesTheEntry)
{
    FieldContainerType const &type = Switch::getClassType();
    SelectionAction::registerEnterDefault(type, &skip);
    SelectionAction::registerEnterDefault(type, &count_enter);
    OpenAction action;
    EXPECT_EQ(action.getDefaultEnterFunctors()->size(), type.getId() + 1);
    EXPECT_TRUE((*action.getDefaultEnterFunctors())[type.getId()] == &count_enter);
}

TEST_F(SelectionActionStatics, DefaultsServeActionsMadeAfterwardsAlone)
{
    UnrecordedRefPtr<Switch> const core(Switch::create());
    NodePtr const root = make_node(core);
    Selection earlier;
    SelectionAction::registerEnterDefault(Switch::getClassType(), &count_enter);
    Selection later;
    entered = 0;
    earlier.of(root);
    EXPECT_EQ(entered, 0);
    later.of(root);
    EXPECT_EQ(entered, 1);
}

TEST_F(SelectionActionStatics, TerminatedTablesAreGone)
{
    SelectionAction::registerEnterDefault(Switch::getClassType(), &skip);
    SelectionAction::registerLeaveDefault(Switch::getClassType(), &skip);
    EXPECT_TRUE(SelectionAction::terminateEnter());
    EXPECT_TRUE(SelectionAction::terminateLeave());
    OpenAction action;
    EXPECT_EQ(action.getDefaultEnterFunctors(), nullptr);
    EXPECT_EQ(action.getDefaultLeaveFunctors(), nullptr);
}

// --- eight boxes at a time ---

TEST(SelectionAction, MissesTheBoxesThatTheTestOfOneBoxMisses)
{
    RandomNumbers random(7);
    int missed = 0;
    for(int round = 0; round < 2000; ++round)
    {
        Frustum frustum = box_frustum();
        frustum.multFull(rotation(Vec3f(0.6f, 0, 0.8f), random.real(-3.f, 3.f)));
        OpenAction const action(frustum);
        BoxLanes lanes[2];
        std::vector<BoxVolume> boxes;
        for(std::size_t i = 0; i < 16; ++i)
        {
            // Many faces lie in planes of the frustum before it is turned a little.
            Pnt3f min = random.point(-3.f, 3.f);
            if(round % 2 == 0)
                min = Pnt3f(std::round(min[0]), std::round(min[1]), std::round(min[2]));
            boxes.emplace_back(min, min + random.vector() + Vec3f(1, 1, 1));
            for(int axis = 0; axis < 3; ++axis)
            {
                lanes[i / 8].min[axis][i % 8] = boxes[i].getMin()[axis];
                lanes[i / 8].max[axis][i % 8] = boxes[i].getMax()[axis];
            }
        }
        UInt8 bits[2];
        action.findMissed(lanes, 2, bits);
        for(std::size_t i = 0; i < 16; ++i)
        {
            bool const isMissed = (bits[i / 8] >> i % 8 & 1) != 0;
            ASSERT_EQ(isMissed, !boxes[i].intersect(action.frustumVolume()));
            ASSERT_EQ(isMissed, !boxes[i].intersectFrustum(action.frustumVolume()));
            missed += isMissed ? 1 : 0;
        }
    }
    EXPECT_GT(missed, 5000);
    EXPECT_LT(missed, 30000);
}
} // namespace
} // namespace OSG::Test
