#include "OSGFrameCollector.h"

#include <algorithm>

#include "OSGBits.h"
#include "OSGDrawEpochs.h"
#include "OSGFinite.h"
#include "OSGLightSource.h"
#include "OSGMirroring.h"
#include "OSGOwnBox.h"

namespace OSG
{
namespace
{
using TwoReal64 = Real64 __attribute__((vector_size(16)));

// The product in double precision, rounded once: neighbours far from the origin keep their places
// to one another. Two rows at a time; the sums are those of Matrix4d, to the bit.
Matrix product(Matrix4d const &left, Matrix const &right)
{
    Matrix result;
    for(std::size_t c = 0; c < 4; ++c)
    {
        for(std::size_t r = 0; r < 4; r += 2)
        {
            TwoReal64 sum = TwoReal64{left[0][r], left[0][r + 1]} * Real64(right[c][0]);
            for(std::size_t k = 1; k < 4; ++k)
                sum += TwoReal64{left[k][r], left[k][r + 1]} * Real64(right[c][k]);
            result[c][r] = static_cast<Real32>(sum[0]);
            result[c][r + 1] = static_cast<Real32>(sum[1]);
        }
    }
    return result;
}
} // namespace

// --- the view ---

void FrameCollector::begin(AppearanceTable const &appearances)
{
    DrawEnv const &env = _partition.getDrawEnv();
    _viewing = env.getExactViewing();
    Matrix4d const projection(env.getCameraProjection());
    _worldPlanes = ViewPlanes(projection * _viewing);
    _eyePlanes = ViewPlanes(projection);
    for(Plane const &plane : env.getSections())
    {
        Vec3f const &normal = plane.getNormal();
        _worldPlanes.add({normal[0], normal[1], normal[2], -plane.getDistanceFromOrigin()});
    }
    for(Vector<Real64, 4> const &plane : env.getSectionsInEye())
        _eyePlanes.add(plane);
    _worldPlanes.setReach(_cache.getBoxes().getReach());
    _isMirrored = is_mirrored(env.getCameraViewing());
    _found.clear();
    _foundSpaces.clear();
    _foundLights.clear();
    _table = appearances.isEmpty() ? nullptr : &appearances;
    ++_frame;
}

Matrix FrameCollector::spaceToEye(UInt32 space) const
{
    return product(_viewing, _cache.getRecord().spaces[space].toRoot);
}

// --- nodes that are walked for this view ---

std::vector<Node *> FrameCollector::visitingOf(UInt32 entry) const
{
    std::vector<SceneRecord::Entry> const &entries = _cache.getRecord().entries;
    std::vector<Node *> nodes;
    for(UInt32 visiting = entries[entry].visiting; visiting != SceneRecord::NoEntry;
        visiting = entries[visiting].visiting)
        nodes.push_back(entries[visiting].node);
    std::reverse(nodes.begin(), nodes.end());
    return nodes;
}

bool FrameCollector::beginOpen(UInt32 number)
{
    SceneRecord::Open const &open = _cache.getRecord().opens[number];
    Appearance const appearance = _cache.getDressed().appearanceOf(number);
    if(appearance.isHidden)
        return false;
    _appearances.begin(_table, appearance,
                       _table != nullptr ? visitingOf(open.entry) : std::vector<Node *>());
    _scope = _cache.getRecord().scopes[open.scope];
    _outer.clear();
    _openEntry = open.entry;
    _lastMatrix = 0;
    _partition.setMatrix(spaceToEye(_scope.space));
    _place = {_partition.getCurrentMatrix().id, _cache.getRecord().spaces[_scope.space].toRoot};
    return true;
}

ViewPlanes::Sight FrameCollector::sightOf(BoxVolume box) const
{
    ViewPlanes::Sight const outer = _partition.getSight();
    if(outer != ViewPlanes::Sight::Some || !box.isValid())
        return outer;
    box.transform(_partition.getCurrentMatrix().matrix);
    return _eyePlanes.test(box);
}

void FrameCollector::addShape(Node const *node, DrawShape const *shape, Material const *material)
{
    RenderPartition::NumberedMatrix const &current = _partition.getCurrentMatrix();
    BoxVolume const box = own_box(*node);
    if(!_appearances.isDrawn() || !is_finite(current.matrix) ||
       sightOf(box) == ViewPlanes::Sight::None)
        return;
    if(current.id != _lastMatrix || _foundSpaces.empty())
    {
        _foundSpaces.push_back({current.matrix, is_mirrored(current.matrix)});
        _lastMatrix = current.id;
    }
    Pnt3f centre;
    if(!box.isInfinite())
        box.getCenter(centre);
    Material const *const dress = _appearances.getAppearance().material;
    Material const *const group = dress != nullptr ? dress : _scope.group;
    Material const *const shown = group != nullptr ? group : material;
    _found.push_back({_cache.getShapes().numberOf(shape),
                      _cache.getStates().numberOf(shown, _scope.overriding),
                      static_cast<UInt32>(_foundSpaces.size() - 1), _scope.light, _openEntry,
                      -(current.matrix * centre)[2]});
}

Matrix FrameCollector::getToRoot() const
{
    RenderPartition::NumberedMatrix const &current = _partition.getCurrentMatrix();
    return current.id == _place.matrix
               ? _place.toRoot
               : Matrix(Matrix4d(_partition.getDrawEnv().getCameraToWorld()) *
                        Matrix4d(current.matrix));
}

void FrameCollector::pushSpace(Matrix const &toParent)
{
    _outer.push_back({_scope, true, _place});
    if(_place.matrix != _partition.getCurrentMatrix().id)
    {
        _partition.pushMatrix(toParent);
        return;
    }
    _place.toRoot.mult(toParent);
    _partition.enterSpace(product(_viewing, _place.toRoot));
    _place.matrix = _partition.getCurrentMatrix().id;
}

void FrameCollector::pushMaterial(Material const *material)
{
    _outer.push_back({_scope, false, _place});
    if(material != nullptr)
        _scope.group = material;
}

void FrameCollector::pushOverriding(Material const *material)
{
    _outer.push_back({_scope, false, _place});
    if(_scope.overriding == nullptr)
        _scope.overriding = material;
}

void FrameCollector::pushLight(LightSource const *light)
{
    _outer.push_back({_scope, false, _place});
    _foundLights.push_back({light, _partition.getCurrentMatrix().matrix, _scope.light, _openEntry});
    _scope.light = static_cast<UInt32>(_cache.getRecord().lights.size() + _foundLights.size() - 1);
}

void FrameCollector::pop()
{
    if(_outer.empty())
        return;
    _scope = _outer.back().scope;
    _place = _outer.back().place;
    if(_outer.back().isSpace)
        _partition.popMatrix();
    _outer.pop_back();
}

// --- the list ---

bool FrameCollector::isAsBefore(bool headlight) const
{
    DrawEnv const &env = _partition.getDrawEnv();
    return _hasList && _found.empty() && _listHeadlight == headlight &&
           _cacheNumber == _cache.getNumber() && _listViewing == env.getExactViewing() &&
           _listProjection == env.getCameraProjection() && _listSections == env.getSections();
}

void FrameCollector::finish(bool headlight)
{
    if(!isAsBefore(headlight))
    {
        _hasList = false;
        _listHeadlight = headlight;
        findSeen();
        _list.states = _cache.getStates().getStates();
        if(_list.shapesNumber != _cache.getShapes().getNumber())
            _list.shapes = _cache.getShapes().getShapes();
        _list.shapesNumber = _cache.getShapes().getNumber();
        makeLights(headlight);
        makeOpaque();
        makeTransparent();
        makeSpaces();
        _cacheNumber = _cache.getNumber();
        _listViewing = _partition.getDrawEnv().getExactViewing();
        _listProjection = _partition.getDrawEnv().getCameraProjection();
        _listSections = _partition.getDrawEnv().getSections();
        _hasList = _found.empty();
    }
    else if(!_cache.getRecord().lights.empty())
        makeLights(headlight);
    _list.meshEpoch = DrawEpochs::getMeshes();
}

void FrameCollector::findSeen()
{
    UInt32 const items = _cache.getBoxes().size();
    _cache.getBoxes().findSeen(_worldPlanes, _seenItems);
    _seen.assign(_seenItems.size(), 0);
    std::vector<UInt64> drawn = _seenItems;
    std::vector<UInt64> const &taken = _cache.getDressed().getTaken();
    for(std::size_t i = 0; i < taken.size(); ++i)
        drawn[i] &= ~taken[i];
    if(count_of_bits(drawn) == items)
    {
        _seen.swap(drawn);
        return;
    }
    for_each_bit(drawn,
                 [this](UInt32 item)
                 {
                     UInt32 const place = _cache.getPlaces()[item];
                     _seen[place / 64] |= UInt64(1) << place % 64;
                 });
}

void FrameCollector::useSpace(UInt32 space)
{
    if(_spaceUse[space] == _frame)
        return;
    _spaceUse[space] = _frame;
    SceneRecord::Space const &recorded = _cache.getRecord().spaces[space];
    _list.spaces[space] = {product(_viewing, recorded.toRoot), recorded.isMirrored != _isMirrored};
}

// Only those that are used in this frame.
void FrameCollector::makeSpaces()
{
    std::size_t const recorded = _cache.getRecord().spaces.size();
    _list.spaces.resize(recorded + _foundSpaces.size());
    _spaceUse.resize(recorded, 0);
    for(std::vector<DrawItem> const *items : {&_list.opaque, &_list.transparent})
    {
        for(DrawItem const &item : *items)
        {
            if(item.space < recorded)
                useSpace(item.space);
        }
    }
    std::copy(_foundSpaces.begin(), _foundSpaces.end(),
              _list.spaces.begin() + static_cast<std::ptrdiff_t>(recorded));
}

// --- lights ---

LightSets::Light FrameCollector::lightOf(FoundLight const &light) const
{
    Node const *const place = light.source->findPlace();
    return {light.source, place != nullptr ? product(_viewing, place->getToWorld()) : light.toEye,
            light.outer, light.entry};
}

void FrameCollector::makeLights(bool headlight)
{
    std::vector<LightSets::Light> lights;
    if(!headlight)
    {
        for(SceneRecord::Light const &light : _cache.getRecord().lights)
            lights.push_back(
                lightOf({light.source, spaceToEye(light.space), light.outer, light.entry}));
        for(FoundLight const &light : _foundLights)
            lights.push_back(lightOf(light));
    }
    _lightSets.make(lights, headlight ? LightSet{LightValues()} : LightSet(), _list.lights);
}
} // namespace OSG
