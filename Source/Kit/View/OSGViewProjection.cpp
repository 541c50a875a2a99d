#include "OSGViewProjection.h"

#include <cmath>

#include "OSGPictureView.h"
#include "OSGViewFrame.h"

namespace OSG
{
namespace
{
Real32 valid_field_of_view(WindowView const &view)
{
    bool const isValid = view.fieldOfView > 0 && view.fieldOfView < 180;
    return isValid ? view.fieldOfView : DefaultFieldOfView;
}

WindowView with_perspective(WindowView const &view)
{
    WindowView result = view;
    result.fieldOfView = valid_field_of_view(view);
    result.orthographicHeight.reset();
    return result;
}
} // namespace

WindowView to_orthographic(WindowView const &view)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    if(!frame || view.orthographicHeight)
        return view;
    WindowView result = view;
    result.orthographicHeight = static_cast<Real32>(shown_height(view, frame->offset.length()));
    return is_view(result) ? result : view;
}

WindowView to_perspective(WindowView const &view)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    if(!frame || !view.orthographicHeight)
        return view;
    WindowView const wanted = with_perspective(view);
    Real64 const distance = perspective_distance(view);
    return anchored_view(wanted, frame->axes.back * distance, view.up,
                         middle_anchor(wanted, wide(view.at), distance))
        .value_or(view);
}

Real64 perspective_distance(WindowView const &view)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    if(!frame)
        return 0;
    if(!view.orthographicHeight)
        return frame->offset.length();
    return *view.orthographicHeight / shown_height(with_perspective(view), 1);
}
} // namespace OSG
