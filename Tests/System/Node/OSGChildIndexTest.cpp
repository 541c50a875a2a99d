#include "OSGChildIndex.h"

#include <thread>

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "OSGAction.h"
#include "OSGChangeList.h"
#include "OSGSwitch.h"
#include "OSGThread.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::SizeIs;
using Nodes = std::vector<Node *>;
using Promise = Action::HandlerPromise;

/// Finds transforms and geometries whose boxes meet a box. Spaces do not matter to it.
class BoxAction : public Action
{
  public:
    explicit BoxAction(BoxVolume const &box)
        : query(box)
    {
        for(FieldContainerType const *type :
            {&Transform::getClassType(), &Geometry::getClassType()})
        {
            registerEnterFunction(
                *type,
                [](NodeCore *, Action *action)
                { return static_cast<BoxAction *>(action)->enter(); },
                Promise::GatedByBox);
            registerLeaveFunction(*type, &Action::_defaultLeaveFunction);
        }
        auto const pass = [](NodeCore *, Action *) { return Continue; };
        registerEnterFunction(MultiSwitch::getClassType(), pass, Promise::KeepsScene);
    }
    BoxAction(BoxAction const &) = default;
    ~BoxAction() override = default;

    Nodes const &walk(Node *root)
    {
        found.clear();
        asked = 0;
        apply(root);
        return found;
    }

    BoxVolume query;
    Nodes found;
    int asked = 0; ///< nodes whose boxes a handler has tested

  protected:
    void findMissed(BoxLanes const *boxes, std::size_t count, UInt8 *missed) const override
    {
        find_missed(boxes, count, missed,
                    [this](BoxLanes const &lanes, UInt32 quad)
                    {
                        FourMask outside{};
                        for(int axis = 0; axis < 3; ++axis)
                            outside |= (lanes.minOf(axis, quad) > query.getMax()[axis]) |
                                       (lanes.maxOf(axis, quad) < query.getMin()[axis]);
                        return outside;
                    });
    }

  private:
    ResultE enter()
    {
        ++asked;
        BoxVolume const &box = getActNode()->getVolume();
        if(box.isValid() && !box.intersectBox(query))
            return Skip;
        found.push_back(getActNode());
        return Continue;
    }
};

/// The same without leaving anything out: a function of a host is in the way.
struct PlainAction : BoxAction
{
    explicit PlainAction(BoxVolume const &box)
        : BoxAction(box)
    {
        registerEnterFunction(Switch::getClassType(),
                              [](NodeCore *, Action *) { return Continue; });
    }
};

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

void bring_up_to_date(Node *root)
{
    commit();
    root->updateVolume();
}

NodePtr shape_at(Real32 x)
{
    return make_node(make_geometry(
        one_primitive(TrianglesPrimitive, {{x, 0, 0}, {x + 0.5f, 0, 0}, {x, 0.5f, 0}})));
}

/// A group of transforms with a triangle each, at first, first + 1 and so on.
NodePtr make_row(int first, int count)
{
    NodePtr group = make_group();
    for(int i = first; i < first + count; ++i)
        group->addChild(make_transform(translation(static_cast<Real32>(i), 0, 0), {shape_at(0)}));
    return group;
}

BoxVolume box_at(Real32 x) { return BoxVolume({x - 0.1f, -1, -1}, {x + 0.1f, 1, 1}); }

/// How many boxes are tested once a walk has left traces.
int asked_in_the_end(BoxAction &action, Node *root)
{
    Nodes const expected = PlainAction(action.query).walk(root);
    for(int walk = 0; walk < 3; ++walk)
        EXPECT_EQ(action.walk(root), expected);
    return action.asked;
}

class ChildIndexTest : public testing::Test
{
  protected:
    ChildIndexTest() { bring_up_to_date(row); }

    NodePtr row = make_row(0, 20);
    BoxAction action{box_at(3)};
};

// The transform at 3 and its triangle, which is at 0 in the space that this action stays in.
TEST_F(ChildIndexTest, IsBuiltBySecondWalksAndLeavesMissedChildrenOut)
{
    UInt32 const before = ChildIndex::count();
    EXPECT_THAT(action.walk(row), SizeIs(1));
    EXPECT_EQ(action.asked, 21);
    EXPECT_EQ(ChildIndex::count(), before);
    EXPECT_THAT(action.walk(row), ElementsAre(row->getChild(3)));
    EXPECT_EQ(action.asked, 2);
    EXPECT_EQ(ChildIndex::count(), before + 1);
    row = nullptr;
    EXPECT_EQ(ChildIndex::count(), before);
}

TEST_F(ChildIndexTest, LeavesOutWholeGroups)
{
    NodePtr const root = make_group();
    for(int i = 0; i < 10; ++i)
        root->addChild(make_row(20 * i, 20));
    bring_up_to_date(root);
    EXPECT_EQ(asked_in_the_end(action, root), 2);
    action.query = BoxVolume({-1, -1, -1}, {300, 1, 1});
    EXPECT_EQ(asked_in_the_end(action, root), 400);
}

