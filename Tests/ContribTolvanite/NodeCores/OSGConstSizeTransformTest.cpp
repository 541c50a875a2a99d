#include "OSGConstSizeTransform.h"

#include <gtest/gtest.h>

#include "OSGFieldHandle.h"
#include "OSGNode.h"
#include "SceneBuilders.h"

namespace OSG
{
namespace
{
using CorePtr = UnrecordedRefPtr<ConstSizeTransform>;

TEST(ConstSizeTransform, DistanceStartsAtOneAndTheRenderedMatrixAsTheIdentity)
{
    CorePtr const core(ConstSizeTransform::create());
    EXPECT_EQ(core->getDistance(), 1.f);
    Matrix matrix;
    core->accumulateMatrix(matrix);
    EXPECT_TRUE(matrix.equals(Matrix(), 0.f));
}

TEST(ConstSizeTransform, BeforeRenderingTheUsersMatrixIsNotAccumulated)
{
    CorePtr const core(ConstSizeTransform::create());
    Matrix moved;
    moved.setTranslate(1.f, 2.f, 3.f);
    core->setMatrix(moved);
    Matrix matrix;
    core->accumulateMatrix(matrix);
    EXPECT_TRUE(matrix.equals(Matrix(), 0.f));
    EXPECT_TRUE(core->getMatrix().equals(moved, 0.f));
}

TEST(ConstSizeTransform, ItsVolumeIsInfiniteWhateverTheSubtreeHolds)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    node->setCore(CorePtr(ConstSizeTransform::create()));
    node->updateVolume();
    EXPECT_TRUE(node->getVolume().isInfinite());
}
} // namespace
} // namespace OSG
