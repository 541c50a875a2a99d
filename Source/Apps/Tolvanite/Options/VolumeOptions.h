#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "OSGFrustum.h"
#include "OSGPickVolume.h"

namespace Tool
{
/// The options for the volume to select in: corners, a box, or a part of a view.
struct VolumeOptions
{
    std::vector<std::string> corners;
    std::vector<std::string> box;
    std::string from, at, up, size;
    float fieldOfView = 0;
    std::string pixel, rectangle;
    float radius = OSG::DefaultPickRadius;
};

void add_volume_options(CLI::App &command, VolumeOptions &options);

/// Makes the volume of its options. Raises CLI::ParseError if they are wrong.
class VolumeChoice
{
  public:
    explicit VolumeChoice(VolumeOptions const &options);

    /// The volume for a scene with these bounds. Nothing if no part of the bounds is in the view.
    std::optional<OSG::Frustum> inScene(OSG::BoxVolume const &bounds) const;
    /// The eye of the view. Nothing for a volume without a view.
    std::optional<OSG::Pnt3f> eye() const;

  private:
    void takeView(VolumeOptions const &options);

    std::optional<OSG::Frustum> _solid; // set for a volume without a view
    OSG::PickView _view{};
    OSG::PixelArea _area{};
    float _radius = OSG::DefaultPickRadius;
};
} // namespace Tool
