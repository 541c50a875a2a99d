#pragma once

/// \file
/// Numbers as panels show and copy them.

#include <string>
#include <vector>

#include "OSGVector.h"

namespace Viewer
{
/// With six digits.
std::string text_of_number(double number);
std::string text_of_tuple(OSG::Pnt3f const &point);
std::string text_of_tuple(OSG::Vec3f const &vector);

struct NamedValue
{
    char const *name;
    std::string value;
};
/// The numbers of a measurement: of two points their distance and how far one is from the other
/// along each axis, of three the angle at the second one and the lengths of its sides. Nothing for
/// another number of points.
std::vector<NamedValue> values_of_measurement(std::vector<OSG::Pnt3f> const &points);

/// A text for the view, and its place in the scene.
struct MeasureLabel
{
    OSG::Pnt3f place;
    std::string text;
};
/// The distance in the middle of two points, the angle at the corner of three. None where a point
/// is not finite.
std::vector<MeasureLabel> labels_of_measurement(std::vector<OSG::Pnt3f> const &points);
} // namespace Viewer
