// What each core has drawn.

#include <gtest/gtest.h>

#include <limits>

#include "CollectedScene.h"
#include "LogCapture.h"
#include "OSGBillboard.h"
#include "OSGChangeList.h"
#include "OSGDirectionalLight.h"
#include "OSGDistanceLOD.h"
#include "OSGInverseTransform.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGPointLight.h"
#include "OSGScreenLOD.h"
#include "OSGSwitch.h"
#include "OSGThread.h"

namespace OSG::Test
{
namespace
{
struct RenderActionTest : testing::Test
{
    RenderActionPtr action{RenderAction::create()};

    std::vector<DrawShape const *> shown(Node *root, View const &view = {})
    {
        return shapes_in(collect(*action, root, view));
    }
};
using Shapes = std::vector<DrawShape const *>;

TEST_F(RenderActionTest, NothingIsCollectedOfNoScene)
{
    EXPECT_TRUE(shown(nullptr).empty());
    EXPECT_TRUE(shown(make_group()).empty());
    EXPECT_TRUE(shown(NodePtr(Node::create())).empty());
}

TEST_F(RenderActionTest, GeometriesBelowGroupsTransformsAndGeometriesAreDrawn)
{
    NodePtr const below = make_shape();
    NodePtr const above = make_shape();
    above->addChild(below);
    NodePtr const root = make_group({make_transform(translation(1, 0, 0), {above})});
    DrawList const &list = collect(*action, root);
    EXPECT_EQ(shapes_in(list), shapes_of({above, below}));
    EXPECT_EQ(list.spaces[list.opaque[0].space].toEye, translation(1, 0, -100));
}

TEST_F(RenderActionTest, ASwitchShowsItsChoice)
{
    NodePtr const a = make_shape();
    NodePtr const b = make_shape();
    UnrecordedRefPtr<Switch> const choice(Switch::create());
    NodePtr const root = make_node(choice, {a, b});
    auto const showsAt = [&](Int32 value)
    {
        choice->setChoice(value);
        return shown(root);
    };
    EXPECT_EQ(showsAt(1), shapes_of({b}));
    EXPECT_EQ(showsAt(Switch::AllChildren), shapes_of({a, b}));
    EXPECT_TRUE(showsAt(Switch::NoChild).empty());
    EXPECT_TRUE(showsAt(2).empty());
    EXPECT_TRUE(showsAt(-3).empty());
    EXPECT_EQ(showsAt(0), shapes_of({a}));
}

TEST_F(RenderActionTest, AMultiSwitchShowsWhatItsModeSays)
{
    NodePtr const a = make_shape();
    NodePtr const b = make_shape();
    NodePtr const c = make_shape();
    auto const shows = [&](Int32 mode, std::vector<UInt32> const &choices) {
        return shown(make_multi_switch(mode, choices, {a, b, c}));
    };
    EXPECT_EQ(shows(MultiSwitch::ShowChoices, {2, 0, 2, 7}), shapes_of({a, c}));
    EXPECT_TRUE(shows(MultiSwitch::ShowChoices, {}).empty());
    EXPECT_TRUE(shows(MultiSwitch::ShowNone, {0}).empty());
    EXPECT_EQ(shows(MultiSwitch::ShowAll, {}), shapes_of({a, b, c}));
    EXPECT_EQ(shows(17, {0}), shapes_of({a, b, c}));
}

TEST_F(RenderActionTest, NodesWithoutABitOfTheMaskAreHidden)
{
    NodePtr const a = make_shape();
    NodePtr const b = make_shape();
    NodePtr const root = make_group({a, b});
    a->setTravMask(1);
    b->setTravMask(2);
    action->setTravMask(2);
    EXPECT_EQ(shown(root), shapes_of({b}));
    action->setTravMask(3);
    EXPECT_EQ(shown(root), shapes_of({a, b}));
    b->setTravMask(4);
    EXPECT_EQ(shown(root), shapes_of({a}));
}

TEST_F(RenderActionTest, AVisitedTreeIsDrawnInThePlaceOfTheVisit)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({make_transform(translation(2, 0, 0), {make_visit(shape)}),
                                     make_visit(shape), make_visit(nullptr)});
    DrawList const &list = collect(*action, root);
    EXPECT_EQ(shapes_in(list), shapes_of({shape, shape}));
    EXPECT_EQ(list.spaces[list.opaque[0].space].toEye, translation(2, 0, -100));
    EXPECT_EQ(list.spaces[list.opaque[1].space].toEye, translation(0, 0, -100));
}

TEST_F(RenderActionTest, ACircleOfVisitsEndsWithOneWarning)
{
    NodePtr const visit = make_visit(nullptr);
    NodePtr const root = make_group({make_shape(), visit});
    static_cast<VisitSubTree &>(*visit->getCore()).setSubTreeRoot(root);
    Thread::getCurrentChangeList()->commitChanges();
    root->updateVolume(); // a walk too, which warns for itself
    LogCapture log;
    EXPECT_FALSE(shown(root).empty());
    EXPECT_EQ(log.messages().size(), 1u);
    visit->setCore(nullptr);
}

TEST_F(RenderActionTest, TheInnermostMaterialGroupReplacesMaterials)
{
    auto const group = [](Material *material, Children const &children)
    {
        UnrecordedRefPtr<MaterialGroup> const core(MaterialGroup::create());
        core->setMaterial(material);
        return make_node(core, children);
    };
    auto const own = make_colored(0.1f);
    auto const outer = make_colored(0.2f);
    auto const inner = make_colored(0.3f);
    NodePtr const visited = make_shape(own);
    NodePtr const root = make_group(
        {make_shape(own), group(outer, {make_shape(own), group(nullptr, {make_shape(own)}),
                                        group(inner, {make_visit(visited)})})});
    std::vector<Real32> reds;
    DrawList const &list = collect(*action, root);
    for(DrawItem const &item : list.opaque)
        reds.push_back(list.states[item.state]->surface.diffuse[0]);
    EXPECT_EQ(reds, (std::vector<Real32>{0.1f, 0.2f, 0.2f, 0.3f}));
}

TEST_F(RenderActionTest, TheOutermostOverridingGroupCounts)
{
    auto const group = [](Material *material, Children const &children)
    {
        UnrecordedRefPtr<MaterialChunkOverrideGroup> const core(
            MaterialChunkOverrideGroup::create());
        core->setMaterial(material);
        return make_node(core, children);
    };
    NodePtr const root =
        group(nullptr, {group(make_colored(0.2f), {group(make_colored(0.3f), {make_shape()})})});
    DrawList const &list = collect(*action, root);
    ASSERT_EQ(list.opaque.size(), 1u);
    EXPECT_EQ(list.states[list.opaque[0].state]->surface.diffuse[0], 0.2f);
}

TEST_F(RenderActionTest, BelowAnInverseTransformAreTheCoordinatesOfTheRoot)
{
    UnrecordedRefPtr<InverseTransform> const inverse(InverseTransform::create());
    NodePtr const shape = make_shape();
    NodePtr const moved = make_transform(translation(3, 4, 0), {make_node(inverse, {shape})});
    DrawList const &list = collect(*action, make_group({moved}));
    ASSERT_EQ(list.opaque.size(), 1u);
    EXPECT_EQ(list.spaces[list.opaque[0].space].toEye, translation(0, 0, -100));
    Matrix accumulated;
    inverse->accumulateMatrix(accumulated);
    EXPECT_EQ(accumulated, translation(-3, -4, 0));
}

TEST_F(RenderActionTest, AnInverseTransformFollowsATransformAboveIt)
{
    UnrecordedRefPtr<InverseTransform> const inverse(InverseTransform::create());
    NodePtr const moved =
        make_transform(translation(3, 4, 0), {make_node(inverse, {make_shape()})});
    NodePtr const root = make_group({moved});
    collect(*action, root);
    static_cast<Transform &>(*moved->getCore()).setMatrix(translation(-7, 0, 0));
    Thread::getCurrentChangeList()->commitChanges();
    DrawList const &list = collect(*action, root);
    ASSERT_EQ(list.opaque.size(), 1u);
    EXPECT_EQ(list.spaces[list.opaque[0].space].toEye, translation(0, 0, -100));
}

TEST_F(RenderActionTest, BelowASingularTransformAnInverseTransformDoesNothing)
{
    UnrecordedRefPtr<InverseTransform> const inverse(InverseTransform::create());
    NodePtr const flat = make_transform(scaling(1, 1, 0), {make_node(inverse, {make_shape()})});
    LogCapture const log;
    DrawList const &list = collect(*action, make_group({flat}));
    ASSERT_EQ(list.opaque.size(), 1u);
    EXPECT_EQ(list.spaces[list.opaque[0].space].toEye, translation(0, 0, -100) * scaling(1, 1, 0));
}

TEST_F(RenderActionTest, PartsBelowALevelOfDetailKeepTheirPlacesFarFromTheOrigin)
{
    // Two parts a unit apart, a million units out, seen by a turned eye near them.
    constexpr Real32 Far = 1e6f;
    auto const parts = []
    {
        return Children{make_transform(translation(Far, Far, Far), {make_shape()}),
                        make_transform(translation(Far + 1, Far, Far), {make_shape()})};
    };
    View view;
    view.hasViewing = true;
    view.viewing =
        translation(0, 0, -100) * rotation(Vec3f(0, 1, 0), 0.7f) * translation(-Far, -Far, -Far);
    UnrecordedRefPtr<DistanceLOD> const levels(DistanceLOD::create());
    for(NodePtr const &root : {make_group(parts()), make_node(levels, {make_group(parts())})})
    {
        DrawList const &list = collect(*action, root, view);
        ASSERT_EQ(list.opaque.size(), 2u);
        Matrix const &a = list.spaces[list.opaque[0].space].toEye;
        Matrix const &b = list.spaces[list.opaque[1].space].toEye;
        Vec3f const apart(b[3][0] - a[3][0], b[3][1] - a[3][1], b[3][2] - a[3][2]);
        EXPECT_NEAR(apart.length(), 1, 1e-4f);
    }
}

TEST_F(RenderActionTest, AnArrayThatIsSetAndNotCommittedIsShownWhereItIs)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({shape});
    auto &geometry = static_cast<Geometry &>(*shape->getCore());
    UnrecordedRefPtr<GeoVectorProperty> const near(geometry.getPositions());
    geometry.setPositions(make_property<GeoPnt3fProperty>(
        std::vector{Pnt3f(500, 0, 0), Pnt3f(501, 0, 0), Pnt3f(500, 1, 0)}));
    Thread::getCurrentChangeList()->commitChanges();
    EXPECT_TRUE(shown(root).empty());
    geometry.setPositions(near);
    EXPECT_EQ(shown(root), shapes_of({shape}));
}

