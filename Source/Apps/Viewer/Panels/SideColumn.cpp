#include "SideColumn.h"

#include <algorithm>
#include <utility>

#include <imgui.h>

namespace Viewer
{
namespace
{
constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoCollapse |
                                   ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoSavedSettings |
                                   ImGuiWindowFlags_NoFocusOnAppearing |
                                   ImGuiWindowFlags_NoBringToFrontOnFocus;
constexpr float LargestShare = 0.45f;
constexpr float SmallestEms = 10;
constexpr float LargestEmsAtStart = 24;
} // namespace

void SideColumn::begin()
{
    ImVec2 const size = ImGui::GetIO().DisplaySize;
    float const em = ImGui::GetFontSize();
    float const top = ImGui::GetFrameHeight();
    float const height = std::max(em, size.y - top - ImGui::GetFrameHeightWithSpacing());
    float const most = std::max(em, LargestShare * size.x);
    float const least = std::min(SmallestEms * em, most);
    float const usual =
        _wasSized ? _share * size.x : std::min(_share * size.x, LargestEmsAtStart * em);
    bool const isLeft = _side == Side::Left;
    ImGui::SetNextWindowPos(ImVec2(isLeft ? 0 : size.x, top), ImGuiCond_Always,
                            ImVec2(isLeft ? 0 : 1, 0));
    ImGui::SetNextWindowSize(ImVec2(std::clamp(usual, least, most), height));
    ImGui::SetNextWindowSizeConstraints(ImVec2(least, height), ImVec2(most, height));
    ImGui::SetNextWindowBgAlpha(0.9f);
    // The inner edge can be drawn; the corners have no handles.
    ImGui::PushStyleColor(ImGuiCol_ResizeGrip, IM_COL32_BLACK_TRANS);
    ImGui::Begin(_id, nullptr, Flags);
    ImGui::PopStyleColor();
    _width = ImGui::GetWindowWidth();
    _wasSized = true;
    _share = _width / std::max(1.f, size.x);
}

bool SideColumn::noteShown(std::string const &panel)
{
    _shown.insert(panel);
    return !_shownBefore.contains(panel);
}

float SideColumn::endFrame()
{
    _shownBefore = std::exchange(_shown, {});
    return std::exchange(_width, 0.f);
}
} // namespace Viewer
