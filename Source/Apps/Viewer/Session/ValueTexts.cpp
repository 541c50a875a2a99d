#include "ValueTexts.h"

#include <cstdio>

#include "OSGFinite.h"
#include "OSGMeasure.h"

namespace Viewer
{
namespace
{
std::string text_of_angle(OSG::Pnt3f const &a, OSG::Pnt3f const &middle, OSG::Pnt3f const &b)
{
    auto const degrees = OSG::angle_between(a, middle, b);
    return degrees ? text_of_number(*degrees) + " deg" : "none";
}

OSG::Pnt3f middle_of(OSG::Pnt3f const &a, OSG::Pnt3f const &b)
{
    return {a[0] / 2 + b[0] / 2, a[1] / 2 + b[1] / 2, a[2] / 2 + b[2] / 2};
}
} // namespace

std::string text_of_number(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

std::string text_of_tuple(OSG::Pnt3f const &point)
{
    return text_of_number(point[0]) + ", " + text_of_number(point[1]) + ", " +
           text_of_number(point[2]);
}

std::string text_of_tuple(OSG::Vec3f const &vector)
{
    return text_of_tuple(OSG::Pnt3f(vector[0], vector[1], vector[2]));
}

std::vector<NamedValue> values_of_measurement(std::vector<OSG::Pnt3f> const &points)
{
    if(points.size() == 2)
        return {{"Distance", text_of_number(OSG::distance_between(points[0], points[1]))},
                {"Along x", text_of_number(double(points[1][0]) - points[0][0])},
                {"Along y", text_of_number(double(points[1][1]) - points[0][1])},
                {"Along z", text_of_number(double(points[1][2]) - points[0][2])}};
    if(points.size() == 3)
        return {{"Angle", text_of_angle(points[0], points[1], points[2])},
                {"First side", text_of_number(OSG::distance_between(points[0], points[1]))},
                {"Second side", text_of_number(OSG::distance_between(points[1], points[2]))}};
    return {};
}

std::vector<MeasureLabel> labels_of_measurement(std::vector<OSG::Pnt3f> const &points)
{
    for(OSG::Pnt3f const &point : points)
        if(!OSG::is_finite(point))
            return {};
    if(points.size() == 3)
        return {{points[1], text_of_angle(points[0], points[1], points[2])}};
    if(points.size() == 2)
        return {{middle_of(points[0], points[1]),
                 text_of_number(OSG::distance_between(points[0], points[1]))}};
    return {};
}
} // namespace Viewer
