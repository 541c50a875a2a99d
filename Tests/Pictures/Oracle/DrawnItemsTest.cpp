#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "../PictureScenes.h"
#include "DrawnItems.h"
#include "FacingMatrices.h"
#include "MathPrinters.h"
#include "OSGChunkMaterial.h"
#include "OSGDirectionalLight.h"
#include "OSGInverseTransform.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGSwitch.h"
#include "OSGSwitchMaterial.h"

namespace OSG::Test
{
namespace
{
NodePtr square_at(Real32 x)
{
    return make_transform(translation(x, 0, 0),
                          {make_node(square(0.1f, 0, simple_material(Color3f(1, 0, 0))))});
}

std::vector<DrawnItem> items_of(Node *root, ViewSetup const &setup = square_view())
{
    return drawn_items(root, view_of(setup));
}

// Where the items stand along x, which names them.
std::vector<int> places(Node *root, UInt32 travMask = 0xFFFFFFFF)
{
    SlowView view = view_of(square_view());
    view.travMask = travMask;
    std::vector<int> result;
    for(DrawnItem const &item : drawn_items(root, view))
        result.push_back(static_cast<int>(item.toEye[3][0]));
    return result;
}

Children three_squares() { return {square_at(1), square_at(2), square_at(3)}; }

TEST(DrawnItems, ASwitchShowsItsChild)
{
    UnrecordedRefPtr<Switch> const core(Switch::create());
    NodePtr const root = make_node(core, three_squares());
    EXPECT_EQ(places(root), std::vector<int>());
    core->setChoice(1);
    EXPECT_EQ(places(root), (std::vector{2}));
    core->setChoice(3);
    EXPECT_EQ(places(root), std::vector<int>());
    core->setChoice(Switch::AllChildren);
    EXPECT_EQ(places(root), (std::vector{1, 2, 3}));
}
TEST(DrawnItems, AMultiSwitchShowsItsChoices)
{
    EXPECT_EQ(places(make_multi_switch(-1, {2, 0, 7}, three_squares())), (std::vector{1, 3}));
    EXPECT_EQ(places(make_multi_switch(-1, {}, three_squares())), std::vector<int>());
    EXPECT_EQ(places(make_multi_switch(-2, {1}, three_squares())), std::vector<int>());
    EXPECT_EQ(places(make_multi_switch(-3, {1}, three_squares())), (std::vector{1, 2, 3}));
    EXPECT_EQ(places(make_multi_switch(5, {1}, three_squares())), (std::vector{1, 2, 3}));
}
TEST(DrawnItems, ATraversalMaskHidesANode)
{
    NodePtr const hidden = square_at(2);
    hidden->setTravMask(4);
    NodePtr const root = make_group({square_at(1), hidden});
    EXPECT_EQ(places(root, 6), (std::vector{1, 2}));
    EXPECT_EQ(places(root, 3), (std::vector{1}));
}
TEST(DrawnItems, AVisitShowsTheOtherTreeInPlaceOfItsChildren)
{
    NodePtr const other = square_at(2);
    NodePtr const visit = make_visit(other);
    visit->addChild(square_at(3));
    EXPECT_EQ(places(make_group({square_at(1), visit})), (std::vector{1, 2}));
}
TEST(DrawnItems, ChildrenOfGeometriesAndOfNodesWithoutACoreAreShown)
{
    NodePtr const geometry = make_node(square(0.1f, 0, nullptr), {square_at(1)});
    NodePtr const bare(Node::create());
    bare->addChild(square_at(2));
    EXPECT_EQ(places(make_group({geometry, bare})), (std::vector{0, 1, 2}));
}
TEST(DrawnItems, AnInverseTransformStandsInTheRootsSpace)
{
    UnrecordedRefPtr<InverseTransform> const core(InverseTransform::create());
    NodePtr const root = make_transform(translation(7, 0, 0), {make_node(core, {square_at(2)})});
    EXPECT_EQ(places(root), (std::vector{2}));
}

// --- materials ---

Real64 red_of(Node *root) { return items_of(root).front().surface.colors.diffuse[0]; }

template <class Group>
NodePtr under(Material *material, NodePtr const &child)
{
    UnrecordedRefPtr<Group> const core(Group::create());
    core->setMaterial(material);
    return make_node(core, {child});
}

UnrecordedRefPtr<SimpleMaterial> grey(Real32 value)
{
    return simple_material(Color3f(value, value, value));
}

TEST(DrawnItems, OfGroupsOfMaterialsTheInnermostThatHasOneCounts)
{
    NodePtr const inner = under<MaterialGroup>(nullptr, square_at(0));
    EXPECT_EQ(red_of(inner), 1);
    NodePtr const middle = under<MaterialGroup>(grey(0.5f), make_visit(inner));
    NodePtr const root = under<MaterialGroup>(grey(0.25f), middle);
    EXPECT_EQ(red_of(root), 0.5);
}
TEST(DrawnItems, OfOverridingGroupsTheOutermostCounts)
{
    NodePtr const inner = under<MaterialChunkOverrideGroup>(grey(0.5f), square_at(0));
    NodePtr const root = under<MaterialChunkOverrideGroup>(grey(0.25f), inner);
    EXPECT_EQ(red_of(root), 0.25);
}
TEST(DrawnItems, AnOverridingMaterialLeavesTheBlendingBelow)
{
    UnrecordedRefPtr<SimpleMaterial> const glass = grey(0.5f);
    glass->setTransparency(0.5f);
    NodePtr const shape = make_node(square(0.1f, 0, glass));
    NodePtr const root = under<MaterialChunkOverrideGroup>(grey(0.25f), shape);
    EXPECT_TRUE(items_of(root).front().surface.transparent);
    EXPECT_EQ(items_of(root).front().surface.colors.diffuse[3], 1);
}
TEST(DrawnItems, AMaterialThatLeadsNowhereHasTheDefaults)
{
    UnrecordedRefPtr<SwitchMaterial> const loop(SwitchMaterial::create());
    loop->editMFMaterials()->push_back(loop.get());
    UnrecordedRefPtr<ChunkMaterial> const empty(ChunkMaterial::create());
    UnrecordedRefPtr<SwitchMaterial> const beyond(SwitchMaterial::create());
    beyond->setChoice(3);
    for(Material *const material : std::array<Material *, 4>{nullptr, loop, empty, beyond})
        EXPECT_NEAR(red_of(make_node(square(0.1f, 0, material))), 0.8, 1e-12);
    loop->editMFMaterials()->clear();
}
TEST(DrawnItems, AChunkThatIsIgnoredHasNoEffect)
{
    UnrecordedRefPtr<MaterialChunk> const chunk(MaterialChunk::create());
    chunk->setDiffuse(Color4f(0.5f, 0, 0, 1));
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    material->addChunk(chunk);
    NodePtr const root = make_node(square(0.1f, 0, material));
    EXPECT_EQ(red_of(root), 0.5);
    chunk->setIgnore(true);
    EXPECT_NEAR(red_of(root), 0.8, 1e-12);
}

// --- lights ---

TEST(DrawnItems, LightsShineOnWhatIsBelowThemInTheSpaceOfTheirBeacon)
{
    NodePtr const beacon = make_transform(rotation(Vec3f(0, 1, 0), 1.5707964f));
    UnrecordedRefPtr<DirectionalLight> const core(DirectionalLight::create());
    core->setBeacon(beacon);
    NodePtr const root = make_group({beacon, make_node(core, {square_at(1)}), square_at(2)});
    SlowView view = view_of(square_view());
    view.headlight = false;
    std::vector<DrawnItem> const items = drawn_items(root, view);
    ASSERT_EQ(items.size(), 2u);
    ASSERT_EQ(items[0].lights.size(), 1u);
    EXPECT_NEAR(items[0].lights[0].position[0], 1, 1e-6);
    EXPECT_NEAR(items[0].lights[0].position[2], 0, 1e-6);
    EXPECT_TRUE(items[1].lights.empty());
    view.headlight = true;
    EXPECT_EQ(drawn_items(root, view)[1].lights.size(), 1u);
}

// --- matrices that depend on the viewer ---

TEST(FacingMatrices, ABillboardTurnsItsZToTheEyeAndKeepsItsLengths)
{
    SlowView const view = view_of(square_perspective());
    Matrix4d toEye;
    toEye[0] = Vec4d(0.0, 2.0, 0.0, 0.0);
    toEye[1] = Vec4d(0.0, 0.0, 3.0, 0.0);
    toEye[3] = Vec4d(3.0, 0.0, -4.0, 1.0);
    Matrix4d const turned = billboard_matrix(toEye, view);
    Vec4d const expected[] = {{1.6, 0, 1.2, 0}, {0, 3, 0, 0}, {-0.6, 0, 0.8, 0}, {3, 0, -4, 1}};
    for(int c = 0; c < 4; ++c)
        EXPECT_TRUE(turned[c].equals(expected[c], 1e-12)) << "column " << c;
    Matrix4d const straight = billboard_matrix(toEye, view_of(square_view()));
    EXPECT_TRUE(straight[2].equals(Vec4d(0, 0, 1, 0), 1e-12));
}
// Without perspective a unit of the view takes 50 pixels, before the eye at a distance of 10 it
// takes 25.
TEST(FacingMatrices, AConstantSizeIsOnePixelAUnit)
{
    Matrix4d toEye;
    toEye.setScale(7);
    toEye[3] = Vec4d(0.0, 0.0, -10.0, 1.0);
    EXPECT_NEAR(pixel_sized_matrix(toEye, view_of(square_view()))[0][0], 1.0 / 50, 1e-12);
    EXPECT_NEAR(pixel_sized_matrix(toEye, view_of(square_perspective()))[0][0], 1.0 / 25, 1e-9);
}
TEST(FacingMatrices, AMarkerOfDistanceDMeasuresHalfOfDPixels)
{
    for(ViewSetup const &setup : {square_view(), square_perspective()})
    {
        SlowView const view = view_of(setup);
        Matrix4d own;
        own.setTranslate(0, 0, -5); // 10 before the eye
        Matrix4d const placed = constant_sized_matrix(view.viewing, own, 30, view);
        Vec4d const clip = view.projection * (placed * Vec4d(1.0, 0.0, 0.0, 1.0));
        EXPECT_NEAR(clip[0] / clip[3] * view.width / 2, 15, 1e-6);
    }
}
} // namespace
} // namespace OSG::Test
