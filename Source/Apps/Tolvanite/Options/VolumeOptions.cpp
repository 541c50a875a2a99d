#include "VolumeOptions.h"

#include <cmath>
#include <limits>
#include <span>
#include <sstream>

#include "Arguments.h"
#include "OSGPictureView.h"

namespace Tool
{
namespace
{
[[noreturn]] void refuse(std::string const &option, std::string const &reason)
{
    throw CLI::ValidationError(option, reason);
}

template <std::size_t N>
std::optional<std::array<OSG::Pnt3f, N>> points(char const *option,
                                                std::vector<std::string> const &texts)
{
    if(texts.empty())
        return std::nullopt;
    std::array<OSG::Pnt3f, N> result;
    for(std::size_t i = 0; i < N; ++i)
        result[i] = point_of(option, texts[i]);
    return result;
}

template <std::size_t N>
std::optional<std::array<float, N>> numbers(char const *option, std::string const &text,
                                            char const *form)
{
    std::array<float, N> result;
    if(text.empty())
        return std::nullopt;
    if(!parse_numbers(text, result))
        refuse(option, text + " is not " + form);
    return result;
}

std::optional<OSG::Pnt3f> point_if_given(char const *option, std::string const &text)
{
    return text.empty() ? std::nullopt : std::optional(point_of(option, text));
}

// A number as people write it.
std::string shown(double number)
{
    std::ostringstream text;
    text.precision(9);
    text << number;
    return text.str();
}

// The near side of a box is the side with the larger z.
OSG::Frustum box_of(std::array<OSG::Pnt3f, 2> const &box)
{
    auto const &[min, max] = box;
    for(int axis = 0; axis < 3; ++axis)
    {
        if(min[axis] > max[axis])
            refuse("--box", shown(min[0]) + ',' + shown(min[1]) + ',' + shown(min[2]) +
                                " is not the smaller corner");
    }
    OSG::Pnt3f const corners[8] = {{min[0], min[1], max[2]}, {max[0], min[1], max[2]},
                                   {max[0], max[1], max[2]}, {min[0], max[1], max[2]},
                                   {min[0], min[1], min[2]}, {max[0], min[1], min[2]},
                                   {max[0], max[1], min[2]}, {min[0], max[1], min[2]}};
    return OSG::Frustum(corners);
}

/// An option and whether it was given.
struct Given
{
    char const *name;
    bool isThere;
};

// Each of the parts of a view needs the others.
void check_parts(VolumeValues const &values)
{
    Given const from = {"--from", values.from.has_value()};
    Given const parts[] = {{"--at", values.at.has_value()},
                           {"--up", values.up.has_value()},
                           {"--size", values.size.has_value()}};
    for(Given const &part : parts)
        if(from.isThere && !part.isThere)
            throw CLI::RequiresError(from.name, part.name);
    Given const choices[] = {{"--fov", values.fieldOfView.has_value()},
                             {"--ortho", values.orthographicHeight.has_value()},
                             {"--pixel", values.pixel.has_value()},
                             {"--rect", values.rectangle.has_value()},
                             {"--lasso", values.lasso.has_value()}};
    for(auto const &given : {std::span<Given const>(parts), std::span<Given const>(choices)})
        for(Given const &part : given)
            if(part.isThere && !from.isThere)
                throw CLI::RequiresError(part.name, from.name);
    if(values.radius && !values.pixel)
        throw CLI::RequiresError("--radius", "--pixel");
}

void check_choice(VolumeValues const &values)
{
    if(values.box && values.corners)
        throw CLI::ExcludesError("--box", "--corners");
    if(values.from && values.corners)
        throw CLI::ExcludesError("--from", "--corners");
    if(values.from && values.box)
        throw CLI::ExcludesError("--from", "--box");
    if(values.rectangle && values.pixel)
        throw CLI::ExcludesError("--rect", "--pixel");
    if(values.lasso && (values.pixel || values.rectangle))
        throw CLI::ExcludesError(values.pixel ? "--pixel" : "--rect", "--lasso");
    if(values.orthographicHeight && values.fieldOfView)
        throw CLI::ExcludesError("--fov", "--ortho");
    if(!values.corners && !values.box && !values.from)
        refuse("VOLUME", "--corners, --box or --from is required");
    if(values.from && !values.fieldOfView && !values.orthographicHeight)
        refuse("VOLUME", "--from requires --fov or --ortho");
    if(values.from && !values.pixel && !values.rectangle && !values.lasso)
        refuse("VOLUME", "--from requires --pixel, --rect or --lasso");
}

bool is_size(double number)
{
    return number >= 1 && number <= std::numeric_limits<int>::max() && number == std::floor(number);
}
} // namespace

OSG::Pnt3f point_of(char const *option, std::string const &text)
{
    Triple read;
    if(!parse_triple(text, read))
        refuse(option, text + " is not x,y,z");
    return OSG::Pnt3f(read.x, read.y, read.z);
}

void add_volume_options(CLI::App &command, VolumeOptions &options, CLI::Option *queries)
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
    auto *const height = command.add_option(
        "--ortho", options.orthographicHeight,
        "Units from bottom to top of a view without perspective, in place of --fov");
    auto *const size =
        command.add_option("--size", options.size, "Size of the view in pixels, WxH");
    auto *const pixel = command.add_option("--pixel", options.pixel, "Pixel X,Y to pick at");
    auto *const rectangle =
        command.add_option("--rect", options.rectangle, "Rectangle X0,Y0,X1,Y1 to pick in");
    auto *const lasso =
        command.add_option("--lasso", options.lasso, "Polygon X0,Y0,X1,Y1,... to pick in");
    command.add_option("--radius", options.radius, "Pixels to add on each side of the pixel")
        ->default_str(shown(OSG::DefaultPickRadius));
    from->excludes(corners)->excludes(box);
    for(auto *part : {at, up, size})
    {
        from->needs(part);
        part->needs(from);
    }
    angle->needs(from);
    height->needs(from)->excludes(angle);
    pixel->needs(from);
    rectangle->needs(from)->excludes(pixel);
    lasso->needs(from)->excludes(pixel)->excludes(rectangle);
    for(auto *option : {corners, box, from, at, up, angle, height, size, pixel, rectangle, lasso})
        queries->excludes(option);
}

