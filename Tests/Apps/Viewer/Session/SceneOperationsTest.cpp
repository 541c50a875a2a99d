#include "SceneOperations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGGraphOpFactory.h"
#include "OSGNamedEngine.h"
#include "OSGWalkConsole.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
/// A scene of two nodes without names, read from a file.
struct SceneOperationsTest : testing::Test
{
    void read()
    {
        document.open(folder.write("part.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"));
        while(!document.update(0))
            ASSERT_TRUE(document.isReading());
        view.setScene(document.getScene());
    }

    TempFolder folder;
    SceneView view;
    Viewer::Picking picking{view};
    SceneDocument document;
    Viewer::SceneOperations operations{document, picking};
};

TEST_F(SceneOperationsTest, ARunIsAccountedForAndUndone)
{
    read();
    picking.selectPath(NodePath(document.getScene()), 0);
    EXPECT_EQ(operations.run("Mrg", ""), "done: Mrg");
    ASSERT_THAT(operations.getAccounts(), SizeIs(1));
    EXPECT_EQ(operations.getAccounts()[0].name, "Mrg");
    EXPECT_TRUE(picking.getSelection().isEmpty());
    EXPECT_EQ(operations.undo(), "undone: Mrg");
    EXPECT_THAT(operations.getAccounts(), IsEmpty());
    EXPECT_EQ(operations.undo(), "nothing to undo");
}

TEST_F(SceneOperationsTest, WithoutASceneNothingRuns)
{
    EXPECT_EQ(operations.run("Mrg", ""), "there is no scene");
    EXPECT_THAT(operations.getAccounts(), IsEmpty());
}

TEST_F(SceneOperationsTest, AnOperationThatIsNotRegisteredDoesNotRun)
{
    read();
    EXPECT_EQ(operations.run("Melt", ""), "there is no operation Melt");
    EXPECT_FALSE(document.canUndo());
}

TEST_F(SceneOperationsTest, OperationsBeforeASaveAreNotThoseOfTheNextOne)
{
    read();
    operations.run("Mrg", "");
    operations.noteSaved();
    EXPECT_THAT(operations.getUnsaved(), IsEmpty());
    operations.run("GrpMerge", "");
    ASSERT_THAT(operations.getUnsaved(), SizeIs(1));
    EXPECT_EQ(operations.getUnsaved()[0].name, "GrpMerge");
    EXPECT_THAT(operations.getAccounts(), SizeIs(2));
    operations.undo();
    operations.undo();
    EXPECT_THAT(operations.getUnsaved(), IsEmpty());
    operations.run("GrpMerge", "");
    EXPECT_THAT(operations.getUnsaved(), SizeIs(1));
}

TEST_F(SceneOperationsTest, MarksMadeAfterAnOperationStayWhenItIsUndone)
{
    read();
    UnrecordedRefPtr<NavigatorEngine> const engine(make_engine("cad"));
    view.setEngine(engine);
    WalkConsole console(view.getNavigator());
    console.setScene(document.getScene());
    ASSERT_TRUE(console.addMark("before"));
    operations.run("Mrg", "");
    view.setView({{5, 1, 6}, {1, 1, 0}, {0, 1, 0}, 30, 64, 48});
    ASSERT_TRUE(console.addMark("after"));
    operations.undo();
    EXPECT_NE(console.getScene(), document.getScene());
    console.setScene(document.getScene());
    EXPECT_THAT(console.getMarkLabels(), testing::ElementsAre("before", "after"));
}

TEST_F(SceneOperationsTest, ForgettingDropsTheAccounts)
{
    read();
    operations.run("Mrg", "");
    operations.forget();
    EXPECT_THAT(operations.getAccounts(), IsEmpty());
}
} // namespace
