#include "OSGViewport.h"

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "LogCapture.h"
#include "OSGRenderActionBase.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// Counts the groups that its walk enters.
class CountingAction : public RenderActionBase
{
  public:
    static UnrecordedRefPtr<CountingAction> create()
    {
        return UnrecordedRefPtr<CountingAction>(TransitPtr<CountingAction>(new CountingAction));
    }

    int groups = 0;

  protected:
    CountingAction()
    {
        registerEnterFunction(Group::getClassType(),
                              [this](NodeCore *, Action *)
                              {
                                  ++groups;
                                  return Continue;
                              });
    }
};

struct FullViewport : ::testing::Test
{
    FullViewport()
    {
        viewport->setCamera(camera);
        viewport->setBackground(background);
        viewport->setRoot(root);
    }

    ViewportPtr const viewport{Viewport::create()};
    CameraPtr<PerspectiveCamera> const camera{PerspectiveCamera::create()};
    UnrecordedRefPtr<Background> const background{Background::create()};
    NodePtr const root = make_group({make_group()});
    UnrecordedRefPtr<CountingAction> const action = CountingAction::create();
};

TEST_F(FullViewport, HandsItsSceneToTheAction)
{
    LogCapture const log;
    viewport->render(action);
    EXPECT_EQ(action->groups, 2);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(FullViewport, ShowsWhatItsMaskLetsThrough)
{
    root->getChild(0)->setTravMask(1);
    viewport->setTravMask(2);
    viewport->render(action);
    EXPECT_EQ(action->groups, 1);
}

TEST_F(FullViewport, SaysWhatIsMissingCameraFirst)
{
    LogCapture log;
    viewport->setRoot(nullptr);
    viewport->render(action);
    viewport->setBackground(nullptr);
    viewport->render(action);
    viewport->setCamera(nullptr);
    viewport->render(action);
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"Viewport::render: no root!\n",
                                                     "Viewport::render: no background!\n",
                                                     "Viewport::render: no camera!\n"}));
    EXPECT_EQ(action->groups, 0);
}

TEST_F(FullViewport, DoesNothingWithoutAnAction)
{
    LogCapture const log;
    viewport->render(nullptr);
    EXPECT_TRUE(log.texts().empty());
}
} // namespace