VolumeValues values_of(VolumeOptions const &options)
{
    VolumeValues values;
    values.corners = points<8>("--corners", options.corners);
    values.box = points<2>("--box", options.box);
    values.from = point_if_given("--from", options.from);
    values.at = point_if_given("--at", options.at);
    values.up = point_if_given("--up", options.up);
    values.fieldOfView = options.fieldOfView;
    values.orthographicHeight = options.orthographicHeight;
    Pair size;
    if(!options.size.empty() && !parse_pair(options.size, 'x', size))
        refuse("--size", options.size + " is not WxH");
    if(!options.size.empty())
        values.size = {double(size.first), double(size.second)};
    values.pixel = numbers<2>("--pixel", options.pixel, "X,Y");
    values.rectangle = numbers<4>("--rect", options.rectangle, "X0,Y0,X1,Y1");
    if(options.lasso && !parse_number_list(*options.lasso, values.lasso.emplace()))
        refuse("--lasso", "numbers X0,Y0,X1,Y1,... are required");
    values.radius = options.radius;
    return values;
}

void check_radius(float radius)
{
    if(!(radius > 0) || !std::isfinite(radius))
        refuse("--radius", "a number above 0 is required");
}

VolumeChoice::VolumeChoice(VolumeValues const &values, float radius)
{
    check_parts(values);
    check_choice(values);
    if(values.corners)
        _solid = OSG::Frustum(values.corners->data());
    else if(values.box)
        _solid = box_of(*values.box);
    else
        takeView(values, radius);
}

void VolumeChoice::takeView(VolumeValues const &values, float radius)
{
    auto const [width, height] = *values.size;
    if(!is_size(width) || !is_size(height))
        refuse("--size", shown(width) + 'x' + shown(height) + " is not WxH");
    float const angle = values.fieldOfView.value_or(OSG::DefaultFieldOfView);
    if(!(angle > 0 && angle < 180))
        refuse("--fov", "an angle between 0 and 180 is required");
    float const upright = values.orthographicHeight.value_or(1);
    if(!(upright > 0) || !std::isfinite(upright))
        refuse("--ortho", "a height above 0 is required");
    OSG::Pnt3f const &up = *values.up;
    _view = {*values.from,
             *values.at,
             OSG::Vec3f(up[0], up[1], up[2]),
             angle,
             static_cast<OSG::UInt32>(width),
             static_cast<OSG::UInt32>(height),
             values.orthographicHeight};
    _radius = values.radius.value_or(radius);
    check_radius(_radius);
    if(!OSG::is_view(_view))
        refuse("--from", "--from and --at coincide, or --up points along the view");
    takeArea(values);
}

void VolumeChoice::takeArea(VolumeValues const &values)
{
    if(values.lasso)
    {
        if(values.lasso->size() % 2 != 0)
            refuse("--lasso", "an even count of numbers is required");
        _lasso.emplace();
        for(std::size_t i = 0; i < values.lasso->size(); i += 2)
            _lasso->emplace_back((*values.lasso)[i], (*values.lasso)[i + 1]);
    }
    else if(values.pixel)
        _area = OSG::pixel_square((*values.pixel)[0], (*values.pixel)[1], _radius);
    else
    {
        auto const &[x0, y0, x1, y1] = *values.rectangle;
        _area = OSG::pixel_rectangle(x0, y0, x1, y1);
    }
}

void VolumeChoice::checkPlane(OSG::SelectionFunctor::PlaneType plane) const
{
    if(_lasso && plane != OSG::SelectionFunctor::NearPlane &&
       plane != OSG::SelectionFunctor::FarPlane)
        refuse("--plane", "near or far is required with --lasso");
}

std::optional<OSG::PickRegion> VolumeChoice::inScene(OSG::SceneBounds const &bounds) const
{
    if(_solid)
        return OSG::PickRegion(*_solid);
    return _lasso ? OSG::PickRegion::ofLasso(_view, *_lasso, bounds, _radius)
                  : OSG::PickRegion::ofRectangle(_view, _area, bounds, _radius);
}

std::optional<OSG::Pnt3f> VolumeChoice::eye() const
{
    return _solid ? std::nullopt : std::optional(_view.from);
}
} // namespace Tool
