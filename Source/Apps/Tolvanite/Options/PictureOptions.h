#pragma once

#include <array>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "OSGColor.h"
#include "OSGPictureView.h"
#include "OSGSceneBounds.h"

namespace Tool
{
/// The picture of a scene as the command line has it.
struct PictureOptions
{
    std::string target; ///< the file
    std::string size = "1280x720";
    std::string from, at;
    std::string up = "0,1,0";
    float fieldOfView = OSG::DefaultFieldOfView;
    std::optional<float> orthographicHeight;
    bool fits = false; ///< --fit, which is also meant without --from
    std::string background = "1,1,1";
};

/// Adds -o and the options of the view.
void add_picture_options(CLI::App &command, PictureOptions &options);

/// The same in numbers, checked.
class PictureChoice
{
  public:
    /// Raises CLI::ParseError if a text is not of the form that its option asks for, or if the view
    /// is none.
    explicit PictureChoice(PictureOptions const &options);

    OSG::UInt32 width() const { return static_cast<OSG::UInt32>(_size.first); }
    OSG::UInt32 height() const { return static_cast<OSG::UInt32>(_size.second); }
    OSG::Color3f const &background() const { return _background; }
    /// The view of a scene with these bounds.
    OSG::PictureView inScene(OSG::SceneBounds const &bounds) const;

  private:
    Pair _size;
    OSG::Color3f _background;
    OSG::PictureView _view;
    bool _fits = true; ///< the camera follows from the scene
};
} // namespace Tool