TEST_F(ChildIndexTest, ANodeOfFewChildrenHasNone)
{
    NodePtr const few = make_row(0, static_cast<int>(ChildIndex::MinChildren) - 1);
    bring_up_to_date(few);
    EXPECT_EQ(asked_in_the_end(action, few), static_cast<int>(ChildIndex::MinChildren));
}

// --- where it must not be used ---

TEST_F(ChildIndexTest, AFunctionThatPromisesNothingTakesEveryNode)
{
    PlainAction plain(action.query);
    EXPECT_EQ(asked_in_the_end(plain, row), 21);
    action.registerLeaveFunction(Group::getClassType(),
                                 [](NodeCore *, Action *) { return ActionBase::Continue; });
    EXPECT_EQ(asked_in_the_end(action, row), 21);
}

TEST_F(ChildIndexTest, AFunctionOnTheWayIsAlwaysReached)
{
    int left = 0;
    NodePtr const root = make_group();
    for(int i = 0; i < 10; ++i)
        root->addChild(make_row(100, 8));
    bring_up_to_date(root);
    action.registerLeaveFunction(
        Group::getClassType(),
        [&left](NodeCore *, Action *)
        {
            ++left;
            return ActionBase::Continue;
        },
        Promise::KeepsScene);
    for(int walk = 0; walk < 3; ++walk)
    {
        left = 0;
        action.walk(root);
        EXPECT_EQ(left, 11);
    }
    EXPECT_EQ(action.asked, 0) << "below the groups nothing is reached";
}

TEST_F(ChildIndexTest, AChildWhoseFunctionIsNotGatedIsAlwaysTaken)
{
    row->addChild(make_multi_switch(MultiSwitch::ShowAll, {}, {make_row(100, 3)}));
    bring_up_to_date(row);
    EXPECT_EQ(asked_in_the_end(action, row), 2 + 3);
}

TEST_F(ChildIndexTest, ChildrenWithBoxesThatAreNotUsableAreAlwaysTaken)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    Node *const child = row->getChild(9);
    child->editVolume().setValid(false);
    commit();
    EXPECT_EQ(asked_in_the_end(action, row), 2 + 2) << "not valid";
    child->editVolume().setInfinite();
    commit();
    EXPECT_EQ(asked_in_the_end(action, row), 2 + 2) << "infinite";
    child->editVolume() = BoxVolume(Pnt3f(nan, 0, 0), Pnt3f(nan, 1, 1));
    commit();
    EXPECT_EQ(asked_in_the_end(action, row), 2 + 2) << "NaN";
    child->editVolume() = box_at(50);
    commit();
    EXPECT_EQ(asked_in_the_end(action, row), 2) << "far away";
}

TEST_F(ChildIndexTest, ABoxThatDoesNotHoldWhatIsBelowHidesNothing)
{
    NodePtr const root = make_group();
    for(int i = 0; i < 10; ++i)
        root->addChild(make_row(20 * i, 20));
    bring_up_to_date(root);
    root->getChild(0)->editVolume() = box_at(1000);
    commit();
    EXPECT_EQ(asked_in_the_end(action, root), 2);
    EXPECT_THAT(action.found, SizeIs(1));
}

TEST_F(ChildIndexTest, AHostMayWriteToABoxUntilTheCommit)
{
    BoxVolume &box = row->getChild(7)->editVolume();
    asked_in_the_end(action, row);
    box = action.query;
    EXPECT_THAT(action.walk(row), ElementsAre(row->getChild(3), row->getChild(7)));
}

TEST_F(ChildIndexTest, AHostMayFillAnEmptyBoxUntilTheCommit)
{
    BoxVolume &box = row->getChild(7)->editVolume();
    box = BoxVolume();
    asked_in_the_end(action, row);
    box = action.query;
    EXPECT_THAT(action.walk(row), ElementsAre(row->getChild(3), row->getChild(7)));
}

TEST_F(ChildIndexTest, MaskedNodesStayOut)
{
    row->getChild(3)->setTravMask(2);
    action.setTravMask(1);
    for(int walk = 0; walk < 3; ++walk)
        EXPECT_THAT(action.walk(row), SizeIs(0));
    row->getChild(3)->setTravMask(1);
    EXPECT_THAT(action.walk(row), SizeIs(1));
}

TEST_F(ChildIndexTest, ActionsWithOtherFunctionsHaveIndicesOfTheirOwn)
{
    BoxAction other(action.query);
    other.registerEnterFunction(Transform::getClassType(), &Action::_defaultEnterFunction);
    for(int walk = 0; walk < 3; ++walk)
    {
        EXPECT_THAT(action.walk(row), ElementsAre(row->getChild(3)));
        other.walk(row);
        EXPECT_EQ(other.asked, walk == 0 ? 20 : 0) << "the triangles are at 0";
    }
}

// --- edits ---