TEST_F(RenderActionTest, TheDepthOfAGlassIsThatOfItsOwnBox)
{
    auto const glass = make_colored(1, 0.5f);
    NodePtr const a = make_shape(glass);
    NodePtr const b = make_shape(glass);
    NodePtr const child = make_transform(Matrix(), {make_shape()});
    a->addChild(child);
    NodePtr const root = make_group(
        {make_transform(translation(0, 0, 1), {a}), make_transform(translation(0, 0, 2), {b})});
    auto const order = [&]
    {
        DrawList const &list = collect(*action, root);
        return std::vector{list.shapes[list.transparent.at(0).shape],
                           list.shapes[list.transparent.at(1).shape]};
    };
    EXPECT_EQ(order(), shapes_of({a, b}));
    static_cast<Transform &>(*child->getCore()).setMatrix(translation(0, 0, 40));
    Thread::getCurrentChangeList()->commitChanges();
    EXPECT_EQ(order(), shapes_of({a, b}));
}

TEST_F(RenderActionTest, ABillboardFacesTheViewAndKeepsItsScale)
{
    UnrecordedRefPtr<Billboard> const billboard(Billboard::create());
    NodePtr const root =
        make_transform(translation(5, 0, 0) * rotation(Vec3f(0, 1, 0), 1.f) * scaling(2, 3, 4),
                       {make_node(billboard, {make_shape()})});
    DrawList const &list = collect(*action, root);
    ASSERT_EQ(list.opaque.size(), 1u);
    Matrix const &toEye = list.spaces[list.opaque[0].space].toEye;
    EXPECT_TRUE(toEye.equals(translation(5, 0, -100) * scaling(2, 3, 4), 1e-4f));
}

