#include "OSGGeometry.h"

#include <algorithm>

#include "OSGDrawEpochs.h"
#include "OSGGeometryBox.h"
#include "OSGGeometryRay.h"
#include "OSGGeometryShape.h"
#include "OSGIntersectAction.h"
#include "OSGLog.h"
#include "OSGName.h"
#include "OSGPrimitiveIndexUse.h"
#include "OSGRenderAction.h"

namespace OSG
{
Geometry::~Geometry()
{
    if(hasDependents())
        GeometryShape::forget(*this);
}

DrawShape const *Geometry::obtainShape() const
{
    GeometryShape const *const shape = GeometryShape::obtain(*this);
    const_cast<Geometry *>(this)->setHasDependents(true);
    return shape;
}

// --- slots ---

namespace
{
template <class Field>
auto at_slot(Field const &field, UInt16 slot)
{
    return slot < field.size() ? field[slot] : nullptr;
}

template <class Field, class Value>
void put_at_slot(Field &field, Value *value, UInt16 slot)
{
    if(slot < field.size() || value != nullptr)
        field.putAt(slot, value);
}
} // namespace

GeoVectorProperty *Geometry::getProperty(UInt16 slot) const { return at_slot(_mfProperties, slot); }

void Geometry::setProperty(GeoVectorProperty *property, UInt16 slot)
{
    markEdited(PropertiesFieldMask);
    put_at_slot(_mfProperties, property, slot);
}

GeoIntegralProperty *Geometry::getIndex(UInt16 slot) const { return at_slot(_mfPropIndices, slot); }

void Geometry::setIndex(GeoIntegralProperty *index, UInt16 slot)
{
    markEdited(PropIndicesFieldMask);
    put_at_slot(_mfPropIndices, index, slot);
}

void Geometry::setIndices(GeoIntegralProperty *index)
{
    setIndex(index, PositionsSlot);
    // A file may hold more properties than slots have numbers.
    UInt32 const slots = std::min<UInt32>(_mfProperties.size(), 1u << 16);
    for(UInt32 slot = PositionsSlot + 1; slot < slots; ++slot)
    {
        if(getProperty(static_cast<UInt16>(slot)) != nullptr)
            setIndex(index, static_cast<UInt16>(slot));
    }
}

// --- volume and edits ---

void Geometry::adjustVolume(Volume &volume)
{
    BoxVolume delivered;
    delivered.setEmpty();
    extend_by_delivered(delivered, *this);
    volume.extendBy(delivered);
}

void Geometry::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    constexpr BitVector Extent =
        TypesFieldMask | LengthsFieldMask | PropertiesFieldMask | PropIndicesFieldMask;
    if((whichField & Extent) != 0)
    {
        _indexSlot.drop();
        invalidateVolume();
    }
    DrawEpochs::noteMesh();
    GeometryBase::changed(whichField, origin, details);
}

// --- rays ---

namespace
{
RayHit cast_ray(Geometry const &geometry, IntersectAction &ray)
{
    Line const &line = ray.getLine();
    if(!ray.getUsePrimitiveIndex())
        return nearest_triangle(geometry, line, ray.getReach());
    PrimitiveIndexUse use(geometry, IndexedKind::Triangles);
    PrimitiveIndex const *const index = use.getIndex();
    if(index == nullptr)
        use.addFullLoop();
    if(index == nullptr || !can_cast(*index, line))
        return nearest_triangle(geometry, line, ray.getReach());
    ray.countIndexed();
    return nearest_triangle_by_index(*index, geometry, line, ray.getReach());
}

ActionBase::ResultE intersect_geometry(NodeCore *core, Action *action)
{
    IntersectAction &ray = static_cast<IntersectAction &>(*action);
    if(ray.passesVolume())
        return ActionBase::Skip;
    Geometry const &geometry = static_cast<Geometry const &>(*core);
    RayHit const hit = cast_ray(geometry, ray);
    if(hit.triangle >= 0)
        ray.setHit(hit.distance, hit.triangle, hit.normal);
    return ActionBase::Continue;
}
} // namespace

// --- drawing ---

namespace
{
ActionBase::ResultE draw_geometry(NodeCore *core, Action *action)
{
    Geometry const &geometry = static_cast<Geometry const &>(*core);
    static_cast<RenderAction &>(*action).addShape(geometry.obtainShape(), geometry.getMaterial());
    return ActionBase::Continue;
}
} // namespace

void Geometry::initMethod(TypeBase::InitPhase phase)
{
    GeometryBase::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    IntersectAction::registerEnterDefault(getClassType(), &intersect_geometry,
                                          Action::HandlerPromise::GatedByBox);
    RenderAction::registerEnterDefault(getClassType(), &draw_geometry,
                                       Action::HandlerPromise::Repeats);
    DrawEpochs::registerKind(getClassType(), DrawEpochs::Kind::Mesh);
}

void Geometry::reportOutOfRange() const
{
    if(!_indexSlot.noteWarning())
        return;
    char const *const name = getName(this);
    OSG_LOG_WARNING("Geometry %s: an index is out of range, what it belongs to is passed over\n",
                    name != nullptr ? name : "without a name");
}
} // namespace OSG
