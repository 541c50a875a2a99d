#include "MeasureTexts.h"

#include <imgui.h>

#include "OSGViewMoves.h"
#include "ValueTexts.h"

namespace Viewer
{
void draw_measure_texts(Session const &session, float unitsPerPixel)
{
    OSG::WindowView const view = session.view.getView();
    ImDrawList &list = *ImGui::GetBackgroundDrawList();
    float const gap = ImGui::GetFontSize() / 2;
    for(MeasureLabel const &label : labels_of_measurement(session.measureMarks.getPoints()))
    {
        auto const pixel = OSG::pixel_of(view, label.place);
        if(!pixel)
            continue;
        ImVec2 const place((*pixel)[0] * unitsPerPixel + gap, (*pixel)[1] * unitsPerPixel + gap);
        ImVec2 const size = ImGui::CalcTextSize(label.text.c_str());
        list.AddRectFilled(ImVec2(place.x - gap / 2, place.y - gap / 4),
                           ImVec2(place.x + size.x + gap / 2, place.y + size.y + gap / 4),
                           ImGui::GetColorU32(ImGuiCol_WindowBg), 3);
        list.AddText(place, ImGui::GetColorU32(ImGuiCol_Text), label.text.c_str());
    }
}
} // namespace Viewer