TEST_F(RenderActionTest, ABillboardInPerspectiveTurnsItsZToTheEye)
{
    UnrecordedRefPtr<Billboard> const billboard(Billboard::create());
    NodePtr const root =
        make_transform(translation(30, 40, 0), {make_node(billboard, {make_shape()})});
    View const view{.distance = 120};
    action->editDrawEnv() = view.env();
    Matrix projection;
    projection[2][2] = -1.001f;
    projection[2][3] = -1;
    projection[3][2] = -1;
    projection[3][3] = 0;
    DrawEnv const env = action->getDrawEnv();
    action->editDrawEnv().setView(env.getCameraToWorld(), env.getCameraViewing(), projection,
                                  env.getPixels());
    action->apply(root);
    DrawList const &list = action->getDrawList();
    ASSERT_EQ(list.opaque.size(), 1u);
    Matrix const &toEye = list.spaces[list.opaque[0].space].toEye;
    Vec3f const z(toEye[2][0], toEye[2][1], toEye[2][2]);
    Vec3f const towards = Vec3f(-30, -40, 120) * (1 / 130.f);
    EXPECT_LT((z - towards).length(), 1e-5f);
    EXPECT_NEAR(toEye[0][1], 0, 1e-6f); // its x axis stays level
}

TEST_F(RenderActionTest, ADistanceLODCountsTheRangesThatAreNotAboveTheDistance)
{
    NodePtr const a = make_shape();
    NodePtr const b = make_shape();
    NodePtr const c = make_shape();
    UnrecordedRefPtr<DistanceLOD> const levels(DistanceLOD::create());
    NodePtr const root = make_node(levels, {a, b, c});
    auto const showsAt = [&](Real32 distance) { return shown(root, View{.distance = distance}); };
    EXPECT_EQ(showsAt(10), shapes_of({a})); // no ranges: the first child
    levels->editRange() = {10.f, 20.f, 30.f, 40.f};
    EXPECT_EQ(showsAt(9.5f), shapes_of({a}));
    EXPECT_EQ(showsAt(10), shapes_of({b}));
    EXPECT_EQ(showsAt(25), shapes_of({c}));
    EXPECT_EQ(showsAt(400), shapes_of({c}));
    levels->setCenter(Pnt3f(0, 0, 10));
    EXPECT_EQ(showsAt(15), shapes_of({a}));
}

