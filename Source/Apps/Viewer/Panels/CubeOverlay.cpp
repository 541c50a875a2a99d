#include "CubeOverlay.h"

#include <imgui.h>

namespace Viewer
{
namespace
{
constexpr float CubeEms = 8;
constexpr float TriadEms = 2.2f;
constexpr float LeastEmsForTriad = 40;     // of the view's width: the model has the room otherwise
constexpr float LeastShadeForText = 0.45f; // on a side that is seen from aside a text is not read
constexpr ImU32 PartColor = IM_COL32(80, 160, 255, 200);
constexpr ImU32 BorderColor = IM_COL32(40, 44, 50, 255);
constexpr ImU32 TextColor = IM_COL32(20, 22, 26, 255);
constexpr ImGuiWindowFlags Flags =
    ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoSavedSettings |
    ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav | ImGuiWindowFlags_NoBackground |
    ImGuiWindowFlags_NoBringToFrontOnFocus;

char const *title_of(OSG::StandardView standard)
{
    switch(standard)
    {
    case OSG::StandardView::Front:
        return "Front";
    case OSG::StandardView::Back:
        return "Back";
    case OSG::StandardView::Left:
        return "Left";
    case OSG::StandardView::Right:
        return "Right";
    case OSG::StandardView::Top:
        return "Top";
    case OSG::StandardView::Bottom:
        return "Bottom";
    default:
        return "";
    }
}

ImVec2 in_units(OSG::Pnt2f const &pixel, float unitsPerPixel)
{
    return {pixel[0] * unitsPerPixel, pixel[1] * unitsPerPixel};
}

void draw_face(OSG::ViewCube::Face const &face, float unitsPerPixel)
{
    ImDrawList &list = *ImGui::GetWindowDrawList();
    ImVec2 corners[4];
    ImVec2 middle(0, 0);
    for(std::size_t i = 0; i < 4; ++i)
    {
        corners[i] = in_units(face.corners[i], unitsPerPixel);
        middle = ImVec2(middle.x + corners[i].x / 4, middle.y + corners[i].y / 4);
    }
    int const grey = static_cast<int>(130 + 95 * face.shade);
    list.AddQuadFilled(corners[0], corners[1], corners[2], corners[3],
                       IM_COL32(grey, grey, grey + 5, 230));
    list.AddQuad(corners[0], corners[1], corners[2], corners[3], BorderColor, 1.5f);
    if(face.shade < LeastShadeForText)
        return;
    char const *const title = title_of(face.standard);
    ImVec2 const size = ImGui::CalcTextSize(title);
    list.AddText(ImVec2(middle.x - size.x / 2, middle.y - size.y / 2), TextColor, title);
}
} // namespace

// Only the cube itself hears the pointer; what is beside it in its square is the view's.
void CubeOverlay::draw(float left, float right, float unitsPerPixel)
{
    float const em = ImGui::GetFontSize();
    float const side = CubeEms * em;
    float const top = ImGui::GetFrameHeight() + em / 2;
    if(_session.view.getScene() == nullptr || unitsPerPixel <= 0)
        return;
    OSG::Pnt2f const middle((right - side / 2 - em / 2) / unitsPerPixel,
                            (top + side / 2) / unitsPerPixel);
    OSG::ViewCube const cube(_session.view.getView(), middle, side / unitsPerPixel,
                             _session.settings.sceneUp);
    ImVec2 const pointer = ImGui::GetMousePos();
    auto const part = cube.partAt(OSG::Pnt2f(pointer.x / unitsPerPixel, pointer.y / unitsPerPixel));
    ImGui::SetNextWindowPos(ImVec2(right - side - em / 2, top));
    ImGui::SetNextWindowSize(ImVec2(side, side));
    if(ImGui::Begin("##cube", nullptr, part ? Flags : Flags | ImGuiWindowFlags_NoMouseInputs))
        drawCube(cube, part, unitsPerPixel);
    ImGui::End();
    if(right - left < LeastEmsForTriad * em)
        return;
    OSG::Pnt2f const below((right - side / 2 - em / 2) / unitsPerPixel,
                           (top + side + 1.5f * TriadEms * em) / unitsPerPixel);
    drawTriad(below, TriadEms * em / unitsPerPixel, unitsPerPixel);
}

void CubeOverlay::drawCube(OSG::ViewCube const &cube, std::optional<OSG::CubePart> const &part,
                           float unitsPerPixel)
{
    for(OSG::ViewCube::Face const &face : cube.getFaces())
        draw_face(face, unitsPerPixel);
    if(!part || !ImGui::IsWindowHovered())
        return;
    for(OSG::ViewCube::Polygon const &polygon : cube.outlinesOf(*part))
        ImGui::GetWindowDrawList()->AddQuadFilled(
            in_units(polygon[0], unitsPerPixel), in_units(polygon[1], unitsPerPixel),
            in_units(polygon[2], unitsPerPixel), in_units(polygon[3], unitsPerPixel), PartColor);
    if(ImGui::IsMouseClicked(0))
        _session.driver.goTo(cube.viewFrom(_session.view.getView(), *part));
}

void CubeOverlay::drawTriad(OSG::Pnt2f const &middle, float length, float unitsPerPixel) const
{
    constexpr ImU32 Colors[] = {IM_COL32(230, 70, 70, 255), IM_COL32(90, 190, 80, 255),
                                IM_COL32(80, 130, 255, 255)};
    constexpr char const *Names[] = {"x", "y", "z"};
    ImDrawList &list = *ImGui::GetBackgroundDrawList();
    for(OSG::TriadAxis const &axis : OSG::triad_of(_session.view.getView(), length))
    {
        OSG::Pnt2f const tip = middle + axis.tip;
        ImU32 const color = Colors[axis.axis];
        list.AddLine(in_units(middle, unitsPerPixel), in_units(tip, unitsPerPixel), color, 2);
        OSG::Pnt2f const beyond = middle + axis.tip * 1.25f;
        ImVec2 const size = ImGui::CalcTextSize(Names[axis.axis]);
        ImVec2 const place = in_units(beyond, unitsPerPixel);
        list.AddText(ImVec2(place.x - size.x / 2, place.y - size.y / 2), color, Names[axis.axis]);
    }
}
} // namespace Viewer
