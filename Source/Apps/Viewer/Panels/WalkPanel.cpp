#include "WalkPanel.h"

#include <cmath>
#include <filesystem>

#include <imgui.h>
#include <imgui_stdlib.h>

#include "OSGShownText.h"
#include "OSGWalkSettingNames.h"
#include "PersonSettings.h"
#include "RowButton.h"
#include "WayPlot.h"

namespace Viewer
{
namespace
{
constexpr double SketchSeconds = 0.5; // between two sketches of a way that is being recorded
constexpr float SketchEms = 10;
} // namespace

void WalkPanel::draw()
{
    ImGui::BeginDisabled(_session.console.getScene() == nullptr);
    drawMarks();
    drawHome();
    ImGui::Separator();
    drawWay();
    ImGui::EndDisabled();
    ImGui::Separator();
    drawPerson();
}

// What the console stores is saved with the scene.
void WalkPanel::noteEdit() { _session.document.setNeedsSaving(); }

void WalkPanel::drawMarks()
{
    OSG::WalkConsole &console = _session.console;
    ImGui::SetNextItemWidth(-4.5f * ImGui::GetFontSize());
    bool const isEntered = ImGui::InputTextWithHint("##label", "Name of a mark", &_label,
                                                    ImGuiInputTextFlags_EnterReturnsTrue);
    ImGui::SameLine();
    if(ImGui::Button("Add") || isEntered)
    {
        _session.addMark(_label);
        _label.clear();
    }
    drawMarkList();
    ImGui::BeginDisabled(console.getMarkIndex() < 0);
    if(ImGui::Button("<"))
        console.goToPreviousMark();
    if(row_button(">"))
        console.goToNextMark();
    if(row_button("Remove") && console.removeMark())
        noteEdit();
    if(row_button("Clear##marks") && console.clearMarks())
        noteEdit();
    ImGui::EndDisabled();
}

void WalkPanel::drawMarkList()
{
    OSG::WalkConsole &console = _session.console;
    std::vector<std::string> const labels = console.getMarkLabels();
    ImGui::BeginChild("##marks", ImVec2(0, 5 * ImGui::GetTextLineHeightWithSpacing()), true);
    if(labels.empty())
        ImGui::TextDisabled("No marks.");
    for(std::size_t i = 0; i < labels.size(); ++i)
    {
        ImGui::PushID(static_cast<int>(i));
        ImVec2 const place = ImGui::GetCursorPos();
        if(ImGui::Selectable("##mark", static_cast<int>(i) == console.getMarkIndex()))
            console.goToMark(static_cast<OSG::UInt32>(i));
        ImGui::SetCursorPos(place);
        std::string const label = OSG::shown_text(labels[i]);
        ImGui::Text("%zu %s", i + 1, label.c_str());
        ImGui::PopID();
    }
    ImGui::EndChild();
}

void WalkPanel::drawHome()
{
    OSG::WalkConsole &console = _session.console;
    if(ImGui::Button("Set home") && console.setHome())
        noteEdit();
    ImGui::BeginDisabled(!console.hasHome());
    if(row_button("Go home"))
        console.goHome();
    ImGui::EndDisabled();
}

void WalkPanel::drawWay()
{
    OSG::WalkConsole &console = _session.console;
    bool const isRecording = console.isRecording();
    bool const isPlaying = console.isPlaying();
    if(ImGui::Button(isRecording ? "Stop###record" : "Record###record"))
        _session.toggleWay();
    ImGui::BeginDisabled(length_of_way(console) == 0);
    if(row_button(isPlaying ? "Stop###play" : "Play###play"))
    {
        if(isPlaying)
            console.stopPlaying();
        else
            console.startPlaying();
    }
    if(row_button("Clear##way") && console.clearRecording())
        noteEdit();
    ImGui::EndDisabled();
    drawSketch();
    drawPlot();
}

// The way is copied for a sketch, so that this is not done in each frame of a recording.
void WalkPanel::drawSketch()
{
    OSG::WalkConsole const &console = _session.console;
    double const now = ImGui::GetTime();
    std::size_t const length = length_of_way(console);
    bool const isOther =
        console.getScene() != _sketched || (length != _sketchLength && !console.isRecording());
    if(isOther || length < _sketchLength || now >= _sketchTime + SketchSeconds)
    {
        _sketchLength = length;
        _sketch = sketch_way(console.getWay(), _session.settings.sceneUp == OSG::SceneUp::Z);
        _sketched = console.getScene();
        _sketchTime = now;
    }
    float const size = std::min(SketchEms * ImGui::GetFontSize(), ImGui::GetContentRegionAvail().x);
    ImVec2 const corner = ImGui::GetCursorScreenPos();
    ImGui::Dummy(ImVec2(size, size));
    ImDrawList &list = *ImGui::GetWindowDrawList();
    list.AddRect(corner, ImVec2(corner.x + size, corner.y + size),
                 ImGui::GetColorU32(ImGuiCol_Border));
    auto const place = [&](OSG::Pnt2f const &point)
    {
        return ImVec2(corner.x + size * (0.05f + 0.9f * point[0]),
                      corner.y + size * (0.05f + 0.9f * point[1]));
    };
    for(OSG::Pnt2f const &point : _sketch)
        list.PathLineTo(place(point));
    list.PathStroke(ImGui::GetColorU32(ImGuiCol_CheckMark), 0, 1.5f);
    if(!_sketch.empty())
        list.AddCircle(place(_sketch.front()), 4, ImGui::GetColorU32(ImGuiCol_Text));
}

void WalkPanel::drawPlot()
{
    ImGui::SetNextItemWidth(-6.5f * ImGui::GetFontSize());
    if(ImGui::InputText("##plot", &_plotFile))
        _asksToReplace = false;
    ImGui::SameLine();
    ImGui::BeginDisabled(_plotFile.empty() || length_of_way(_session.console) == 0);
    if(ImGui::Button(_asksToReplace ? "Replace?###plot" : "Save plot###plot"))
    {
        std::error_code error;
        bool const isNew = !std::filesystem::exists(_plotFile, error);
        if(isNew || _asksToReplace)
        {
            OSG::Vec3f const up =
                OSG::standard_up(OSG::StandardView::Front, _session.settings.sceneUp);
            std::string const reason = save_way_plot(_plotFile, _session.console.getScene(),
                                                     _session.console.getWay(), up);
            _session.message =
                reason.empty() ? "saved " + _plotFile : "cannot write " + _plotFile + ": " + reason;
        }
        _asksToReplace = !isNew && !_asksToReplace;
    }
    ImGui::EndDisabled();
}

void WalkPanel::drawPerson()
{
    OSG::WASDWalkEngine *const walk = _session.engines.getWalk();
    if(walk == nullptr)
    {
        ImGui::TextDisabled("The person's settings: while walking.");
        return;
    }
    ImGui::PushItemWidth(6 * ImGui::GetFontSize());
    for(PersonLength const &length : person_lengths())
    {
        float value = (walk->*length.get)();
        if(ImGui::InputFloat(length.name, &value, 0, 0, "%.4g",
                             ImGuiInputTextFlags_EnterReturnsTrue) &&
           std::isfinite(value))
            (walk->*length.set)(value);
    }
    ImGui::PopItemWidth();
    for(PersonMode const &mode : person_modes())
    {
        bool isOn = (walk->*mode.get)();
        if(ImGui::Checkbox(mode.name, &isOn))
            (walk->*mode.set)(isOn);
    }
    drawOtherSettings(*walk);
}

void WalkPanel::drawOtherSettings(OSG::WASDWalkEngine &walk)
{
    ImGui::SetNextItemWidth(-1);
    if(ImGui::BeginCombo("##setting", _setting.empty() ? "Another setting" : _setting.c_str()))
    {
        for(std::string const &name : OSG::walk_setting_names())
            if(ImGui::Selectable(name.c_str(), name == _setting))
                _setting = name;
        ImGui::EndCombo();
    }
    ImGui::SetNextItemWidth(6 * ImGui::GetFontSize());
    ImGui::InputTextWithHint("##value", "Value", &_value);
    ImGui::SameLine();
    ImGui::BeginDisabled(_setting.empty());
    if(ImGui::Button("Set"))
    {
        bool const isSet =
            OSG::set_walk_setting(walk, _setting, _value) == OSG::WalkSettingResult::Set;
        _session.message = isSet ? _setting + " is " + _value
                                 : '\'' + OSG::shown_text(_value) + "' is no value for " + _setting;
    }
    ImGui::EndDisabled();
}
} // namespace Viewer
