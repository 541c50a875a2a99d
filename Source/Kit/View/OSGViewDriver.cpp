#include "OSGViewDriver.h"

#include "OSGViewFit.h"
#include "OSGViewMoves.h"
#include "OSGViewProjection.h"
#include "OSGViewWay.h"

namespace OSG
{
ViewDriver::ViewDriver(SceneView &view)
    : _view(view)
{
}

// What the user sees in the end: moves that follow one another quickly add up.
WindowView ViewDriver::target() const { return _way ? _way->to : _view.getView(); }

void ViewDriver::goTo(WindowView const &view)
{
    if(!is_view(view))
        return;
    WindowView const now = _view.getView();
    if(_waySeconds == 0 ||
       view.orthographicHeight.has_value() != now.orthographicHeight.has_value())
        jumpTo(view);
    else
        _way = Way{now, view};
}

void ViewDriver::jumpTo(WindowView const &view)
{
    if(show(view))
        _way.reset();
}

bool ViewDriver::show(WindowView const &view)
{
    if(!_view.setView(view))
        return false;
    if(_moved)
        _moved();
    return true;
}

// A window as wide as what is free shows the same in its height.
template <class Extent>
WindowView ViewDriver::fittedTo(WindowView const &view, Extent const &extent) const
{
    WindowView free = view;
    if(_freeWidth > 0 && _freeWidth < view.width)
        free.width = _freeWidth;
    free = OSG::fit(free, extent);
    free.width = view.width;
    return free;
}

WindowView ViewDriver::fitted(WindowView const &view) const
{
    return fittedTo(view, _view.getBounds());
}

void ViewDriver::fit() { goTo(fitted(target())); }

void ViewDriver::fit(BoxVolume const &box) { goTo(fittedTo(target(), box)); }

void ViewDriver::look(StandardView standard)
{
    goTo(fitted(standard_view(target(), standard, _sceneUp)));
}

void ViewDriver::setOrthographic(bool isOrthographic)
{
    jumpTo(isOrthographic ? to_orthographic(target()) : to_perspective(target()));
}

bool ViewDriver::isOrthographic() const { return target().orthographicHeight.has_value(); }

void ViewDriver::zoomAt(Pnt2f const &pixel, std::optional<Pnt3f> const &point, Real32 magnification)
{
    WindowView const view = _view.getView();
    std::optional<Pnt3f> const kept = point ? point : point_under(view, pixel, view.at);
    if(kept)
        jumpTo(zoom_at(view, *kept, pixel, magnification));
}

void ViewDriver::undo() { goInHistory(_history.undo()); }

void ViewDriver::redo() { goInHistory(_history.redo()); }

void ViewDriver::goInHistory(std::optional<WindowView> const &view)
{
    if(!view)
        return;
    goTo(*view);
    if(_way)
        _way->isInHistory = true;
    else
        _arrived = _view.getView();
}

void ViewDriver::forget()
{
    _history.clear();
    _way.reset();
    _last.reset();
}

void ViewDriver::update(Real64 seconds, bool isResting)
{
    WindowView const now = _view.getView();
    bool const hasMoved = _last && !(now == *_last);
    if(_way && _way->begin && hasMoved)
        _way.reset(); // the user has taken over
    if(_way)
    {
        Real64 const begin = _way->begin.value_or(seconds);
        _way->begin = begin;
        Real64 const share = (seconds - begin) / _waySeconds;
        WindowView const to = _way->to;
        show(view_between(_way->from, to, static_cast<Real32>(share)));
        if(!(share < 1))
        {
            if(_way->isInHistory)
                _arrived = _view.getView();
            _way.reset();
        }
    }
    else if(isResting && _last && !hasMoved && _arrived != now)
    {
        _arrived.reset();
        _history.add(now);
    }
    _last = _view.getView();
}
} // namespace OSG
