#include "RowButton.h"

#include <imgui.h>

namespace Viewer
{
bool row_button(char const *label)
{
    ImGuiStyle const &style = ImGui::GetStyle();
    float const width = ImGui::CalcTextSize(label, nullptr, true).x + 2 * style.FramePadding.x;
    float const end = ImGui::GetItemRectMax().x + style.ItemSpacing.x + width;
    if(end <= ImGui::GetWindowPos().x + ImGui::GetWindowContentRegionMax().x)
        ImGui::SameLine();
    return ImGui::Button(label);
}
} // namespace Viewer
