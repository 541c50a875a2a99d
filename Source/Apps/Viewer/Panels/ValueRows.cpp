#include "ValueRows.h"

#include <imgui.h>

namespace Viewer
{
bool begin_values(char const *id)
{
    if(!ImGui::BeginTable(id, 3, ImGuiTableFlags_RowBg))
        return false;
    ImGui::TableSetupColumn("name", ImGuiTableColumnFlags_WidthFixed);
    ImGui::TableSetupColumn("value", ImGuiTableColumnFlags_WidthStretch);
    ImGui::TableSetupColumn("copy", ImGuiTableColumnFlags_WidthFixed);
    return true;
}

void value_row(char const *name, std::string const &value)
{
    ImGui::TableNextRow();
    ImGui::TableNextColumn();
    ImGui::TextDisabled("%s", name);
    ImGui::TableNextColumn();
    ImGui::PushID(name);
    ImGui::PushTextWrapPos(0);
    ImGui::TextUnformatted(value.c_str());
    ImGui::PopTextWrapPos();
    ImGui::TableNextColumn();
    if(ImGui::SmallButton("Copy"))
        ImGui::SetClipboardText(value.c_str());
    ImGui::PopID();
}

void end_values() { ImGui::EndTable(); }
} // namespace Viewer