TEST_F(RenderActionTest, TheDistanceOfALODIsMeasuredInWorldSpace)
{
    NodePtr const a = make_shape();
    NodePtr const b = make_shape();
    UnrecordedRefPtr<DistanceLOD> const levels(DistanceLOD::create());
    levels->editRange() = {10.f};
    levels->setCenter(Pnt3f(1, 0, 0));
    NodePtr const root = make_transform(scaling(3, 3, 3), {make_node(levels, {a, b})});
    View view;
    view.hasViewing = true;
    view.viewing = scaling(0.01f, 0.01f, 0.01f) * translation(0, 0, -9.5f);
    EXPECT_EQ(shown(root, view), shapes_of({a})); // sqrt(9.5^2 + 3^2) = 9.96
    view.viewing = scaling(0.01f, 0.01f, 0.01f) * translation(0, 0, -9.6f);
    EXPECT_EQ(shown(root, view), shapes_of({b}));
}

TEST_F(RenderActionTest, AScreenLODCountsTheCoveragesAboveItsShare)
{
    NodePtr const a = make_shape(nullptr, 20); // 20 by 10 of 100 by 100 units: 0.02
    NodePtr const b = make_shape(nullptr, 20);
    UnrecordedRefPtr<ScreenLOD> const levels(ScreenLOD::create());
    NodePtr const root = make_node(levels, {a, b});
    EXPECT_EQ(shown(root), shapes_of({a}));
    levels->editCoverage() = {0.019f};
    EXPECT_EQ(shown(root), shapes_of({a}));
    levels->editCoverage() = {0.021f};
    EXPECT_EQ(shown(root), shapes_of({b}));
    // Upright, it is 10 units deep, and reaches before the near plane.
    NodePtr const upright = make_transform(rotation(Vec3f(1, 0, 0), 1.5707963f), {root});
    EXPECT_EQ(shown(upright, View{.distance = 5}), shapes_of({a}));
    EXPECT_EQ(shown(upright, View{.distance = 15}), shapes_of({b}));
}

TEST_F(RenderActionTest, LevelsWithoutChildrenShowNothing)
{
    UnrecordedRefPtr<DistanceLOD> const distance(DistanceLOD::create());
    UnrecordedRefPtr<ScreenLOD> const screen(ScreenLOD::create());
    EXPECT_TRUE(shown(make_group({make_node(distance), make_node(screen)})).empty());
}

TEST_F(RenderActionTest, WhatIsOutOfSightIsLeftOut)
{
    NodePtr const in = make_shape();
    NodePtr const root = make_group({in, make_transform(translation(60, 0, 0), {make_shape()}),
                                     make_transform(translation(0, 0, 101), {make_shape()}),
                                     make_transform(translation(0, -51, 0), {make_shape()}),
                                     make_transform(translation(0, 0, -901), {make_shape()})});
    EXPECT_EQ(shown(root), shapes_of({in}));
}

