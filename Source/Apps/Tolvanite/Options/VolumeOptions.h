#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "OSGFrustum.h"
#include "OSGPickVolume.h"

namespace Tool
{
/// What a command line says of the volume to select in: corners, a box, or a part of a view.
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

/// The volume as it was read from its options. What is wrong with them is raised as
/// CLI::ParseError.
class VolumeChoice
{
  public:
    explicit VolumeChoice(VolumeOptions const &options);

    /// The volume in a scene of these bounds; nothing where a view shows none of them.
    std::optional<OSG::Frustum> inScene(OSG::BoxVolume const &bounds) const;
    /// Where the view is taken from; nothing for a volume without a view.
    std::optional<OSG::Pnt3f> eye() const;

  private:
    void takeView(VolumeOptions const &options);

    std::optional<OSG::Frustum> _solid; // without a view
    OSG::PickView _view{};
    OSG::PixelArea _area{};
    float _radius = OSG::DefaultPickRadius;
};
} // namespace Tool