/// A random tree, and random edits of it.
class EditedScene
{
  public:
    explicit EditedScene(UInt64 seed)
        : _random(seed)
    {
        grow(root, 0);
        bring_up_to_date(root);
    }

    void edit()
    {
        Node *const node = any();
        switch(_random.below(9))
        {
        case 0:
            node->addChild(leaf());
            break;
        case 1:
            if(node->getNChildren() != 0)
                node->subChild(_random.below(node->getNChildren()));
            break;
        case 2:
            node->setCore(core());
            break;
        case 3:
            node->setTravMask(_random.below(4));
            break;
        case 4:
            any()->addChild(NodePtr(node)); // refused where it would close a circle
            break;
        case 5:
            if(auto *const transform = dynamic_cast<Transform *>(node->getCore()))
                transform->setMatrix(matrix());
            break;
        case 6:
            node->editVolume() = box(2.f);
            break;
        case 7:
            _box = &node->editVolume();
            break;
        default:
            node->invalidateVolume();
        }
        if(_random.below(3) == 0)
        {
            commit();
            _box = nullptr;
        }
        if(_random.below(2) == 0)
            root->updateVolume();
    }
    /// What a host does that keeps the box that it got from editVolume.
    void writeLater()
    {
        if(_box != nullptr)
            *_box = box(3.f);
    }
    BoxVolume box(Real32 size)
    {
        Pnt3f const min = _random.point(-10.f, 10.f);
        return BoxVolume(min, min + Vec3f(size, size, size));
    }

    NodePtr root = make_group();

  private:
    void grow(Node *node, int level)
    {
        UInt32 const count = level < 4 ? 6 + _random.below(6) : 0;
        for(UInt32 i = 0; i < count && _all.size() < 400; ++i)
        {
            NodePtr const child = leaf();
            node->addChild(child);
            if(_random.below(3) != 0)
                grow(child, level + 1);
        }
    }
    NodePtr leaf()
    {
        NodePtr made = make_node(core());
        _all.push_back(made);
        return made;
    }
    UnrecordedRefPtr<NodeCore> core()
    {
        UInt32 const kind = _random.below(8);
        if(kind < 3)
        {
            UnrecordedRefPtr<Transform> const transform(Transform::create());
            transform->setMatrix(matrix());
            return transform;
        }
        if(kind == 3)
            return UnrecordedRefPtr<MultiSwitch>(MultiSwitch::create());
        if(kind == 4)
            return nullptr;
        if(kind == 5)
            return UnrecordedRefPtr<Group>(Group::create());
        Pnt3f const at = _random.point(-10.f, 10.f);
        return make_geometry(one_primitive(
            TrianglesPrimitive, {at, at + Vec3f(0.5f, 0, 0), at + Vec3f(0, 0.5f, 0.5f)}));
    }
    Matrix matrix()
    {
        Vec3f const by = _random.vector() * 3.f;
        return translation(by[0], by[1], by[2]);
    }
    Node *any()
    {
        UInt32 const number = _random.below(static_cast<UInt32>(_all.size()) + 1);
        return number < _all.size() ? _all[number].get() : root.get();
    }

    RandomNumbers _random;
    std::vector<NodePtr> _all; // also those that have been taken out
    BoxVolume *_box = nullptr;
};

TEST(ChildIndexEdits, NoEditMakesAWalkDifferFromAPlainOne)
{
    LogCapture const refused; // children that would close a circle
    std::size_t found = 0;
    UInt32 most = 0;
    for(UInt64 seed = 0; seed < 20; ++seed)
    {
        EditedScene scene(seed);
        BoxAction action{BoxVolume()};
        PlainAction plain{BoxVolume()};
        for(int round = 0; round < 100; ++round)
        {
            scene.edit();
            for(int walk = 0; walk < 4; ++walk)
            {
                action.query = plain.query = scene.box(4.f);
                action.setTravMask(walk == 0 ? 1 : 0xFFFFFFFF);
                plain.setTravMask(action.getTravMask());
                if(walk == 3)
                    scene.writeLater();
                ASSERT_EQ(action.walk(scene.root), plain.walk(scene.root))
                    << "seed " << seed << " round " << round << " walk " << walk;
                ASSERT_LE(action.asked, plain.asked);
                found += action.found.size();
                most = std::max(most, ChildIndex::count());
            }
        }
    }
    EXPECT_GT(found, 1000u);
    EXPECT_GT(most, 2u);
}

// --- threads ---

TEST_F(ChildIndexTest, TwoThreadsMayWalkAndBuildAtOnce)
{
    NodePtr const root = make_group();
    for(int i = 0; i < 10; ++i)
        root->addChild(make_row(20 * i, 20));
    bring_up_to_date(root);
    commit();
    auto const walk = [&](Real32 at)
    {
        BoxAction own(box_at(at));
        for(int i = 0; i < 20; ++i)
            ASSERT_THAT(own.walk(root), SizeIs(1));
    };
    std::thread other(walk, 105.f);
    walk(42.f);
    other.join();
}
} // namespace
} // namespace OSG::Test
