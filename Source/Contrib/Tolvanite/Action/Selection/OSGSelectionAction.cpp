#include "OSGSelectionAction.h"

#include <cassert>
#include <functional>

#include "OSGLog.h"
#include "OSGSelectionFunctor.h"
#include "OSGSystemHooks.h"

namespace OSG
{
Action::FunctorStore *SelectionAction::_defaultEnterFunctors = nullptr;
Action::FunctorStore *SelectionAction::_defaultLeaveFunctors = nullptr;
SelectionAction *SelectionAction::_prototype = nullptr;

// --- creation ---

SelectionAction::SelectionAction() { takeDefaults(); }

SelectionAction::SelectionAction(Frustum const &frustum)
{
    pushFrustum(frustum);
    takeDefaults();
}

SelectionAction::SelectionAction(SelectionAction const &source) = default;
SelectionAction::~SelectionAction() = default;

void SelectionAction::takeDefaults()
{
    if(_defaultEnterFunctors != nullptr)
        takeEnterFunctions(*_defaultEnterFunctors);
    if(_defaultLeaveFunctors != nullptr)
        takeLeaveFunctions(*_defaultLeaveFunctors);
}

TransitPtr<SelectionAction> SelectionAction::create()
{
    return TransitPtr<SelectionAction>(_prototype != nullptr ? new SelectionAction(*_prototype)
                                                             : new SelectionAction);
}

TransitPtr<SelectionAction> SelectionAction::create(Frustum const &frustum)
{
    if(_prototype == nullptr)
        return TransitPtr<SelectionAction>(new SelectionAction(frustum));
    TransitPtr<SelectionAction> copy(new SelectionAction(*_prototype));
    copy->pushFrustum(frustum);
    return copy;
}

// --- default handlers ---

void SelectionAction::registerEnterDefault(FieldContainerType const &type, Functor const &function)
{
    if(_defaultEnterFunctors == nullptr)
    {
        _defaultEnterFunctors = new FunctorStore;
        addPostFactoryExitFunction(&SelectionAction::terminateEnter);
    }
    put_functor(*_defaultEnterFunctors, type, function, &Action::_defaultEnterFunction);
}

void SelectionAction::registerLeaveDefault(FieldContainerType const &type, Functor const &function)
{
    if(_defaultLeaveFunctors == nullptr)
    {
        _defaultLeaveFunctors = new FunctorStore;
        addPostFactoryExitFunction(&SelectionAction::terminateLeave);
    }
    put_functor(*_defaultLeaveFunctors, type, function, &Action::_defaultLeaveFunction);
}

bool SelectionAction::terminateEnter()
{
    delete _defaultEnterFunctors;
    _defaultEnterFunctors = nullptr;
    return true;
}

bool SelectionAction::terminateLeave()
{
    delete _defaultLeaveFunctors;
    _defaultLeaveFunctors = nullptr;
    return true;
}

Action::FunctorStore *SelectionAction::getDefaultEnterFunctors() { return _defaultEnterFunctors; }
Action::FunctorStore *SelectionAction::getDefaultLeaveFunctors() { return _defaultLeaveFunctors; }

// --- the walk ---

void SelectionAction::reinitialize()
{
    _frustumStack.release();
    _nodeStack.release();
    _matrixStack.release();
}

void SelectionAction::pushFrustum(Frustum const &frustum)
{
    Level const level{frustum, frustum.Volume()};
    _frustumStack.push(level);
    _frustumVolume = level.volume;
}

void SelectionAction::popFrustum()
{
    _frustumStack.pop();
    _frustumVolume = _frustumStack.empty() ? FrustumVolume() : _frustumStack.top().volume;
}

ActionBase::ResultE SelectionAction::start()
{
    _nodeStack.clear();
    _matrixStack.clear();
    _matrixStack.push(Matrix());
    _frustaOfHost = _frustumStack.size();
    _visitsOfHost = _visitSubTreeNodes.size();
    assert(_actor != nullptr);
    _actor->start();
    return Continue;
}

ActionBase::ResultE SelectionAction::stop(ResultE result)
{
    assert(_actor != nullptr);
    _actor->stop();
    return result;
}

void SelectionAction::cancel()
{
    _visitSubTreeNodes.resize(_visitsOfHost);
    while(_frustumStack.size() > _frustaOfHost)
        popFrustum();
}

void SelectionAction::reportInvalidBox()
{
    if(!_invalidBoxReported)
        OSG_LOG_WARNING("SelectionAction: a node's volume is out of date and hides nothing; call "
                        "updateVolume after commitChanges\n");
    _invalidBoxReported = true;
}

// The test of BoxVolume::intersectFrustum, in which rounding is monotone: where all corners of a
// box are outside a plane, so are those of the boxes in it. NaN misses nothing.
void SelectionAction::findMissed(BoxLanes const *boxes, std::size_t count, UInt8 *missed) const
{
    find_missed(
        boxes, count, missed,
        [this](BoxLanes const &lanes, UInt32 quad)
        {
            FourMask outside{};
            for(Plane const &plane : _frustumVolume.getPlanes())
            {
                Vec3f const &n = plane.getNormal();
                auto const farthest = [&](int axis)
                { return n[axis] >= 0.f ? lanes.maxOf(axis, quad) : lanes.minOf(axis, quad); };
                FourReal32 const distance = n[0] * farthest(0) + n[1] * farthest(1) +
                                            n[2] * farthest(2) - plane.getDistanceFromOrigin();
                outside |= distance < 0.f;
            }
            return outside;
        });
}

bool SelectionAction::operator<(SelectionAction const &other) const
{
    return std::less<>()(this, &other);
}
} // namespace OSG
