#include "Panels.h"

#include <imgui.h>

namespace Viewer
{
namespace
{
constexpr ImGuiWindowFlags Fixed = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                                   ImGuiWindowFlags_NoSavedSettings |
                                   ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav;

void draw_menu_item(Command const &command)
{
    if(command.beginsGroup)
        ImGui::Separator();
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
{
}

void Panels::draw(float unitsPerPixel)
{
    drawMenus();
    draw_tool_shape(_session, unitsPerPixel);
    drawBottomLine();
    drawProgress();
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

void Panels::drawProgress()
{
    if(!_session.document.isReading())
        return;
    ImGuiIO const &io = ImGui::GetIO();
    ImGui::SetNextWindowPos(ImVec2(io.DisplaySize.x / 2, io.DisplaySize.y / 2), 0,
                            ImVec2(0.5f, 0.5f));
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

void draw_help(Session const &, Commands const &commands, bool &isOpen)
{
    ImGui::SetNextWindowPos(ImVec2(60, 60), ImGuiCond_FirstUseEver);
    if(ImGui::Begin("Keys", &isOpen,
                    ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings))
    {
        for(Command const &command : commands)
            if(command.key.code != 0)
                ImGui::Text("%-14s %s", text_of(command.key).c_str(), command.name);
    }
    ImGui::End();
}
} // namespace Viewer
