#include "ValueRows.h"

#include <cstdio>

#include <imgui.h>

namespace Viewer
{
std::string text_of_number(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

std::string text_of_tuple(OSG::Pnt3f const &point)
{
    return text_of_number(point[0]) + ", " + text_of_number(point[1]) + ", " +
           text_of_number(point[2]);
}

std::string text_of_tuple(OSG::Vec3f const &vector)
{
    return text_of_tuple(OSG::Pnt3f(vector[0], vector[1], vector[2]));
}

bool begin_values(char const *id)
{
    if(!ImGui::BeginTable(id, 2, ImGuiTableFlags_RowBg))
        return false;
    ImGui::TableSetupColumn("name", ImGuiTableColumnFlags_WidthFixed);
    ImGui::TableSetupColumn("value", ImGuiTableColumnFlags_WidthStretch);
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
    if(ImGui::IsItemClicked())
        ImGui::SetClipboardText(value.c_str());
    if(ImGui::IsItemHovered())
        ImGui::SetTooltip("A click copies.");
    ImGui::PopID();
}

void end_values() { ImGui::EndTable(); }
} // namespace Viewer
