#include "ValueTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace OSG;
using namespace Viewer;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
std::vector<std::string> lines(std::vector<NamedValue> const &values)
{
    std::vector<std::string> texts;
    for(NamedValue const &row : values)
        texts.push_back(std::string(row.name) + ' ' + row.value);
    return texts;
}

TEST(ValueTexts, NumbersHaveSixDigits)
{
    EXPECT_EQ(text_of_number(1234.5678), "1234.57");
    EXPECT_EQ(text_of_number(-0.000012345678), "-1.23457e-05");
    EXPECT_EQ(text_of_tuple(Pnt3f(1, -2.5f, 0)), "1, -2.5, 0");
    EXPECT_EQ(text_of_tuple(Vec3f(0, 0, 1)), "0, 0, 1");
}

TEST(ValueTexts, TwoPointsHaveADistanceAndAWayAlongEachAxis)
{
    EXPECT_THAT(lines(values_of_measurement({{1, 1, 1}, {4, 1, -3}})),
                ElementsAre("Distance 5", "Along x 3", "Along y 0", "Along z -4"));
}

TEST(ValueTexts, ThreePointsHaveAnAngleAtTheSecondOne)
{
    EXPECT_THAT(lines(values_of_measurement({{2, 0, 0}, {0, 0, 0}, {0, 3, 0}})),
                ElementsAre("Angle 90 deg", "First side 2", "Second side 3"));
    EXPECT_THAT(lines(values_of_measurement({{2, 0, 0}, {2, 0, 0}, {0, 3, 0}})).front(),
                "Angle none");
}

TEST(ValueTexts, OtherNumbersOfPointsAreNoMeasurement)
{
    EXPECT_THAT(values_of_measurement({}), IsEmpty());
    EXPECT_THAT(values_of_measurement({{1, 1, 1}}), IsEmpty());
    EXPECT_THAT(labels_of_measurement({{1, 1, 1}}), IsEmpty());
}

TEST(ValueTexts, ALabelStandsInTheMiddleOfALineAndAtTheCornerOfAnAngle)
{
    auto const line = labels_of_measurement({{0, 0, 0}, {0, 6, 8}});
    ASSERT_EQ(line.size(), 1u);
    EXPECT_EQ(line[0].place, Pnt3f(0, 3, 4));
    EXPECT_EQ(line[0].text, "10");
    auto const angle = labels_of_measurement({{1, 0, 0}, {0, 0, 0}, {1, 1, 0}});
    ASSERT_EQ(angle.size(), 1u);
    EXPECT_EQ(angle[0].place, Pnt3f(0, 0, 0));
    EXPECT_EQ(angle[0].text, "45 deg");
}

TEST(ValueTexts, PointsThatAreNotFiniteHaveNoLabel)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(labels_of_measurement({{0, 0, 0}, {nan, 0, 0}}), IsEmpty());
}
} // namespace
