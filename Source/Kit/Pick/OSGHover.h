#pragma once

#include <optional>
#include <utility>

#include <boost/function.hpp>

#include "OSGSceneEdits.h"
#include "OSGShownView.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
class Viewport;

/// When a hover has to ask again: where the pointer, the view or the scene are others than when it
/// asked last.
class OSG_TOLVANITEKIT_API HoverTiming
{
  public:
    /// Whether to ask now. True until an answer is kept.
    bool isDue(Pnt2f const &pixel, Viewport const &viewport);
    /// There is an answer for what isDue() was called with last.
    void keep() { _hasAnswer = true; }
    void reset() { _hasAnswer = false; }

  private:
    SceneEdits _edits{SceneEdits::Watched::Nodes};
    ShownView _shown;
    Pnt2f _pixel;
    bool _hasAnswer = false;
};

/// What lies under the pointer, asked as seldom as possible.
///
///     Hover<PickResult> hover([&](Pnt2f const &pixel) { return pick(scene, pixel); });
///     ...
///     hover.moveTo(adapter.getPointer()); // with each motion; asks nothing
///     ...
///     if(hover.update(*viewport))         // once a frame, after the commit
///         show(hover.getAnswer());
///
/// An answer stands until the pointer, the view or the scene change. The scene changes when an edit
/// of a node, a core or a geometry is committed, in whatever scene; edits that are not committed do
/// not count.
template <class Answer>
class Hover
{
  public:
    /// What lies under a pixel. No value where there is nothing.
    using Query = boost::function<std::optional<Answer>(Pnt2f const &pixel)>;

    explicit Hover(Query query)
        : _query(std::move(query))
    {
    }

    /// In device pixels, from the left top corner of the window.
    void moveTo(Pnt2f const &pixel) { _pointer = pixel; }
    /// The pointer is not over the view, or a drag is under way: there is no answer until it
    /// comes back.
    void leave() { _pointer.reset(); }

    /// Asks if it has to. Whether it has asked, or has dropped an answer. Where the query throws
    /// there is no answer, and the next call asks again.
    bool update(Viewport const &viewport)
    {
        if(!_pointer)
        {
            _timing.reset();
            return std::exchange(_answer, std::nullopt).has_value();
        }
        if(!_timing.isDue(*_pointer, viewport))
            return false;
        _answer.reset();
        _timing.reset();
        _answer = _query ? _query(*_pointer) : std::nullopt;
        _timing.keep();
        return true;
    }
    std::optional<Answer> const &getAnswer() const { return _answer; }

  private:
    Query _query;
    HoverTiming _timing;
    std::optional<Pnt2f> _pointer;
    std::optional<Answer> _answer;
};
} // namespace OSG
