#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "OSGPickRegion.h"
#include "OSGSelectionFunctor.h"

namespace Tool
{
/// The point that the text of an option stands for. Raises CLI::ValidationError where it is not
/// x,y,z.
OSG::Pnt3f point_of(char const *option, std::string const &text);

/// The volume to select in as the command line has it: corners, a box, or a part of a view.
struct VolumeOptions
{
    std::vector<std::string> corners;
    std::vector<std::string> box;
    std::string from, at, up, size;
    std::optional<float> fieldOfView, orthographicHeight;
    std::string pixel, rectangle;
    std::optional<std::string> lasso;
    std::optional<float> radius;
};

/// Adds the options of the volume. --radius stands for itself, the others exclude `queries`.
void add_volume_options(CLI::App &command, VolumeOptions &options, CLI::Option *queries);

/// The same in numbers. What was not given has no value.
struct VolumeValues
{
    std::optional<std::array<OSG::Pnt3f, 8>> corners;
    std::optional<std::array<OSG::Pnt3f, 2>> box;
    std::optional<OSG::Pnt3f> from, at, up;
    std::optional<float> fieldOfView, orthographicHeight;
    std::optional<std::array<double, 2>> size;
    std::optional<std::array<float, 2>> pixel;
    std::optional<std::array<float, 4>> rectangle;
    std::optional<std::vector<float>> lasso; // x and y of each point
    std::optional<float> radius;
};

/// Raises CLI::ParseError if a text is not of the form that its option asks for.
VolumeValues values_of(VolumeOptions const &options);

/// Raises CLI::ParseError if the radius is no length.
void check_radius(float radius);

/// Makes the volume of its values.
class VolumeChoice
{
  public:
    /// `radius` serves where the values have none. Raises CLI::ParseError if they are wrong.
    explicit VolumeChoice(VolumeValues const &values, float radius = OSG::DefaultPickRadius);

    /// Raises CLI::ParseError if the volume has no such side to count distances from.
    void checkPlane(OSG::SelectionFunctor::PlaneType plane) const;
    /// The volume for a scene with these bounds. Nothing if no part of the bounds is in the view.
    std::optional<OSG::PickRegion> inScene(OSG::SceneBounds const &bounds) const;
    /// The eye of the view. Nothing for a volume without a view.
    std::optional<OSG::Pnt3f> eye() const;

  private:
    void takeView(VolumeValues const &values, float radius);
    void takeArea(VolumeValues const &values);

    std::optional<OSG::Frustum> _solid; // set for a volume without a view
    OSG::WindowView _view{};
    OSG::PixelArea _area{};
    std::optional<std::vector<OSG::Pnt2f>> _lasso; // in place of the area
    float _radius = OSG::DefaultPickRadius;
};
} // namespace Tool
