#include "OSGSelectionHighlight.h"

#include <memory>

#include <gtest/gtest.h>

#include "OSGSimpleMaterial.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
struct SelectionHighlightTest : testing::Test
{
    NodePtr a = make_group();
    NodePtr b = make_group();
    NodePtr root = make_group({a, b});
    UnrecordedRefPtr<SimpleMaterial> orange{SimpleMaterial::create()};
    UnrecordedRefPtr<SimpleMaterial> other{SimpleMaterial::create()};
    SelectionSet set;
    AppearanceTable table;
};

TEST_F(SelectionHighlightTest, ShowsWhatIsSelectedAndTakesItBack)
{
    set.add({{NodePath(a)}});
    auto highlight = std::make_unique<SelectionHighlight>(set, table, orange);
    EXPECT_EQ(table.getMaterial(NodePath(a)), orange);
    set.toggle({{NodePath(a)}, {NodePath(b)}});
    EXPECT_EQ(table.getMaterial(NodePath(a)), nullptr);
    EXPECT_EQ(table.getMaterial(NodePath(b)), orange);
    highlight.reset();
    EXPECT_TRUE(table.isEmpty());
    set.replace({{NodePath(a)}});
    EXPECT_TRUE(table.isEmpty());
}

TEST_F(SelectionHighlightTest, MaterialsOfOthersAreThereAgainAfterwards)
{
    table.set(NodePath(a), other);
    SelectionHighlight highlight(set, table, orange);
    set.add({{NodePath(a)}, {NodePath(b)}});
    EXPECT_EQ(table.getMaterial(NodePath(a)), orange);
    table.set(NodePath(b), other); // while it is selected
    set.clear();
    EXPECT_EQ(table.getMaterial(NodePath(a)), other);
    EXPECT_EQ(table.getMaterial(NodePath(b)), other);
}

TEST_F(SelectionHighlightTest, HidingStaysAsItIs)
{
    SelectionHighlight highlight(set, table, orange);
    table.hide(NodePath(a));
    set.add({{NodePath(a)}});
    set.clear();
    EXPECT_TRUE(table.isHidden(NodePath(a)));
}
} // namespace
} // namespace OSG::Test