TEST_F(RenderActionTest, AnInfiniteVolumeIsNeverOutOfSight)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({make_transform(translation(1e6f, 0, 0), {shape})});
    EXPECT_TRUE(shown(root).empty());
    // An edit of the core that is open would have the volume computed anew.
    Thread::getCurrentChangeList()->commitChanges();
    shape->editVolume().setInfinite();
    EXPECT_EQ(shown(root), shapes_of({shape}));
}

TEST_F(RenderActionTest, NothingIsDrawnInASpaceWithoutNumbers)
{
    constexpr Real32 NaN = std::numeric_limits<Real32>::quiet_NaN();
    NodePtr const shape = make_shape();
    UnrecordedRefPtr<DistanceLOD> const levels(DistanceLOD::create());
    NodePtr const level = make_shape();
    NodePtr const broken =
        make_transform(translation(NaN, 0, 0), {make_shape(), make_node(levels, {level})});
    EXPECT_EQ(shown(make_group({broken, shape})), shapes_of({shape}));
}

TEST_F(RenderActionTest, AMirroredSpaceIsSaidToBeOne)
{
    NodePtr const root =
        make_group({make_shape(), make_transform(scaling(-1, 1, 1), {make_shape()})});
    DrawList const *list = &collect(*action, root);
    EXPECT_FALSE(list->spaces[list->opaque[0].space].isMirrored);
    EXPECT_TRUE(list->spaces[list->opaque[1].space].isMirrored);
    View view;
    view.hasViewing = true;
    view.viewing = translation(0, 0, -100) * scaling(1, -1, 1);
    list = &collect(*action, root, view);
    EXPECT_TRUE(list->spaces[list->opaque[0].space].isMirrored);
    EXPECT_FALSE(list->spaces[list->opaque[1].space].isMirrored);
}

TEST_F(RenderActionTest, EqualStatesStandTogetherAndAreOneState)
{
    auto const red = make_colored(1);
    auto const alsoRed = make_colored(1);
    auto const dark = make_colored(0.2f);
    NodePtr const a = make_shape(red);
    NodePtr const b = make_shape(dark);
    NodePtr const c = make_shape(alsoRed);
    NodePtr const d = make_shape(dark);
    DrawList const &list = collect(*action, make_group({a, b, c, d}));
    EXPECT_EQ(shapes_in(list), shapes_of({a, c, b, d}));
    EXPECT_EQ(list.states.size(), 2u);
}

TEST_F(RenderActionTest, MaterialsOfALowerKeyComeFirst)
{
    auto const late = make_colored(1);
    auto const early = make_colored(0.5f);
    late->setSortKey(5);
    early->setSortKey(-5);
    NodePtr const a = make_shape(late);
    NodePtr const b = make_shape();
    NodePtr const c = make_shape(early);
    EXPECT_EQ(shown(make_group({a, b, c})), shapes_of({c, b, a}));
}

TEST_F(RenderActionTest, TransparentShapesComeLastFromTheFarthestToTheNearest)
{
    auto const glass = make_colored(1, 0.5f);
    NodePtr const nearGlass = make_shape(glass);
    NodePtr const farGlass = make_shape(glass);
    NodePtr const alsoFar = make_shape(glass);
    NodePtr const solid = make_shape();
    NodePtr const root = make_group({make_transform(translation(0, 0, 10), {nearGlass}),
                                     make_transform(translation(0, 0, -10), {farGlass}),
                                     make_transform(translation(5, 0, -10), {alsoFar}), solid});
    EXPECT_EQ(shown(root), shapes_of({solid, farGlass, alsoFar, nearGlass}));
    View behind;
    behind.hasViewing = true;
    behind.viewing = translation(0, 0, -100) * rotation(Vec3f(0, 1, 0), 3.14159265f);
    EXPECT_EQ(shown(root, behind), shapes_of({solid, nearGlass, farGlass, alsoFar}));
}

TEST_F(RenderActionTest, GlassOfALevelOfDetailTakesItsPlaceByDepth)
{
    auto const glass = make_colored(1, 0.5f);
    NodePtr const nearGlass = make_shape(glass);
    NodePtr const farGlass = make_shape(glass);
    UnrecordedRefPtr<DistanceLOD> const levels(DistanceLOD::create());
    NodePtr const root =
        make_group({make_transform(translation(0, 0, 10), {nearGlass}),
                    make_transform(translation(0, 0, -10), {make_node(levels, {farGlass})})});
    EXPECT_EQ(shown(root), shapes_of({farGlass, nearGlass}));
}

