#include "PictureOptions.h"

#include <cmath>

#include "OSGFileSuffix.h"
#include "OSGMatrixUtility.h"
#include "VolumeOptions.h"

namespace Tool
{
namespace
{
[[noreturn]] void refuse(std::string const &option, std::string const &reason)
{
    throw CLI::ValidationError(option, reason);
}

Pair size_of(std::string const &text)
{
    Pair size;
    if(!parse_pair(text, 'x', size) || size.first < 1 || size.second < 1)
        refuse("--size", text + " is not WxH");
    return size;
}

OSG::Color3f background_of(std::string const &text)
{
    float values[3];
    if(!parse_numbers(text, values))
        refuse("--background", text + " is not R,G,B");
    for(float const value : values)
        if(!(value >= 0 && value <= 1))
            refuse("--background", "numbers from 0 to 1 are required");
    return OSG::Color3f(values[0], values[1], values[2]);
}

OSG::Matrix camera_of(PictureOptions const &options)
{
    OSG::Matrix camera;
    OSG::Pnt3f const from = point_of("--from", options.from);
    OSG::Pnt3f const at = point_of("--at", options.at);
    if(OSG::MatrixLookAt(camera, from, at, point_of("--up", options.up).subZero()))
        refuse("--from", "--from and --at coincide, or --up points along the view");
    return camera;
}

void check_lens(PictureOptions const &options)
{
    if(!(options.fieldOfView > 0 && options.fieldOfView < 180))
        refuse("--fov", "an angle between 0 and 180 is required");
    if(!options.orthographicHeight)
        return;
    if(!(*options.orthographicHeight > 0) || !std::isfinite(*options.orthographicHeight))
        refuse("--ortho", "a number above 0 is required");
}
} // namespace

void add_picture_options(CLI::App &command, PictureOptions &options)
{
    command.add_option("-o", options.target, "PNG file to write")
        ->required()
        ->check([](std::string const &target)
                { return OSG::file_suffix(target) == "png" ? "" : target + " is not .png"; });
    command.add_option("--size", options.size, "Size of the picture in pixels, WxH")
        ->capture_default_str();
    auto *const from = command.add_option("--from", options.from, "Eye of the view, x,y,z");
    auto *const at =
        command.add_option("--at", options.at, "Point in the middle of the view, x,y,z");
    auto *const up =
        command.add_option("--up", options.up, "Direction that is upwards in the view, x,y,z")
            ->capture_default_str();
    auto *const angle =
        command.add_option("--fov", options.fieldOfView, "Vertical angle of the view in degrees")
            ->capture_default_str();
    from->needs(at);
    for(auto *part : {at, up, angle})
        part->needs(from);
    command.add_flag("--fit", options.fits, "Show the whole scene, the default without --from")
        ->excludes(from);
    command.add_option("--ortho", options.orthographicHeight,
                       "No perspective: units of the scene from bottom to top");
    command.add_option("--background", options.background, "Colour, R,G,B from 0 to 1")
        ->capture_default_str();
}

PictureChoice::PictureChoice(PictureOptions const &options)
    : _size(size_of(options.size))
    , _background(background_of(options.background))
    , _fits(options.from.empty())
{
    check_lens(options);
    _view.fieldOfView = options.fieldOfView;
    _view.orthographicHeight = options.orthographicHeight;
    if(!_fits)
        _view.camera = camera_of(options);
}

OSG::PictureView PictureChoice::inScene(OSG::SceneBounds const &bounds) const
{
    OSG::PictureView view = _view;
    if(_fits)
    {
        view = OSG::fitted_view(bounds, width(), height());
        view.orthographicHeight = _view.orthographicHeight;
    }
    else
        view.depths = OSG::picture_depths(bounds, view.camera);
    return view;
}
} // namespace Tool
