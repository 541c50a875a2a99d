#include "VolumeOptions.h"

#include <cmath>

#include "Arguments.h"

namespace Tool
{
namespace
{
[[noreturn]] void refuse(std::string const &option, std::string const &reason)
{
    throw CLI::ValidationError(option, reason);
}

Triple triple(char const *option, std::string const &text)
{
    Triple result;
    if(!parse_triple(text, result))
        refuse(option, text + " is not x,y,z");
    return result;
}

OSG::Pnt3f point(char const *option, std::string const &text)
{
    Triple const read = triple(option, text);
    return OSG::Pnt3f(read.x, read.y, read.z);
}

OSG::Frustum frustum_of(std::vector<std::string> const &texts)
{
    OSG::Pnt3f corners[8];
    for(std::size_t i = 0; i < 8; ++i)
        corners[i] = point("--corners", texts[i]);
    return OSG::Frustum(corners);
}

// The near side of a box is the side with the larger z.
OSG::Frustum box_of(std::vector<std::string> const &texts)
{
    OSG::Pnt3f const min = point("--box", texts[0]);
    OSG::Pnt3f const max = point("--box", texts[1]);
    for(int axis = 0; axis < 3; ++axis)
    {
        if(min[axis] > max[axis])
            refuse("--box", texts[0] + " is not the smaller corner");
    }
    OSG::Pnt3f const corners[8] = {{min[0], min[1], max[2]}, {max[0], min[1], max[2]},
                                   {max[0], max[1], max[2]}, {min[0], max[1], max[2]},
                                   {min[0], min[1], min[2]}, {max[0], min[1], min[2]},
                                   {max[0], max[1], min[2]}, {min[0], max[1], min[2]}};
    return OSG::Frustum(corners);
}

OSG::PixelArea area_of(VolumeOptions const &options)
{
    if(!options.pixel.empty())
    {
        float at[2];
        if(!parse_numbers(options.pixel, at))
            refuse("--pixel", options.pixel + " is not X,Y");
        return OSG::pixel_square(at[0], at[1], options.radius);
    }
    float corners[4];
    if(!parse_numbers(options.rectangle, corners))
        refuse("--rect", options.rectangle + " is not X0,Y0,X1,Y1");
    return OSG::pixel_rectangle(corners[0], corners[1], corners[2], corners[3]);
}
} // namespace

void add_volume_options(CLI::App &command, VolumeOptions &options)
{
    auto *const corners = command.add_option("--corners", options.corners,
                                             "Eight points x,y,z: nlb nrb nrt nlt flb frb frt flt");
    corners->expected(8);
    auto *const box = command.add_option("--box", options.box,
                                         "Smallest and largest corner; +z is the near side");
    box->expected(2)->excludes(corners);

    auto *const from = command.add_option("--from", options.from, "Eye of a view");
    auto *const at = command.add_option("--at", options.at, "Point in the middle of the view");
    auto *const up =
        command.add_option("--up", options.up, "Direction that is upwards in the view");
    auto *const angle =
        command.add_option("--fov", options.fieldOfView, "Vertical angle of the view in degrees");
    auto *const size =
        command.add_option("--size", options.size, "Size of the view in pixels, WxH");
    auto *const pixel = command.add_option("--pixel", options.pixel, "Pixel X,Y to pick at");
    auto *const rectangle =
        command.add_option("--rect", options.rectangle, "Rectangle X0,Y0,X1,Y1 to pick in");
    auto *const radius =
        command.add_option("--radius", options.radius, "Pixels to add on each side of the pixel");
    from->excludes(corners)->excludes(box);
    for(auto *part : {at, up, angle, size})
    {
        from->needs(part);
        part->needs(from);
    }
    pixel->needs(from);
    rectangle->needs(from)->excludes(pixel);
    radius->needs(pixel)->capture_default_str();
}

VolumeChoice::VolumeChoice(VolumeOptions const &options)
{
    if(!options.corners.empty())
        _solid = frustum_of(options.corners);
    else if(!options.box.empty())
        _solid = box_of(options.box);
    else
        takeView(options);
}

void VolumeChoice::takeView(VolumeOptions const &options)
{
    if(options.from.empty())
        refuse("VOLUME", "--corners, --box or --from is required");
    if(options.pixel.empty() && options.rectangle.empty())
        refuse("VOLUME", "--from requires --pixel or --rect");
    Pair size;
    if(!parse_pair(options.size, 'x', size) || size.first < 1 || size.second < 1)
        refuse("--size", options.size + " is not WxH");
    if(!(options.fieldOfView > 0 && options.fieldOfView < 180))
        refuse("--fov", "an angle between 0 and 180 is required");
    Triple const up = triple("--up", options.up);
    _view = {point("--from", options.from),        point("--at", options.at),
             OSG::Vec3f(up.x, up.y, up.z),         options.fieldOfView,
             static_cast<OSG::UInt32>(size.first), static_cast<OSG::UInt32>(size.second)};
    if(!(options.radius > 0) || !std::isfinite(options.radius))
        refuse("--radius", "a number above 0 is required");
    _radius = options.radius;
    if(!OSG::is_view(_view))
        refuse("--from", "no view along --at with that --up");
    _area = area_of(options);
}

std::optional<OSG::Frustum> VolumeChoice::inScene(OSG::BoxVolume const &bounds) const
{
    return _solid ? _solid : OSG::pick_volume(_view, _area, bounds, _radius);
}

std::optional<OSG::Pnt3f> VolumeChoice::eye() const
{
    return _solid ? std::nullopt : std::optional(_view.from);
}
} // namespace Tool
