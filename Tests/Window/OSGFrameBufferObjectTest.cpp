#include "OSGFrameBufferObject.h"

#include "DrawnView.h"
#include "LogCapture.h"
#include "OSGImage.h"

namespace OSG::Test
{
namespace
{
/// A view into a picture in memory.
class TargetedViewport : public Viewport
{
  public:
    static UnrecordedRefPtr<TargetedViewport> make(FrameBufferObject *target)
    {
        UnrecordedRefPtr<TargetedViewport> port(TransitPtr<TargetedViewport>(new TargetedViewport));
        port->_target = target;
        return port;
    }
    FrameBufferObject *getTarget() const override { return _target; }

  private:
    FrameBufferObject *_target = nullptr;
};

struct TargetedDrawing : ViewportDrawing
{
    void SetUp() override
    {
        ViewportDrawing::SetUp();
        target->setWidth(20);
        target->setHeight(10);
        furnish(targeted);
        targeted->setRight(19);
        targeted->setTop(9);
    }

    static Rgb pixelOf(Image const &image, UInt32 x, UInt32 y)
    {
        UInt8 const *const at = image.getPixel().data() + (y * image.getWidth() + x) * 3;
        return {at[0], at[1], at[2]};
    }

    UnrecordedRefPtr<FrameBufferObject> target{FrameBufferObject::create()};
    UnrecordedRefPtr<TargetedViewport> const targeted = TargetedViewport::make(target);
    UnrecordedRefPtr<Image> const image{Image::create()};
};

TEST_F(TargetedDrawing, APictureInMemoryIsDrawnIntoInsteadOfTheWindow)
{
    targeted->render(action);
    EXPECT_EQ(pixel(), blackPixel);
    ASSERT_TRUE(target->read(*image));
    EXPECT_EQ(image->getWidth(), 20u);
    EXPECT_EQ(image->getHeight(), 10u);
    EXPECT_EQ(pixelOf(*image, 10, 5), redPixel);
    EXPECT_EQ(pixelOf(*image, 7, 5), redPixel);
    EXPECT_EQ(pixelOf(*image, 6, 5), bluePixel);
    EXPECT_EQ(pixelOf(*image, 10, 1), bluePixel);
    EXPECT_EQ(pixel(), blackPixel) << "reading puts the host's frame buffer back";
}

TEST_F(TargetedDrawing, ItFollowsItsSizeAndIsFreedWithItsContainer)
{
    targeted->render(action);
    std::size_t const before = GLObjectStore::current().countObjects();
    target->setWidth(40);
    targeted->setRight(39);
    targeted->render(action);
    ASSERT_TRUE(target->read(*image));
    EXPECT_EQ(pixelOf(*image, 20, 5), redPixel);
    EXPECT_EQ(pixelOf(*image, 39, 5), bluePixel);
    EXPECT_EQ(GLObjectStore::current().countObjects(), before);
    target = nullptr;
    EXPECT_EQ(GLObjectStore::current().countObjects(), before - 3);
}

TEST_F(TargetedDrawing, WithoutPixelsNothingIsDrawnAndTheWarningSaysSo)
{
    target->setWidth(0);
    LogCapture const log;
    targeted->render(action);
    EXPECT_FALSE(target->read(*image));
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{
                  "Viewport::render: the frame buffer has no pixels, nothing is drawn\n",
                  "FrameBufferObject::read: the frame buffer has no pixels\n"}));
    EXPECT_EQ(pixel(), blackPixel);
}

TEST_F(TargetedDrawing, ASizeBeyondTheDriversIsRefused)
{
    target->setWidth(65535);
    LogCapture const log;
    targeted->render(action);
    EXPECT_EQ(log.texts().size(), 1u);
    EXPECT_EQ(pixel(), blackPixel);
}
} // namespace
} // namespace OSG::Test