// --- lights ---

NodePtr make_light(UnrecordedRefPtr<Light> const &core, Real32 red, Children const &children)
{
    core->setDiffuse(Color4f(red, 0, 0, 1));
    return make_node(core, children);
}
NodePtr make_sun(Real32 red, Children const &children)
{
    return make_light(UnrecordedRefPtr<Light>(DirectionalLight::create()), red, children);
}

TEST_F(RenderActionTest, LightsShineOnWhatIsBelowThem)
{
    NodePtr const root =
        make_group({make_shape(), make_sun(0.1f, {make_shape(), make_sun(0.2f, {make_shape()})})});
    DrawList const &list = collect(*action, root);
    std::vector<std::size_t> counts;
    for(DrawItem const &item : list.opaque)
        counts.push_back(list.lights[item.lights].size());
    EXPECT_EQ(counts, (std::vector<std::size_t>{0, 1, 2}));
    EXPECT_EQ(list.lights[list.opaque[2].lights][0].diffuse[0], 0.1f);
    EXPECT_EQ(list.lights[list.opaque[2].lights][1].diffuse[0], 0.2f);
}

TEST_F(RenderActionTest, ALightStandsInTheSpaceOfItsBeacon)
{
    UnrecordedRefPtr<PointLight> const lamp(PointLight::create());
    lamp->setPosition(Pnt3f(1, 2, 3));
    NodePtr const beacon = make_transform(translation(10, 0, 0));
    NodePtr const root =
        make_transform(translation(0, 5, 0), {make_node(lamp, {make_shape()}), beacon});
    auto const position = [&]
    {
        DrawList const &list = collect(*action, root);
        return list.lights[list.opaque.at(0).lights].at(0).position;
    };
    EXPECT_EQ(position(), Vec4f(1.f, 7.f, -97.f, 1.f));
    lamp->setBeacon(beacon);
    EXPECT_EQ(position(), Vec4f(11.f, 7.f, -97.f, 1.f));
    static_cast<Transform &>(*beacon->getCore()).setMatrix(translation(20, 0, 0));
    EXPECT_EQ(position(), Vec4f(21.f, 7.f, -97.f, 1.f));
}

TEST_F(RenderActionTest, ABeaconOutsideOfTheSceneMovesItsLight)
{
    UnrecordedRefPtr<PointLight> const lamp(PointLight::create());
    NodePtr const beacon = make_transform(translation(10, 0, 0));
    lamp->setBeacon(beacon);
    NodePtr const root = make_node(lamp, {make_shape()});
    collect(*action, root);
    Thread::getCurrentChangeList()->commitChanges();
    static_cast<Transform &>(*beacon->getCore()).setMatrix(translation(20, 0, 0));
    DrawList const &list = collect(*action, root);
    EXPECT_EQ(list.lights[list.opaque.at(0).lights].at(0).position, Vec4f(20.f, 0.f, -100.f, 1.f));
}

TEST_F(RenderActionTest, LightsThatAreOffAndTheNinthOneDoNotShine)
{
    NodePtr innermost = make_shape();
    NodePtr root = innermost;
    for(int i = 9; i > 0; --i)
        root = make_sun(static_cast<Real32>(i), {root});
    UnrecordedRefPtr<Light> const off(DirectionalLight::create());
    off->setOn(false);
    root = make_light(off, 0, {root});
    LogCapture log;
    DrawList const &list = collect(*action, root);
    LightSet const &lights = list.lights[list.opaque.at(0).lights];
    ASSERT_EQ(lights.size(), 8u);
    EXPECT_EQ(lights[0].diffuse[0], 1.f);
    EXPECT_EQ(lights[7].diffuse[0], 8.f);
    EXPECT_EQ(log.count("RenderAction: only the first eight lights of the scene shine\n"), 1u);
    collect(*action, root);
    EXPECT_EQ(log.count("RenderAction: only the first eight lights of the scene shine\n"), 1u);
}

TEST_F(RenderActionTest, TheHeadlightReplacesTheLightsOfTheScene)
{
    action->setHeadlight(true);
    DrawList const &list = collect(*action, make_sun(0.1f, {make_shape()}));
    LightSet const &lights = list.lights[list.opaque.at(0).lights];
    ASSERT_EQ(lights.size(), 1u);
    EXPECT_EQ(lights[0], LightValues());
}
} // namespace
} // namespace OSG::Test
