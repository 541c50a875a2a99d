#include "OSGHover.h"

namespace OSG
{
bool HoverTiming::isDue(Pnt2f const &pixel, Viewport const &viewport)
{
    ShownView const shown = shown_view_of(viewport);
    bool const isSame = _hasAnswer && pixel == _pixel && shown == _shown;
    _hasAnswer = false; // unless the journal says otherwise
    bool const wasEdited = _edits.haveCome();
    _hasAnswer = isSame && !wasEdited;
    _pixel = pixel;
    _shown = shown;
    return !_hasAnswer;
}
} // namespace OSG
