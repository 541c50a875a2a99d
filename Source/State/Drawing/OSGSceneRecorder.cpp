#include "OSGSceneRecorder.h"

#include "OSGCountOf.h"
#include "OSGFinite.h"
#include "OSGMirroring.h"
#include "OSGOwnBox.h"

namespace OSG
{
void SceneRecorder::beginScene()
{
    _record.clear();
    _starts = {};
    _firstEntry = 0;
    _visiting = SceneRecord::NoEntry;
    _current = {};
    _outer.clear();
    _nodes.clear();
    _record.spaces.emplace_back();
    _record.scopes.emplace_back();
}

void SceneRecorder::beginPart(SceneRecord const &whole, UInt32 entry)
{
    _record.clear();
    SceneRecord::Entry const &begin = whole.entries[entry];
    _starts = begin.starts;
    _firstEntry = entry;
    _visiting = begin.visiting;
    _current.scope = whole.scopes[begin.scope];
    _current.scopeNumber = begin.scope;
    _current.toRoot = whole.spaces[_current.scope.space].toRoot;
    _current.isFinite = is_finite(_current.toRoot);
    _outer.clear();
    _nodes.clear();
}

// --- nodes ---

UInt32 SceneRecorder::visitingOf(Node const *node) const
{
    if(_nodes.empty())
        return _visiting;
    SceneRecord::Entry const &above = _record.entries[_nodes.back()];
    NodeCore const *const core = above.node->getCore();
    return core != nullptr && core->getOtherTree() == node ? _firstEntry + _nodes.back()
                                                           : above.visiting;
}

void SceneRecorder::enter(Node *node)
{
    SceneRecord::Starts const ends = _record.ends();
    UInt32 const visiting = visitingOf(node);
    _nodes.push_back(count_of(_record.entries));
    _record.entries.push_back(
        {node, 0, _current.scopeNumber,
         SceneRecord::Starts{_starts.item + ends.item, _starts.space + ends.space,
                             _starts.scope + ends.scope, _starts.light + ends.light,
                             _starts.open + ends.open},
         visiting});
}

void SceneRecorder::leave()
{
    _record.entries[_nodes.back()].end = _firstEntry + count_of(_record.entries);
    _nodes.pop_back();
}

void SceneRecorder::addOpen()
{
    _record.opens.push_back({_firstEntry + _nodes.back(), _current.scopeNumber});
}

UInt32 SceneRecorder::stateOf(Material const *material)
{
    Material const *const shown = _current.scope.group != nullptr ? _current.scope.group : material;
    if(!_hasState || shown != _material || _current.scope.overriding != _overriding)
    {
        _material = shown;
        _overriding = _current.scope.overriding;
        _state = _states.numberOf(_material, _overriding);
        _hasState = true;
    }
    return _state;
}

// In a space without numbers no corner is finite.
void SceneRecorder::addShape(DrawShape const *shape, Material const *material)
{
    if(!_current.isFinite)
        return;
    BoxVolume box = own_box(*_record.entries[_nodes.back()].node);
    box.transform(_current.toRoot);
    _record.items.push_back({_shapes.numberOf(shape), stateOf(material), _current.scope.space,
                             _current.scope.light, _firstEntry + _nodes.back()});
    _record.boxes.push_back(box);
}

// --- scopes ---

void SceneRecorder::push(SceneRecord::Scope const &scope)
{
    _outer.push_back(_current);
    _record.scopes.push_back(scope);
    _current.scope = scope;
    _current.scopeNumber = _starts.scope + count_of(_record.scopes) - 1;
}

void SceneRecorder::pushSpace(Matrix const &toParent)
{
    Matrix const toRoot = _current.toRoot * toParent;
    _record.spaces.push_back({toRoot, is_mirrored(toRoot)});
    SceneRecord::Scope scope = _current.scope;
    scope.space = _starts.space + count_of(_record.spaces) - 1;
    push(scope);
    _current.toRoot = toRoot;
    _current.isFinite = is_finite(toRoot);
}

void SceneRecorder::pushMaterial(Material const *material)
{
    SceneRecord::Scope scope = _current.scope;
    if(material != nullptr)
        scope.group = material;
    push(scope);
}

void SceneRecorder::pushOverriding(Material const *material)
{
    SceneRecord::Scope scope = _current.scope;
    if(scope.overriding == nullptr)
        scope.overriding = material;
    push(scope);
}

void SceneRecorder::pushLight(LightSource const *light)
{
    _record.lights.push_back(
        {light, _current.scope.space, _current.scope.light, _firstEntry + _nodes.back()});
    SceneRecord::Scope scope = _current.scope;
    scope.light = _starts.light + count_of(_record.lights) - 1;
    push(scope);
}

void SceneRecorder::pop()
{
    if(_outer.empty())
        return;
    _current = _outer.back();
    _outer.pop_back();
}
} // namespace OSG
