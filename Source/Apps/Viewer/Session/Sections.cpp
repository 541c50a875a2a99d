#include "Sections.h"

#include <algorithm>
#include <cmath>

namespace Viewer
{
namespace
{
// Of the box along the direction.
std::pair<OSG::Real32, OSG::Real32> extent_along(OSG::BoxVolume const &box,
                                                 OSG::Vec3f const &direction)
{
    OSG::Real32 first = 0;
    OSG::Real32 last = 0;
    for(OSG::UInt32 axis = 0; axis < 3; ++axis)
    {
        OSG::Real32 const low = box.getMin()[axis] * direction[axis];
        OSG::Real32 const high = box.getMax()[axis] * direction[axis];
        first += std::min(low, high);
        last += std::max(low, high);
    }
    return {first, last};
}
} // namespace

bool Sections::addAcross(OSG::UInt32 axis)
{
    if(axis > 2)
        return false;
    OSG::Vec3f direction;
    direction[axis] = 1;
    return add(std::string(1, "xyz"[axis]), direction);
}

bool Sections::addAtFace(OSG::Pnt3f const &point, OSG::Vec3f const &normal)
{
    OSG::Real32 const length = normal.length();
    if(!(length > 0) || !std::isfinite(length) || !OSG::is_finite(point))
        return false;
    if(!add("face", normal / length))
        return false;
    Cut cut = _cuts.back();
    cut.place =
        point[0] * cut.direction[0] + point[1] * cut.direction[1] + point[2] * cut.direction[2];
    set(_cuts.size() - 1, cut);
    return true;
}

bool Sections::add(std::string const &name, OSG::Vec3f const &direction)
{
    OSG::BoxVolume const box = _view.getBounds().box;
    if(isFull() || box.isEmpty())
        return false;
    auto const [first, last] = extent_along(box, direction);
    _cuts.push_back({name, direction, first / 2 + last / 2, first, last});
    apply();
    return true;
}

void Sections::set(std::size_t number, Cut const &cut)
{
    if(number >= _cuts.size())
        return;
    _cuts[number] = cut;
    apply();
}

void Sections::remove(std::size_t number)
{
    if(number >= _cuts.size())
        return;
    _cuts.erase(_cuts.begin() + static_cast<std::ptrdiff_t>(number));
    apply();
}

void Sections::clear()
{
    _cuts.clear();
    apply();
}

void Sections::apply()
{
    OSG::SectionPlanes planes;
    for(Cut const &cut : _cuts)
    {
        OSG::Real32 const sign = cut.isFlipped ? 1.f : -1.f;
        if(cut.isOn)
            planes.add(cut.direction * sign, -sign * cut.place);
    }
    _view.setSections(planes);
}
} // namespace Viewer
