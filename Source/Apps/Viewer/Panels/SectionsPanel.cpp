#include "SectionsPanel.h"

#include <imgui.h>

namespace Viewer
{
void SectionsPanel::draw()
{
    bool hasChanged = drawAdding();
    for(std::size_t number = 0; number < _session.sections.getCuts().size(); ++number)
    {
        ImGui::PushID(static_cast<int>(number));
        hasChanged = drawCut(number) || hasChanged;
        ImGui::PopID();
    }
    if(_session.sections.getCuts().empty())
        ImGui::TextDisabled("No planes.");
    if(hasChanged)
        _session.demand.request();
}

bool SectionsPanel::drawAdding()
{
    Sections &sections = _session.sections;
    auto const &clicked = _session.picking.getClicked();
    bool hasChanged = false;
    ImGui::AlignTextToFramePadding();
    ImGui::TextUnformatted("Cut across");
    ImGui::BeginDisabled(sections.isFull() || _session.view.getScene() == nullptr);
    char const *const axes[] = {"x", "y", "z"};
    for(OSG::UInt32 axis = 0; axis < 3; ++axis)
    {
        ImGui::SameLine();
        if(ImGui::Button(axes[axis]))
            hasChanged = sections.addAcross(axis) || hasChanged;
    }
    ImGui::SameLine();
    ImGui::BeginDisabled(!clicked);
    if(ImGui::Button("face") && clicked)
        hasChanged = sections.addAtFace(clicked->point, clicked->normal) || hasChanged;
    ImGui::EndDisabled();
    if(ImGui::IsItemHovered(ImGuiHoveredFlags_AllowWhenDisabled))
        ImGui::SetTooltip("The face that was clicked last.");
    ImGui::EndDisabled();
    return hasChanged;
}

bool SectionsPanel::drawCut(std::size_t number)
{
    Sections::Cut cut = _session.sections.getCuts()[number];
    bool hasChanged = ImGui::Checkbox(cut.name.c_str(), &cut.isOn);
    ImGui::SameLine();
    if(ImGui::SmallButton("Flip"))
    {
        cut.isFlipped = !cut.isFlipped;
        hasChanged = true;
    }
    ImGui::SameLine();
    bool const isRemoved = ImGui::SmallButton("Remove");
    ImGui::SetNextItemWidth(-1);
    hasChanged =
        ImGui::SliderFloat("##place", &cut.place, cut.first, cut.last, "%.4g") || hasChanged;
    if(isRemoved)
        _session.sections.remove(number);
    else if(hasChanged)
        _session.sections.set(number, cut);
    return hasChanged || isRemoved;
}
} // namespace Viewer
