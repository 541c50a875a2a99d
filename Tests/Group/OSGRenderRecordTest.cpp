// A record that is kept over edits, and one that is made anew, give the same lists.

#include <thread>

#include <gtest/gtest.h>

#include "CollectedScene.h"
#include "OSGBillboard.h"
#include "OSGChangeList.h"
#include "OSGDirectionalLight.h"
#include "OSGDistanceLOD.h"
#include "OSGEditJournal.h"
#include "OSGInverseTransform.h"
#include "OSGMaterialGroup.h"
#include "OSGSwitch.h"
#include "OSGThread.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

/// A scene of all kinds of cores, and edits of it.
class RandomScene
{
  public:
    explicit RandomScene(UInt64 seed)
        : _random(seed)
    {
        for(int i = 0; i < 4; ++i)
            _materials.push_back(make_colored(_random.real(0, 1), i == 3 ? 0.5f : 0.f));
        _other = makeTree(2);
        root = make_group({makeTree(4), makeTree(3)});
        _nodes.push_back(root);
    }

    void edit()
    {
        Node *const node = pick();
        switch(_random.below(9))
        {
        case 0:
            // The volume of a geometry's node holds its children, which may turn with the view.
            if(dynamic_cast<Geometry *>(node->getCore()) == nullptr)
                node->addChild(makeTree(_random.below(2)));
            break;
        case 1:
            if(node->getNChildren() != 0)
                node->subChild(_random.below(node->getNChildren()));
            break;
        case 2:
            node->setTravMask(_random.below(4) == 0 ? 0 : 0xFFFFFFFF);
            break;
        case 3:
            node->setCore(makeCore());
            break;
        case 4:
            _materials[_random.below(4)]->setDiffuse(Color3f(_random.real(0, 1), 0, 0));
            break;
        case 5:
            _materials[_random.below(4)]->setTransparency(_random.below(2) == 0 ? 0.f : 0.5f);
            break;
        default:
            editCore(node);
        }
    }

    View view()
    {
        View view;
        view.hasViewing = true;
        view.viewing = translation(0, 0, -200) * rotation(_random.vector(), _random.real(0, 3)) *
                       translation(_random.real(-20, 20), 0, 0);
        view.size = _random.below(2) == 0 ? 1000.f : 20.f;
        return view;
    }
    UInt32 below(UInt32 count) { return _random.below(count); }

    void edit(AppearanceTable &table)
    {
        NodePath const path = place();
        switch(_random.below(8))
        {
        case 0:
            table.hide(path);
            break;
        case 1:
            table.show(path);
            break;
        case 2:
            table.erase(path);
            break;
        case 3:
            table.isolate({path, place()});
            break;
        case 4:
            table.endIsolation();
            break;
        case 5:
            if(_random.below(3) == 0)
                table.clear();
            break;
        default:
            table.set(path, _random.below(3) == 0 ? make_colored(_random.real(0, 1))
                                                  : _materials[_random.below(4)]);
        }
    }

    NodePtr root;

  private:
    // The scene need not come to it.
    NodePath place()
    {
        return _random.below(3) == 0 ? NodePath(pick(), {pick()}) : NodePath(pick());
    }

    Node *pick() { return _nodes[_random.below(static_cast<UInt32>(_nodes.size()))]; }

    Matrix matrix()
    {
        Matrix const matrix =
            translation(_random.real(-20, 20), _random.real(-20, 20), _random.real(-20, 20)) *
            rotation(_random.vector(), _random.real(0, 3));
        return _random.below(6) == 0 ? matrix * scaling(-1, 1, 2) : matrix;
    }

    UnrecordedRefPtr<NodeCore> makeCore()
    {
        switch(_random.below(11))
        {
        case 0:
        {
            UnrecordedRefPtr<Switch> const core(Switch::create());
            core->setChoice(static_cast<Int32>(_random.below(4)) - 2);
            return core;
        }
        case 1:
        {
            UnrecordedRefPtr<MaterialGroup> const core(MaterialGroup::create());
            core->setMaterial(_materials[_random.below(4)]);
            return core;
        }
        case 2:
        {
            UnrecordedRefPtr<VisitSubTree> const core(VisitSubTree::create());
            core->setSubTreeRoot(_other);
            return core;
        }
        case 3:
            return UnrecordedRefPtr<NodeCore>(Billboard::create());
        case 4:
        {
            UnrecordedRefPtr<DistanceLOD> const core(DistanceLOD::create());
            core->editRange() = {150.f, 210.f};
            return core;
        }
        case 5:
            return UnrecordedRefPtr<NodeCore>(InverseTransform::create());
        case 6:
            return UnrecordedRefPtr<NodeCore>(DirectionalLight::create());
        case 7:
            return UnrecordedRefPtr<NodeCore>(Group::create());
        default:
        {
            UnrecordedRefPtr<Transform> const core(Transform::create());
            core->setMatrix(matrix());
            return core;
        }
        }
    }

