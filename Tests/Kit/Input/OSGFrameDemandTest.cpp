#include "OSGFrameDemand.h"

#include <gtest/gtest.h>

#include "NavigatedView.h"
#include "OSGChangeList.h"
#include "OSGSimpleMaterial.h"
#include "OSGThread.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

struct FrameDemandTest : testing::Test
{
    FrameDemandTest()
    {
        commit();
        demand.take(*view.viewport);
    }
    /// Exactly one frame is drawn.
    void expectOne()
    {
        commit();
        EXPECT_TRUE(demand.take(*view.viewport));
        EXPECT_FALSE(demand.take(*view.viewport));
    }
    Transform *beaconCore() { return dynamic_cast<Transform *>(view.beacon->getCore()); }

    NavigatedView view;
    FrameDemand demand;
};

TEST_F(FrameDemandTest, TheFirstFrameIsDrawnAndAnIdleHostDrawsNoOther)
{
    FrameDemand other;
    EXPECT_TRUE(other.take(*view.viewport));
    for(int i = 0; i < 10; ++i)
    {
        commit();
        EXPECT_FALSE(other.take(*view.viewport));
    }
}

TEST_F(FrameDemandTest, ARequestIsOneFrame)
{
    demand.request();
    demand.request();
    expectOne();
}

TEST_F(FrameDemandTest, TheCameraIsWatched)
{
    beaconCore()->setMatrix(translation(1, 2, 3));
    expectOne();
    dynamic_cast<PerspectiveCamera *>(view.camera.get())->setFov(1);
    expectOne();
    view.camera->setNear(0.2f);
    expectOne();
    view.setCamera(make_orthographic(10, 0.1f, 1000).get());
    expectOne();
}

TEST_F(FrameDemandTest, ABeaconThatIsMovedWithoutACommitIsSeen)
{
    beaconCore()->setMatrix(translation(1, 2, 3));
    EXPECT_TRUE(demand.take(*view.viewport));
}

TEST_F(FrameDemandTest, TheSizeAndTheSceneAreWatched)
{
    view.window->setSize(641, 480);
    expectOne();
    NodePtr const root = make_group();
    view.viewport->setRoot(root);
    expectOne();
    root->addChild(make_group());
    expectOne();
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    commit();
    demand.take(*view.viewport);
    material->setShininess(3);
    expectOne();
}

TEST_F(FrameDemandTest, ASelectionThatChangesIsAFrame)
{
    SelectionSet selection;
    selection.addObserver(&demand);
    SelectionSet::Items const items = {{NodePath(view.root)}};
    selection.add(items);
    expectOne();
    selection.add(items);
    EXPECT_FALSE(demand.take(*view.viewport));
    selection.clear();
    expectOne();
    selection.removeObserver(&demand);
}

TEST_F(FrameDemandTest, AViewportWithoutACameraIsDrawnOnce)
{
    ViewportPtr const bare(Viewport::create());
    commit();
    FrameDemand other;
    EXPECT_TRUE(other.take(*bare));
    EXPECT_FALSE(other.take(*bare));
}
} // namespace
