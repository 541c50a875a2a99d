#include "OSGLine.h"

#include <gmock/gmock.h>

#include "MathPrinters.h"

namespace
{
using namespace OSG;

TEST(Line, StartsAtTheOriginWithoutDirection)
{
    Line const line;
    EXPECT_EQ(line.getPosition(), Pnt3f());
    EXPECT_EQ(line.getDirection(), Vec3f());
}

TEST(Line, ConstructorAndSetValueNormaliseTheDirection)
{
    Line line(Pnt3f(1, 2, 3), Vec3f(0, 0, 4));
    EXPECT_EQ(line.getPosition(), Pnt3f(1, 2, 3));
    EXPECT_EQ(line.getDirection(), Vec3f(0, 0, 1));
    line.setValue(Pnt3f(), Vec3f(-2, 0, 0));
    EXPECT_EQ(line.getDirection(), Vec3f(-1, 0, 0));
    EXPECT_EQ(line.getPoint(3), Pnt3f(-3, 0, 0));
}

TEST(Line, ShortDirectionStays)
{
    EXPECT_EQ(Line(Pnt3f(), Vec3f(5e-7f, 0, 0)).getDirection(), Vec3f(5e-7f, 0, 0));
}
} // namespace
