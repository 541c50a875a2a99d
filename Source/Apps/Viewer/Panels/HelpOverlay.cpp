#include "HelpOverlay.h"

#include <algorithm>

#include <imgui.h>

#include "EngineHelp.h"

namespace Viewer
{
namespace
{
void draw_line(std::string const &keys, char const *does)
{
    ImGui::TableNextRow();
    ImGui::TableNextColumn();
    ImGui::TextUnformatted(keys.c_str());
    ImGui::TableNextColumn();
    ImGui::PushTextWrapPos(0);
    ImGui::TextUnformatted(does);
    ImGui::PopTextWrapPos();
}

bool begin_lines(char const *title)
{
    ImGui::TextDisabled("%s", title);
    if(!ImGui::BeginTable(title, 2, ImGuiTableFlags_RowBg))
        return false;
    ImGui::TableSetupColumn("keys", ImGuiTableColumnFlags_WidthFixed);
    ImGui::TableSetupColumn("does", ImGuiTableColumnFlags_WidthStretch);
    return true;
}

void draw_lines(char const *title, std::vector<HelpLine> const &lines)
{
    if(!begin_lines(title))
        return;
    for(HelpLine const &line : lines)
        draw_line(line.keys, line.does);
    ImGui::EndTable();
}

// The letters are not commands while an engine is steered by them.
void draw_commands(Commands const &commands, bool lettersAreTaken)
{
    if(!begin_lines(lettersAreTaken ? "Commands (letters and digits steer now)" : "Commands"))
        return;
    for(Command const &command : commands)
        if(command.key.code != 0 && !(lettersAreTaken && is_plain(command.key)))
            draw_line(text_of(command.key), command.name);
    ImGui::EndTable();
}
} // namespace

void draw_help(Session const &session, Commands const &commands, bool &isOpen)
{
    ImVec2 const size = ImGui::GetIO().DisplaySize;
    float const em = ImGui::GetFontSize();
    ImGui::SetNextWindowPos(ImVec2(size.x / 2, size.y / 2), ImGuiCond_Appearing,
                            ImVec2(0.5f, 0.5f));
    ImGui::SetNextWindowSize(
        ImVec2(std::min(58 * em, 0.96f * size.x), std::min(44 * em, 0.88f * size.y)),
        ImGuiCond_Appearing);
    ImGui::SetNextWindowBgAlpha(1);
    if(ImGui::Begin("Keys", &isOpen,
                    ImGuiWindowFlags_NoCollapse | ImGuiWindowFlags_NoSavedSettings) &&
       ImGui::BeginTable("##halves", 2))
    {
        std::string const engine = session.engines.getName();
        ImGui::TableNextColumn();
        draw_commands(commands, engine != "cad");
        ImGui::TableNextColumn();
        draw_lines(("Camera: " + engine).c_str(), help_of_engine(engine));
        ImGui::Spacing();
        draw_lines("Tools", help_of_tools());
        ImGui::EndTable();
    }
    bool const escapes = ImGui::IsWindowFocused(ImGuiFocusedFlags_RootAndChildWindows) &&
                         ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Escape));
    ImGui::End();
    isOpen = isOpen && !escapes;
}
} // namespace Viewer
