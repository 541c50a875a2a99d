#include "OSGSceneEdits.h"

#include <gtest/gtest.h>

#include "OSGChangeList.h"
#include "OSGSimpleMaterial.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

struct SceneEditsTest : testing::Test
{
    SceneEditsTest()
    {
        commit();
        everything.haveCome();
        nodes.haveCome();
    }
    NodePtr const child = make_transform(Matrix());
    NodePtr const root = make_group({child});
    SceneEdits everything{SceneEdits::Watched::Everything};
    SceneEdits nodes{SceneEdits::Watched::Nodes};
};

TEST_F(SceneEditsTest, TheFirstCallHearsOfSomething)
{
    SceneEdits edits(SceneEdits::Watched::Nodes);
    EXPECT_TRUE(edits.haveCome());
    EXPECT_FALSE(edits.haveCome());
}

TEST_F(SceneEditsTest, AnEditIsHeardOfOnce)
{
    dynamic_cast<Transform *>(child->getCore())->setMatrix(translation(1, 0, 0));
    commit();
    EXPECT_TRUE(nodes.haveCome());
    EXPECT_FALSE(nodes.haveCome());
    EXPECT_TRUE(everything.haveCome());
    EXPECT_FALSE(everything.haveCome());
    root->subChild(child);
    commit();
    EXPECT_TRUE(nodes.haveCome());
}

TEST_F(SceneEditsTest, AMaterialChangesWhatIsShownAndNoNode)
{
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    commit();
    everything.haveCome();
    nodes.haveCome();
    material->setShininess(7);
    commit();
    EXPECT_TRUE(everything.haveCome());
    EXPECT_FALSE(nodes.haveCome());
}

TEST_F(SceneEditsTest, NothingIsHeardOfNothing)
{
    commit();
    EXPECT_FALSE(nodes.haveCome());
    EXPECT_FALSE(everything.haveCome());
}
} // namespace
