#pragma once

#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
/// What the user does with the left button: a click, a band, a lasso. An EventAdapter has one tool
/// at a time and calls it with all motions of a drag.
class OSG_TOLVANITEKIT_API PointerTool
{
  public:
    /// Bits of `modifiers`: the keys that are held.
    enum Modifier : UInt16
    {
        Shift = 1,
        Control = 2,
        Alt = 4
    };
    struct Event
    {
        Pnt2f pixel; ///< device pixels from the window's left top corner, with fractions
        UInt16 modifiers = 0;
        Real32 scale = 1; ///< device pixels in a unit of the toolkit
    };

    virtual ~PointerTool();
    /// The left button goes down, the pointer moves while it is down, it comes up.
    virtual void press(Event const &event) = 0;
    virtual void drag(Event const &event) = 0;
    virtual void release(Event const &event) = 0;
    /// Ends what is under way without a result.
    virtual void cancel() = 0;
    /// Whether something is under way that Escape ends.
    virtual bool isBusy() const = 0;
    /// Whether the navigator hears of the left button too. False in this class.
    virtual bool sharesDrag() const;
    /// A word of letters, by which recordings of input name the tool. "tool" in this class.
    virtual char const *getName() const;
};
} // namespace OSG
