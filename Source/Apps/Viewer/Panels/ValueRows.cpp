#include "ValueRows.h"

#include <imgui.h>

namespace Viewer
{
namespace
{
constexpr float NarrowEms = 18;

void draw_value(std::string const &value)
{
    ImGui::PushTextWrapPos(0);
    ImGui::TextUnformatted(value.c_str());
    ImGui::PopTextWrapPos();
}

void draw_copy_button(std::string const &value)
{
    if(ImGui::SmallButton("Copy"))
        ImGui::SetClipboardText(value.c_str());
}
} // namespace

// In a narrow column the value stands below its name.
bool begin_values(char const *id)
{
    if(ImGui::GetContentRegionAvail().x < NarrowEms * ImGui::GetFontSize())
        return ImGui::BeginTable(id, 1, ImGuiTableFlags_RowBg);
    if(!ImGui::BeginTable(id, 3, ImGuiTableFlags_RowBg))
        return false;
    ImGui::TableSetupColumn("name", ImGuiTableColumnFlags_WidthFixed);
    ImGui::TableSetupColumn("value", ImGuiTableColumnFlags_WidthStretch);
    ImGui::TableSetupColumn("copy", ImGuiTableColumnFlags_WidthFixed);
    return true;
}

void value_row(char const *name, std::string const &value)
{
    bool const isNarrow = ImGui::TableGetColumnCount() == 1;
    ImGui::PushID(name);
    ImGui::TableNextRow();
    ImGui::TableNextColumn();
    ImGui::TextDisabled("%s", name);
    if(isNarrow)
    {
        ImGui::SameLine();
        draw_copy_button(value);
        draw_value(value);
    }
    else
    {
        ImGui::TableNextColumn();
        draw_value(value);
        ImGui::TableNextColumn();
        draw_copy_button(value);
    }
    ImGui::PopID();
}

void end_values() { ImGui::EndTable(); }
} // namespace Viewer
