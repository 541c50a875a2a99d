// A table of appearances shows what an edit of the scene would show.

#include "DressedScene.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGRenderAction.h"
#include "OSGThread.h"
#include "RandomMaterial.h"
#include "RandomScenes.h"
#include "RenderedPixels.h"

namespace OSG::Test
{
namespace
{
constexpr std::uint64_t Scenes = 150;

RandomMaterials materials_of(std::uint64_t seed)
{
    constexpr RandomMaterials All[] = {RandomMaterials::Simple, RandomMaterials::Transparent,
                                       RandomMaterials::Textured, RandomMaterials::Chunks};
    return All[seed % 4];
}

void fill(AppearanceTable &table, Node *root, std::uint64_t seed)
{
    RandomNumbers random(seed);
    std::vector<NodePath> const places = places_in(root);
    auto const place = [&]() -> NodePath const &
    { return places[random.below(static_cast<UInt32>(places.size()))]; };
    for(UInt32 i = random.below(5); i > 0; --i)
        table.set(place(), random_material(random, materials_of(seed)));
    for(UInt32 i = random.below(3); i > 0; --i)
        table.hide(place());
    if(random.below(3) == 0)
        table.isolate({place(), place(), place()});
}

struct Drawn
{
    DrawShape const *shape;
    Matrix toEye;
    bool isMirrored;
    DrawState const *state;

    bool operator==(Drawn const &other) const
    {
        return shape == other.shape && toEye == other.toEye && isMirrored == other.isMirrored &&
               *state == *other.state;
    }
};

std::vector<Drawn> drawn(DrawList const &list, std::vector<DrawItem> const &items)
{
    std::vector<Drawn> result;
    for(DrawItem const &item : items)
        result.push_back({list.shapes[item.shape], list.spaces[item.space].toEye,
                          list.spaces[item.space].isMirrored, list.states[item.state]});
    return result;
}

bool is_permutation(std::vector<Drawn> const &a, std::vector<Drawn> const &b)
{
    return a.size() == b.size() && std::is_permutation(a.begin(), a.end(), b.begin());
}

// Each state is entered once: the materials of these scenes have the same key.
bool has_states_together(std::vector<DrawItem> const &items)
{
    std::set<UInt32> done;
    for(std::size_t i = 0; i < items.size(); ++i)
    {
        bool const isNew = i == 0 || items[i].state != items[i - 1].state;
        if(isNew && !done.insert(items[i].state).second)
            return false;
    }
    return true;
}

UnrecordedRefPtr<RenderAction> collected(Node *root, ViewSetup const &setup,
                                         AppearanceTable const &table)
{
    UnrecordedRefPtr<RenderAction> action(RenderAction::create());
    action->setHeadlight(true);
    SlowView const view = view_of(setup);
    Matrix4d toWorld;
    toWorld.invertFrom(view.viewing);
    action->editDrawEnv().setView(
        Matrix(toWorld), view.viewing, Matrix(view.projection),
        {0, static_cast<Int32>(setup.width) - 1, 0, static_cast<Int32>(setup.height) - 1});
    action->editAppearances() = table;
    action->apply(root);
    return action;
}

TEST(DressedScenes, ATableShowsWhatAnEditedCopyShows)
{
    LogCapture log; // of indices out of range
    UInt32 changed = 0;
    for(std::uint64_t seed = 0; seed < Scenes; ++seed)
    {
        RandomScene const scene = random_scene(seed, materials_of(seed));
        AppearanceTable table;
        fill(table, scene.root, seed);
        auto const plain = collected(scene.root, scene.view, {});
        auto const dressed = collected(scene.root, scene.view, table);
        auto const copy = collected(dressed_copy(scene.root, table), scene.view, {});
        DrawList const &list = dressed->getDrawList();
        DrawList const &expected = copy->getDrawList();
        EXPECT_TRUE(is_permutation(drawn(list, list.opaque), drawn(expected, expected.opaque)))
            << "seed " << seed;
        EXPECT_TRUE(drawn(list, list.transparent) == drawn(expected, expected.transparent))
            << "seed " << seed;
        EXPECT_TRUE(has_states_together(list.opaque)) << "seed " << seed;
        DrawList const &before = plain->getDrawList();
        changed += drawn(list, list.opaque) == drawn(before, before.opaque) ? 0 : 1;
    }
    EXPECT_GT(changed, Scenes / 3);
}

TEST(DressedScenes, ATableIsNoEdit)
{
    LogCapture log;
    RandomScene const scene = random_scene(3, RandomMaterials::Chunks);
    AppearanceTable table;
    fill(table, scene.root, 3);
    table.hide(NodePath(scene.root->getChild(0)));
    scene.root->updateVolume();
    ChangeList &changes = *Thread::getCurrentChangeList();
    changes.commitChanges();
    auto const first = collected(scene.root, scene.view, {});
    changes.commitChanges();
    auto const action = collected(scene.root, scene.view, table);
    UInt32 open = 0;
    changes.forEachOpen([&open](FieldContainer *) { ++open; });
    EXPECT_EQ(open, 0u);
    action->editAppearances().clear();
    action->apply(scene.root);
    DrawList const &list = action->getDrawList();
    DrawList const &expected = first->getDrawList();
    EXPECT_TRUE(drawn(list, list.opaque) == drawn(expected, expected.opaque));
    EXPECT_TRUE(drawn(list, list.transparent) == drawn(expected, expected.transparent));
}

TEST(DressedScenes, TheirPixelsAreThoseOfTheSlowRasterizerOnAnEditedCopy)
{
    if(!missing_renderer().empty())
        GTEST_SKIP() << missing_renderer();
    LogCapture log;
    UInt32 covered = 0;
    for(std::uint64_t seed = 0; seed < 24; ++seed)
    {
        RandomScene const scene = random_scene(seed, materials_of(seed));
        AppearanceTable table;
        fill(table, scene.root, seed);
        PictureComparison const comparison =
            compare(slow_picture(dressed_copy(scene.root, table), view_of(scene.view)),
                    rendered_pixels(scene.root, scene.view, table));
        EXPECT_TRUE(comparison.isEqual())
            << "seed " << seed << ": " << testing::PrintToString(comparison);
        covered += comparison.covered;
    }
    EXPECT_GT(covered, 24u * 200 * 150 / 40);
}
} // namespace
} // namespace OSG::Test