    NodePtr makeTree(UInt32 depth)
    {
        if(depth == 0)
        {
            NodePtr leaf =
                make_shape(_random.below(4) == 0 ? nullptr : _materials[_random.below(4)].get());
            _nodes.push_back(leaf);
            return leaf;
        }
        NodePtr node = make_node(makeCore());
        UInt32 const count = 1 + _random.below(3);
        for(UInt32 i = 0; i < count; ++i)
            node->addChild(makeTree(depth - 1));
        _nodes.push_back(node);
        return node;
    }

    void editCore(Node *node)
    {
        if(auto *const transform = dynamic_cast<Transform *>(node->getCore()))
            transform->setMatrix(matrix());
        else if(auto *const choice = dynamic_cast<Switch *>(node->getCore()))
            choice->setChoice(static_cast<Int32>(_random.below(4)) - 2);
        else if(auto *const group = dynamic_cast<MaterialGroup *>(node->getCore()))
            group->setMaterial(_materials[_random.below(4)]);
        else if(auto *const geometry = dynamic_cast<Geometry *>(node->getCore()))
            geometry->setMaterial(_materials[_random.below(4)]);
        else if(auto *const light = dynamic_cast<Light *>(node->getCore()))
            light->setOn(!light->getOn());
    }

    RandomNumbers _random;
    std::vector<UnrecordedRefPtr<SimpleMaterial>> _materials;
    std::vector<NodePtr> _nodes; // that an edit may take out, too
    NodePtr _other;
};

/// Random edits between frames. `editTable` edits the appearances of the action that keeps a
/// record.
template <class EditTable>
void compare_kept_with_new(EditTable editTable)
{
    for(UInt64 seed = 1; seed <= 60; ++seed)
    {
        RandomScene scene(seed);
        RenderActionPtr const kept(RenderAction::create());
        for(int frame = 0; frame < 40; ++frame)
        {
            for(UInt32 edits = scene.below(3); edits > 0; --edits)
                scene.edit();
            editTable(scene, kept->editAppearances());
            if(scene.below(3) != 0)
                commit();
            View const view = scene.view();
            std::vector<Drawn> const list = drawn_by(collect(*kept, scene.root, view));
            RenderActionPtr const fresh(RenderAction::create());
            fresh->editAppearances() = kept->getAppearances();
            ASSERT_TRUE(list == drawn_by(collect(*fresh, scene.root, view)))
                << "seed " << seed << ", frame " << frame;
            commit();
        }
    }
}

TEST(RenderRecordTest, ARecordThatIsKeptGivesTheListsOfANewOne)
{
    compare_kept_with_new([](RandomScene &, AppearanceTable &) {});
}

TEST(RenderRecordTest, SoItDoesWithATableOfAppearances)
{
    compare_kept_with_new(
        [](RandomScene &scene, AppearanceTable &table)
        {
            for(UInt32 edits = scene.below(3); edits > 0; --edits)
                scene.edit(table);
        });
}

TEST(RenderRecordTest, TwoViewsOfOneSceneSeeEveryEdit)
{
    NodePtr const shape = make_shape();
    NodePtr const moved = make_transform(Matrix(), {shape});
    NodePtr const root = make_group({moved});
    RenderActionPtr const one(RenderAction::create());
    RenderActionPtr const other(RenderAction::create());
    commit();
    for(Real32 x = 0; x < 5; ++x)
    {
        static_cast<Transform &>(*moved->getCore()).setMatrix(translation(x, 0, 0));
        commit();
        for(RenderAction *action : {one.get(), other.get()})
        {
            DrawList const &list = collect(*action, root);
            EXPECT_EQ(list.spaces[list.opaque.at(0).space].toEye, translation(x, 0, -100));
        }
    }
}

/// Counts how often nodes are entered.
struct CountedWalks : testing::Test
{
    RenderActionPtr action{RenderAction::create()};
    UInt32 entered = 0;
    NodePtr moved = make_transform(Matrix(), {make_group({make_shape()})});
    NodePtr root = make_group({make_group({make_shape()}), moved, make_group({make_shape()})});

    CountedWalks()
    {
        action->registerEnterFunction(
            Group::getClassType(),
            [this](NodeCore *, Action *)
            {
                ++entered;
                return ActionBase::Continue;
            },
            Action::HandlerPromise::Repeats);
        commit();
        collect(*action, root);
        commit();
    }
    UInt32 enteredBy(std::function<void()> const &edit, View const &view = {})
    {
        edit();
        commit();
        entered = 0;
        collect(*action, root, view);
        return entered;
    }
};

TEST_F(CountedWalks, AStillSceneAndAMovedCameraWalkNothing)
{
    EXPECT_EQ(enteredBy([] {}), 0u);
    EXPECT_EQ(enteredBy([] {}, View{.distance = 50}), 0u);
}

TEST_F(CountedWalks, AMovedTransformIsWalkedFromItsNode)
{
    auto &transform = static_cast<Transform &>(*moved->getCore());
    EXPECT_EQ(enteredBy([&] { transform.setMatrix(translation(1, 0, 0)); }), 1u);
    EXPECT_EQ(enteredBy([] {}), 0u);
}

