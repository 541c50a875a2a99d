#include "Queries.h"

#include <map>
#include <random>

#include "OSGPickVolume.h"

namespace OSG::Bench
{
namespace
{
/// Places in a box with edges parallel to the axes.
class Places
{
  public:
    Places(BoxVolume const &box, UInt32 seed)
        : _box(box)
        , _random(seed)
    {
    }

    Real32 along(int axis, Real32 margin = 0)
    {
        Real32 const extent = _box.getMax()[axis] - _box.getMin()[axis];
        return std::uniform_real_distribution<Real32>(
            _box.getMin()[axis] - margin * extent, _box.getMax()[axis] + margin * extent)(_random);
    }
    Pnt3f place(Real32 margin = 0)
    {
        Real32 const x = along(0, margin);
        Real32 const y = along(1, margin);
        return Pnt3f(x, y, along(2, margin));
    }

  private:
    BoxVolume _box;
    std::mt19937 _random;
};

Frustum box_volume(Pnt3f const &min, Pnt3f const &max)
{
    Pnt3f const corners[8] = {{min[0], min[1], max[2]}, {max[0], min[1], max[2]},
                              {max[0], max[1], max[2]}, {min[0], max[1], max[2]},
                              {min[0], min[1], min[2]}, {max[0], min[1], min[2]},
                              {max[0], max[1], min[2]}, {min[0], max[1], min[2]}};
    return Frustum(corners);
}

// From the side and above, so that the scene fills most of the view.
WindowView view_of(BoxVolume const &box)
{
    Pnt3f middle;
    box.getCenter(middle);
    Real32 const size = (box.getMax() - box.getMin()).length();
    Pnt3f const eye = middle + Vec3f(0.25f, 0.55f, 0.6f) * size;
    return {eye, middle, Vec3f(0, 1, 0), 45.f, 1000, 1000};
}

std::vector<Frustum> in_view(BoxVolume const &box, UInt32 count, Real32 side)
{
    WindowView const view = view_of(box);
    std::mt19937 random(3);
    std::uniform_real_distribution<Real32> pixel(250.f, 750.f);
    std::vector<Frustum> result;
    for(UInt32 i = 0; i < count; ++i)
    {
        Real32 const x = pixel(random);
        Real32 const y = pixel(random);
        result.push_back(*pick_volume(view, pixel_square(x, y, side / 2), box));
    }
    return result;
}

std::vector<Frustum> persons(BoxVolume const &box)
{
    Places places(box, 4);
    std::vector<Frustum> result;
    for(UInt32 i = 0; i < 1000; ++i)
    {
        Pnt3f const foot = places.place();
        result.push_back(box_volume(foot, foot + Vec3f(0.5f, 1.75f, 0.3f)));
    }
    return result;
}

std::vector<Frustum> make_volumes(BoxVolume const &box, VolumeQuery query)
{
    constexpr Real32 TenthOfView = 316.228f; // the side of a square of 100,000 pixels
    switch(query)
    {
    case VolumeQuery::Q1:
        return in_view(box, 40, 5.f);
    case VolumeQuery::Q2:
        return in_view(box, 5, TenthOfView);
    case VolumeQuery::Q3:
        return {box_volume(box.getMin() - Vec3f(1, 1, 1), box.getMax() + Vec3f(1, 1, 1))};
    default:
        return persons(box);
    }
}

std::vector<Line> make_rays(BoxVolume const &box, RayQuery query)
{
    Places places(box, 5);
    std::vector<Line> result;
    while(result.size() < 1000)
    {
        if(query == RayQuery::Down)
        {
            Real32 const x = places.along(0);
            result.emplace_back(Pnt3f(x, box.getMax()[1] + 1, places.along(2)), Vec3f(0, -1, 0));
            continue;
        }
        Pnt3f const from = places.place(0.5f);
        result.emplace_back(from, places.place(0.5f) - from);
    }
    return result;
}
} // namespace

std::vector<Frustum> const &volumes(SceneName name, VolumeQuery query)
{
    static std::map<std::pair<SceneName, VolumeQuery>, std::vector<Frustum>> all;
    std::vector<Frustum> &result = all[{name, query}];
    if(result.empty())
        result = make_volumes(scene(name)->getVolume(), query);
    return result;
}

std::vector<Line> const &rays(SceneName name, RayQuery query)
{
    static std::map<std::pair<SceneName, RayQuery>, std::vector<Line>> all;
    std::vector<Line> &result = all[{name, query}];
    if(result.empty())
        result = make_rays(scene(name)->getVolume(), query);
    return result;
}

Real32 ray_length(SceneName name)
{
    BoxVolume const &box = scene(name)->getVolume();
    return 4 * (box.getMax() - box.getMin()).length();
}
} // namespace OSG::Bench
