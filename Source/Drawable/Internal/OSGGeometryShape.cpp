#include "OSGGeometryShape.h"

#include <array>
#include <mutex>
#include <unordered_map>

#include "OSGGeometry.h"
#include "OSGMeshMaker.h"

namespace OSG
{
namespace
{
/// The shapes of all geometries that have one.
struct Shapes
{
    std::mutex guard;
    std::unordered_map<Geometry const *, GeometryShape, std::hash<Geometry const *>,
                       std::equal_to<>,
                       MemAllocator<std::pair<Geometry const *const, GeometryShape>>>
        byGeometry;

    /// Never destroyed: geometries may end at the very end.
    static Shapes &the()
    {
        static Shapes *const shapes = new Shapes;
        return *shapes;
    }
};

constexpr std::array<UInt16, 4> DrawnSlots = {Geometry::PositionsSlot, Geometry::NormalsSlot,
                                              Geometry::ColorsSlot, Geometry::TexCoordsSlot};

/// Mixes stamps into one number, which is 0 as soon as a stamp says nothing.
class StampMixer
{
  public:
    void add(GeoProperty const *property)
    {
        if(property == nullptr)
        {
            mix(0);
            return;
        }
        _isKnown = _isKnown && property->getChangeMask() == 0 && property->getStamp() != 0;
        mix(property->getStamp());
    }
    UInt64 getStamp() const { return _isKnown ? _sum | 1 : 0; }

  private:
    // A full avalanche in each step (splitmix64, Steele, Lea and Flood, 2014).
    void mix(UInt64 number)
    {
        UInt64 sum = _sum + number + 0x9E3779B97F4A7C15u;
        sum = (sum ^ sum >> 30) * 0xBF58476D1CE4E5B9u;
        sum = (sum ^ sum >> 27) * 0x94D049BB133111EBu;
        _sum = sum ^ sum >> 31;
    }

    UInt64 _sum = 0;
    bool _isKnown = true;
};
} // namespace

GeometryShape const *GeometryShape::obtain(Geometry const &geometry)
{
    Shapes &shapes = Shapes::the();
    std::lock_guard const hold(shapes.guard);
    return &shapes.byGeometry.try_emplace(&geometry, geometry).first->second;
}

void GeometryShape::forget(Geometry const &geometry)
{
    Shapes &shapes = Shapes::the();
    std::lock_guard const hold(shapes.guard);
    shapes.byGeometry.erase(&geometry);
}

void GeometryShape::makeMesh(DrawMesh &mesh) const { make_mesh(_geometry, mesh); }

UInt64 GeometryShape::getMeshStamp() const
{
    StampMixer mixer;
    mixer.add(_geometry.getTypes());
    mixer.add(_geometry.getLengths());
    for(UInt16 slot : DrawnSlots)
    {
        mixer.add(_geometry.getProperty(slot));
        mixer.add(_geometry.getIndex(slot));
    }
    return mixer.getStamp();
}

UInt32 GeometryShape::getMeshLayout() const
{
    UInt32 layout = 0;
    for(std::size_t i = 1; i < DrawnSlots.size(); ++i)
        layout |= _geometry.getProperty(DrawnSlots[i]) != nullptr ? 1u << i : 0u;
    return layout;
}
} // namespace OSG