TEST_F(CountedWalks, AnEditElsewhereWalksNothing)
{
    NodePtr const elsewhere = make_transform(Matrix());
    auto &transform = static_cast<Transform &>(*elsewhere->getCore());
    EXPECT_EQ(enteredBy([&] { transform.setMatrix(translation(1, 0, 0)); }), 0u);
}

TEST_F(CountedWalks, AnotherAppearanceWalksNothing)
{
    EXPECT_EQ(enteredBy([&] { action->editAppearances().hide(NodePath(moved)); }), 0u);
    EXPECT_EQ(action->getDrawList().opaque.size(), 2u);
    auto &transform = static_cast<Transform &>(*moved->getCore());
    EXPECT_EQ(enteredBy([&] { transform.setMatrix(translation(1, 0, 0)); }), 1u);
    EXPECT_EQ(enteredBy([&] { action->editAppearances().clear(); }), 0u);
    EXPECT_EQ(action->getDrawList().opaque.size(), 3u);
}

TEST_F(CountedWalks, EditsOfAnotherAspectWalkNothing)
{
    EXPECT_EQ(enteredBy(
                  []
                  {
                      std::thread(
                          []
                          {
                              Thread::setCurrentAspect(1);
                              NodePtr tree = make_group();
                              for(std::size_t i = 0; i < EditJournal::Capacity; ++i)
                                  tree->addChild(make_group());
                              commit();
                              tree = nullptr;
                              commit();
                          })
                          .join();
                  }),
              0u);
}

TEST_F(CountedWalks, AnotherMaskWalksEverything)
{
    action->setTravMask(1);
    EXPECT_EQ(enteredBy([] {}), 4u);
}

TEST_F(CountedWalks, AFunctionThatPromisesNothingIsCalledInEachFrame)
{
    UInt32 called = 0;
    action->registerEnterFunction(Transform::getClassType(),
                                  [&called](NodeCore *, Action *)
                                  {
                                      ++called;
                                      return ActionBase::Continue;
                                  });
    collect(*action, root);
    collect(*action, root);
    EXPECT_EQ(called, 2u);
    EXPECT_EQ(action->getDrawList().opaque.size(), 3u);
}

TEST_F(CountedWalks, AFunctionThatThrowsLeavesAnActionThatWorks)
{
    bool throws = true;
    action->registerEnterFunction(Transform::getClassType(),
                                  [&throws](NodeCore *, Action *)
                                  {
                                      if(throws)
                                          throw std::runtime_error("no");
                                      return ActionBase::Continue;
                                  });
    EXPECT_THROW(collect(*action, root), std::runtime_error);
    EXPECT_TRUE(action->getDrawList().opaque.empty());
    throws = false;
    EXPECT_EQ(collect(*action, root).opaque.size(), 3u);
}

TEST(RenderRecordTest, AnArrayThatIsWrittenInPlaceIsSeenWhereItNowReaches)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({shape});
    RenderActionPtr const action(RenderAction::create());
    commit();
    EXPECT_EQ(collect(*action, root).opaque.size(), 1u);
    auto &geometry = static_cast<Geometry &>(*shape->getCore());
    UInt64 const epoch = action->getDrawList().meshEpoch;
    UInt64 const stamp = geometry.obtainShape()->getMeshStamp();
    EXPECT_NE(stamp, 0u);
    auto &positions = static_cast<GeoPnt3fProperty &>(*geometry.getPositions());
    for(Pnt3f &position : positions.editValues())
        position[0] += 500;
    geometry.invalidateVolume();
    EXPECT_EQ(geometry.obtainShape()->getMeshStamp(), 0u);
    commit();
    EXPECT_TRUE(collect(*action, root).opaque.empty());
    EXPECT_NE(action->getDrawList().meshEpoch, epoch);
    EXPECT_NE(geometry.obtainShape()->getMeshStamp(), stamp);
}

TEST(RenderRecordTest, ARootAtTheAddressOfOneThatHasEndedIsWalked)
{
    RenderActionPtr const action(RenderAction::create());
    for(int i = 0; i < 100; ++i)
    {
        NodePtr root = i % 2 == 0 ? make_shape() : NodePtr(Node::create());
        commit();
        ASSERT_EQ(collect(*action, root).opaque.size(), i % 2 == 0 ? 1u : 0u);
    }
}

TEST(RenderRecordTest, AMaterialAtTheAddressOfOneThatHasEndedIsRead)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({shape});
    RenderActionPtr const action(RenderAction::create());
    auto &geometry = static_cast<Geometry &>(*shape->getCore());
    for(int i = 0; i < 100; ++i)
    {
        UnrecordedRefPtr<SimpleMaterial> material =
            i % 2 == 0 ? make_colored(0.25f)
                       : UnrecordedRefPtr<SimpleMaterial>(SimpleMaterial::create());
        geometry.setMaterial(material);
        material = nullptr;
        commit();
        DrawList const &list = collect(*action, root);
        ASSERT_EQ(list.states[list.opaque.at(0).state]->surface.diffuse[0],
                  i % 2 == 0 ? 0.25f : 0.8f);
    }
}
} // namespace
} // namespace OSG::Test
