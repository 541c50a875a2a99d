#include "Panels.h"

#include <algorithm>

#include <imgui.h>

#include "HelpOverlay.h"
#include "MeasureTexts.h"
#include "OSGShownText.h"
#include "UnsavedQuestion.h"

namespace Viewer
{
namespace
{
constexpr ImGuiWindowFlags Fixed = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                                   ImGuiWindowFlags_NoSavedSettings |
                                   ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav;

// A text may hold any bytes, so that it is no label of Dear ImGui.
void draw_choices(Command const &command)
{
    if(!ImGui::BeginMenu(command.name, command.isReady()))
        return;
    auto const choices = command.choices();
    for(std::size_t i = 0; i < choices.size(); ++i)
    {
        std::string const text = OSG::shown_text(choices[i]);
        ImVec2 const place = ImGui::GetCursorPos();
        ImGui::PushID(static_cast<int>(i));
        if(ImGui::Selectable("##choice", false, 0, ImGui::CalcTextSize(text.c_str())))
            command.choose(choices[i]);
        ImGui::PopID();
        ImGui::SetCursorPos(place);
        ImGui::TextUnformatted(text.c_str());
    }
    ImGui::EndMenu();
}

// An open panel in a column, under its heading. The column scrolls to one that was just opened.
template <class Panel>
void draw_panel(SideColumn &column, char const *title, bool &isOpen, Panel &panel)
{
    if(!isOpen)
        return;
    bool const wasOpened = column.noteShown(title);
    ImGui::PushID(title);
    bool const isUnfolded = ImGui::CollapsingHeader(title, &isOpen, ImGuiTreeNodeFlags_DefaultOpen);
    if(wasOpened)
        ImGui::SetScrollHereY(0);
    if(isUnfolded)
        panel.draw();
    ImGui::PopID();
}

void draw_menu_item(Command const &command)
{
    if(command.beginsGroup)
        ImGui::Separator();
    if(command.choices)
    {
        draw_choices(command);
        return;
    }
    std::string const key = text_of(command.key);
    bool const isOn = command.isOn && command.isOn();
    if(ImGui::MenuItem(command.name, key.c_str(), isOn, command.isReady()))
        command.run();
}
} // namespace

Panels::Panels(Session &session, Commands const &commands, OpenPanels &open)
    : _session(session)
    , _commands(commands)
    , _open(open)
    , _tree(session)
    , _selection(session)
    , _sections(session)
    , _walk(session)
    , _operations(session)
    , _settings(session)
    , _cube(session)
    , _files(session, open.files)
{
}

void Panels::draw(float unitsPerPixel)
{
    drawMenus();
    draw_tool_shape(_session, unitsPerPixel);
    draw_measure_texts(_session, unitsPerPixel);
    drawBottomLine();
    drawColumns();
    float const width = ImGui::GetIO().DisplaySize.x;
    float const left = _left.endFrame();
    float const right = _right.endFrame();
    float const free = std::max(1.f, (width - 2 * std::max(left, right)) / unitsPerPixel);
    _session.driver.setFreeWidth(static_cast<OSG::UInt32>(free));
    if(_open.cube)
        _cube.draw(left, width - right, unitsPerPixel);
    drawProgress();
    _files.draw();
    draw_unsaved_question(_session, _open.files);
    if(_open.help)
        draw_help(_session, _commands, _open.help);
}

// Commands of one menu follow one another in the table.
void Panels::drawMenus()
{
    if(!ImGui::BeginMainMenuBar())
        return;
    for(std::size_t i = 0; i < _commands.size();)
    {
        std::string const menu = _commands[i].menu;
        bool const isOpen = ImGui::BeginMenu(menu.c_str());
        for(; i < _commands.size() && menu == _commands[i].menu; ++i)
        {
            if(isOpen)
                draw_menu_item(_commands[i]);
        }
        if(isOpen)
            ImGui::EndMenu();
    }
    ImGui::EndMainMenuBar();
}

void Panels::drawColumns()
{
    if(_open.tree)
    {
        _left.begin();
        draw_panel(_left, "Scene tree", _open.tree, _tree);
        ImGui::End();
    }
    if(!_open.selection && !_open.sections && !_open.walk && !_open.operations && !_open.settings)
        return;
    _right.begin();
    draw_panel(_right, "Selection", _open.selection, _selection);
    draw_panel(_right, "Sections", _open.sections, _sections);
    draw_panel(_right, "Walk console", _open.walk, _walk);
    draw_panel(_right, "Operations", _open.operations, _operations);
    draw_panel(_right, "Settings", _open.settings, _settings);
    ImGui::End();
}

void Panels::drawBottomLine()
{
    ImGuiIO const &io = ImGui::GetIO();
    float const height = ImGui::GetFrameHeightWithSpacing();
    ImGui::SetNextWindowPos(ImVec2(0, io.DisplaySize.y - height));
    ImGui::SetNextWindowSize(ImVec2(io.DisplaySize.x, height));
    ImGui::SetNextWindowBgAlpha(0.6f);
    if(ImGui::Begin("##bottom", nullptr, Fixed | ImGuiWindowFlags_NoInputs))
    {
        std::string text = std::string(name_of(_session.tools.getTool())) + " | " +
                           _session.engines.getName() + " | " +
                           std::to_string(_session.picking.getSelection().size()) + " selected";
        if(!_session.message.empty())
            text += " | " + _session.message;
        ImGui::TextUnformatted(text.c_str());
    }
    ImGui::End();
}

// Above the line at the bottom, and not for reads that are over at once: it would take clicks away.
void Panels::drawProgress()
{
    constexpr double Patience = 0.3; // seconds
    double const now = ImGui::GetTime();
    if(!_session.document.isReading())
        _readBegin = now;
    if(now < _readBegin + Patience)
        return;
    ImVec2 const size = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos(ImVec2(size.x / 2, size.y - ImGui::GetFrameHeightWithSpacing()), 0,
                            ImVec2(0.5f, 1));
    if(ImGui::Begin("##progress", nullptr, Fixed | ImGuiWindowFlags_AlwaysAutoResize))
    {
        ImGui::ProgressBar(_session.document.getProgress(), ImVec2(20 * ImGui::GetFontSize(), 0));
        ImGui::SameLine();
        if(ImGui::Button("Cancel"))
            _session.document.cancel();
    }
    ImGui::End();
}

void draw_tool_shape(Session const &session, float unitsPerPixel)
{
    auto const corners = session.tools.drawnShape();
    if(corners.size() < 2)
        return;
    ImU32 const color =
        session.tools.drawsEnclosed() ? IM_COL32(70, 150, 255, 255) : IM_COL32(80, 200, 90, 255);
    ImDrawList &list = *ImGui::GetBackgroundDrawList();
    for(OSG::Pnt2f const &corner : corners)
        list.PathLineTo(ImVec2(corner[0] * unitsPerPixel, corner[1] * unitsPerPixel));
    list.PathStroke(color, ImDrawFlags_Closed, 1.5f);
}
} // namespace Viewer
