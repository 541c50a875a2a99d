#include "WayPlot.h"

#include <algorithm>
#include <fstream>

#include "OSGFinite.h"
#include "ReplaceFile.h"

namespace Viewer
{
std::string save_way_plot(std::string const &target, OSG::Node *scene,
                          std::vector<OSG::PathPoint> const &way, OSG::Vec3f const &up)
{
    return Tool::replace_file(target,
                              [&](std::string const &path)
                              {
                                  std::ofstream out(path, std::ios::binary);
                                  OSG::write_path_plot(out, scene, way, {}, up);
                                  return bool(out.flush());
                              });
}

std::size_t length_of_way(OSG::WalkConsole const &console)
{
    using Store = OSG::WalkConsoleAttachment;
    Store const *const store = console.getAttachment();
    if(store == nullptr)
        return 0;
    return std::min(store->getField(Store::RecordedFromFieldId)->size(),
                    store->getField(Store::RecordedAtFieldId)->size());
}

std::vector<OSG::Pnt2f> sketch_way(std::vector<OSG::PathPoint> const &way, bool isZUp)
{
    std::vector<OSG::Pnt2f> sketch;
    for(OSG::PathPoint const &point : way)
        if(OSG::is_finite(point.from))
            sketch.emplace_back(point.from[0], isZUp ? -point.from[1] : point.from[2]);
    if(sketch.empty())
        return sketch;
    OSG::Pnt2f low = sketch.front();
    OSG::Pnt2f high = low;
    for(OSG::Pnt2f const &point : sketch)
    {
        for(OSG::UInt32 axis = 0; axis < 2; ++axis)
        {
            low[axis] = std::min(low[axis], point[axis]);
            high[axis] = std::max(high[axis], point[axis]);
        }
    }
    double const extent = std::max(double(high[0]) - low[0], double(high[1]) - low[1]);
    for(OSG::Pnt2f &point : sketch)
    {
        for(OSG::UInt32 axis = 0; axis < 2; ++axis)
        {
            double const middle = (double(low[axis]) + high[axis]) / 2;
            double const share = extent > 0 ? (point[axis] - middle) / extent : 0;
            point[axis] = static_cast<OSG::Real32>(0.5 + share);
        }
    }
    return sketch;
}
} // namespace Viewer
