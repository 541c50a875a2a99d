#include "SettingsPanel.h"

#include <cmath>

#include <imgui.h>

namespace Viewer
{
void SettingsPanel::draw()
{
    bool hasChanged = drawColors();
    hasChanged = drawUpward() || hasChanged;
    hasChanged = drawStyle() || hasChanged;
    hasChanged = drawMoves() || hasChanged;
    ImGui::Checkbox("Read a changed file again", &_session.settings.reloads);
    _session.document.setReloads(_session.settings.reloads);
    drawSamples();
    if(hasChanged)
        _session.applySettings();
}

bool SettingsPanel::drawColors()
{
    bool &isDark = _session.settings.isDark;
    bool const isChosenDark = ImGui::RadioButton("Dark", isDark);
    ImGui::SameLine();
    bool const isChosenLight = ImGui::RadioButton("Light", !isDark);
    if(isChosenDark || isChosenLight)
        isDark = isChosenDark;
    return isChosenDark || isChosenLight;
}

bool SettingsPanel::drawUpward()
{
    OSG::SceneUp &up = _session.settings.sceneUp;
    bool const isY = ImGui::RadioButton("Y is up", up == OSG::SceneUp::Y);
    ImGui::SameLine();
    bool const isZ = ImGui::RadioButton("Z is up", up == OSG::SceneUp::Z);
    if(isY || isZ)
        up = isZ ? OSG::SceneUp::Z : OSG::SceneUp::Y;
    return isY || isZ;
}

bool SettingsPanel::drawStyle()
{
    Settings &settings = _session.settings;
    bool hasChanged = false;
    for(StyleName const &name : style_names())
    {
        if(!ImGui::RadioButton(name.title, settings.style == name.style))
            continue;
        settings.style = name.style;
        hasChanged = true;
    }
    return ImGui::Checkbox("Sharp edges", &settings.showsEdges) || hasChanged;
}

bool SettingsPanel::drawMoves()
{
    Settings &settings = _session.settings;
    bool hasChanged = ImGui::Checkbox("A click is the centre of turns", &settings.clickCenters);
    hasChanged =
        ImGui::Checkbox("The wheel zooms to the pointer", &settings.zoomsToPointer) || hasChanged;
    OSG::Navigator &navigator = _session.view.getNavigator();
    float step = navigator.getMotionFactor();
    ImGui::SetNextItemWidth(6 * ImGui::GetFontSize());
    if(ImGui::InputFloat("Step of a motion", &step, 0, 0, "%.4g",
                         ImGuiInputTextFlags_EnterReturnsTrue) &&
       std::isfinite(step) && step > 0)
        navigator.setMotionFactor(step);
    if(ImGui::IsItemHovered())
        ImGui::SetTooltip("In units of the scene. A new scene has one by its size.");
    return hasChanged;
}

void SettingsPanel::drawSamples()
{
    int const numbers[] = {0, 2, 4, 8, 16};
    int &samples = _session.settings.samples;
    ImGui::SetNextItemWidth(6 * ImGui::GetFontSize());
    if(ImGui::BeginCombo("Samples a pixel", std::to_string(samples).c_str()))
    {
        for(int number : numbers)
            if(ImGui::Selectable(std::to_string(number).c_str(), number == samples))
                samples = number;
        ImGui::EndCombo();
    }
    ImGui::TextDisabled("Samples hold from the next start on.");
}
} // namespace Viewer
