#include "SelectionPanel.h"

#include <algorithm>

#include <imgui.h>

#include "OSGShownText.h"
#include "RowButton.h"
#include "SceneRows.h"
#include "ValueRows.h"
#include "ValueTexts.h"

namespace Viewer
{
namespace
{
char const *kind_name(OSG::SelectionFunctor::SelectionType kind)
{
    switch(kind)
    {
    case OSG::SelectionFunctor::SelectLines:
        return "line";
    case OSG::SelectionFunctor::SelectPoints:
        return "point";
    default:
        return "triangle";
    }
}

std::string title_of(OSG::PickResult const &result)
{
    OSG::Node const &node = *result.getNode();
    return OSG::shown_text(result.name.empty() ? label_of(node, number_of(node)) : result.name);
}
} // namespace

void SelectionPanel::draw()
{
    drawSelected();
    ImGui::Separator();
    drawKinds();
    ImGui::Separator();
    if(auto const &clicked = _session.picking.getClicked())
        drawClicked(*clicked);
    else
        ImGui::TextDisabled("A click shows what it hits.");
    drawUnderPointer();
    drawMeasured();
}

void SelectionPanel::drawSelected()
{
    Picking &picking = _session.picking;
    bool const isEmpty = picking.getSelection().isEmpty();
    ImGui::Text("%zu selected", picking.getSelection().size());
    ImGui::BeginDisabled(isEmpty);
    bool const hides = ImGui::Button("Hide");
    bool const isolates = row_button("Isolate");
    ImGui::EndDisabled();
    ImGui::BeginDisabled(!picking.isAnythingHidden());
    bool const shows = row_button("Show all");
    ImGui::EndDisabled();
    if(hides)
        picking.hideSelection();
    if(isolates)
        picking.isolateSelection();
    if(shows)
        picking.showAll();
    if(hides || isolates || shows)
        _session.demand.request();
}

void SelectionPanel::drawKinds()
{
    using Functor = OSG::SelectionFunctor;
    OSG::ScenePicker &picker = _session.picking.getPicker();
    std::pair<char const *, OSG::UInt32> const kinds[] = {{"Triangles", Functor::SelectTriangles},
                                                          {"Lines", Functor::SelectLines},
                                                          {"Points", Functor::SelectPoints}};
    OSG::UInt32 chosen = picker.getKinds();
    ImGui::TextUnformatted("Picks find");
    for(auto const &[name, kind] : kinds)
        ImGui::CheckboxFlags(name, &chosen, kind);
    picker.setKinds(chosen);
}

void SelectionPanel::drawClicked(OSG::PickResult const &clicked)
{
    if(!(clicked.path == _path))
    {
        _path = clicked.path;
        _address = _path.text(_session.view.getScene());
    }
    if(!begin_values("clicked"))
        return;
    value_row("Name", title_of(clicked));
    value_row("Path", _address);
    if(clicked.entity != 0)
        value_row("Entity", std::to_string(clicked.entity));
    value_row("Kind",
              std::string(kind_name(clicked.kind)) + ' ' + std::to_string(clicked.primitive));
    value_row("Point", text_of_tuple(clicked.point));
    value_row("Normal", text_of_tuple(clicked.normal));
    if(clicked.eyeDistance)
        value_row("From eye", text_of_number(*clicked.eyeDistance));
    end_values();
}

void SelectionPanel::drawMeasured()
{
    auto const values = values_of_measurement(_session.picking.getMeasured());
    if(values.empty())
        return;
    ImGui::Separator();
    if(begin_values("measured"))
    {
        for(NamedValue const &row : values)
            value_row(row.name, row.value);
        end_values();
    }
    if(ImGui::Button("Clear"))
        _session.picking.measure({});
}

void SelectionPanel::drawUnderPointer()
{
    OSG::PickCycle const &cycle = _session.picking.getUnderClick();
    if(cycle.getResults().size() < 2)
        return;
    auto const &results = cycle.getResults();
    int const current = static_cast<int>(cycle.current() - results.data());
    int steps = 0;
    ImGui::Separator();
    ImGui::Text("Under the click: %zu", results.size());
    float const rows = static_cast<float>(std::min<std::size_t>(results.size(), 8));
    float const height = (rows + 0.5f) * ImGui::GetTextLineHeightWithSpacing();
    ImGui::BeginChild("##under", ImVec2(0, height), true, ImGuiWindowFlags_NoScrollWithMouse);
    if(ImGui::IsWindowHovered())
        steps = -_wheel.take(ImGui::GetIO().MouseWheel);
    ImGuiListClipper clipper;
    clipper.Begin(static_cast<int>(results.size()), ImGui::GetTextLineHeightWithSpacing());
    while(clipper.Step())
    {
        for(int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i)
        {
            OSG::PickResult const &result = results[static_cast<std::size_t>(i)];
            ImGui::PushID(i);
            ImVec2 const place = ImGui::GetCursorPos();
            if(ImGui::Selectable("##result", i == current))
                steps = i - current;
            ImGui::SetCursorPos(place);
            ImGui::TextUnformatted(title_of(result).c_str());
            ImGui::SameLine();
            std::string const distance =
                result.eyeDistance ? text_of_number(*result.eyeDistance) : "";
            ImGui::TextDisabled("%s %s", kind_name(result.kind), distance.c_str());
            ImGui::PopID();
        }
    }
    if(steps != 0)
        ImGui::SetScrollY((static_cast<float>(current + steps) - rows / 2) *
                          ImGui::GetTextLineHeightWithSpacing());
    ImGui::EndChild();
    if(steps != 0)
        _session.picking.selectOther(steps);
}
} // namespace Viewer
