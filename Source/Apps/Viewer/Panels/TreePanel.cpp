#include "TreePanel.h"

#include <algorithm>
#include <filesystem>

#include <imgui.h>
#include <imgui_stdlib.h>

#include "OSGPointerTool.h"
#include "OSGShownText.h"

namespace Viewer
{
namespace
{
constexpr OSG::UInt32 MostIndents = 24; // deeper rows stand no farther to the right

OSG::UInt16 modifiers_down()
{
    ImGuiIO const &io = ImGui::GetIO();
    int const bits =
        (io.KeyShift ? OSG::PointerTool::Shift : 0) | (io.KeyCtrl ? OSG::PointerTool::Control : 0);
    return static_cast<OSG::UInt16>(bits);
}

// Whether the row is open or closed, as a triangle.
bool draw_arrow(SceneRows::Row const &row)
{
    float const size = ImGui::GetFontSize();
    ImVec2 const corner = ImGui::GetCursorScreenPos();
    bool const isPressed = ImGui::InvisibleButton("open", ImVec2(size, size)) && row.hasBelow;
    if(!row.hasBelow)
        return false;
    ImVec2 const middle(corner.x + size / 2, corner.y + size / 2);
    float const r = size * 0.3f;
    ImU32 const color =
        ImGui::GetColorU32(ImGui::IsItemHovered() ? ImGuiCol_CheckMark : ImGuiCol_Text);
    ImDrawList &list = *ImGui::GetWindowDrawList();
    if(row.isOpen)
        list.AddTriangleFilled(ImVec2(middle.x - r, middle.y - r * 0.6f),
                               ImVec2(middle.x + r, middle.y - r * 0.6f),
                               ImVec2(middle.x, middle.y + r), color);
    else
        list.AddTriangleFilled(ImVec2(middle.x - r * 0.6f, middle.y - r),
                               ImVec2(middle.x + r, middle.y),
                               ImVec2(middle.x - r * 0.6f, middle.y + r), color);
    return isPressed;
}

// An eye that is open, or a closed lid.
bool draw_eye_button(bool isOpen)
{
    float const size = ImGui::GetFontSize();
    ImVec2 const corner = ImGui::GetCursorScreenPos();
    bool const isPressed = ImGui::InvisibleButton("eye", ImVec2(size * 1.2f, size));
    ImVec2 const middle(corner.x + size * 0.6f, corner.y + size / 2);
    float const half = size * 0.5f;
    ImU32 const color = ImGui::GetColorU32(ImGui::IsItemHovered() ? ImGuiCol_CheckMark
                                           : isOpen               ? ImGuiCol_Text
                                                                  : ImGuiCol_TextDisabled);
    ImDrawList &list = *ImGui::GetWindowDrawList();
    ImVec2 const left(middle.x - half, middle.y);
    ImVec2 const right(middle.x + half, middle.y);
    list.AddBezierQuadratic(left, ImVec2(middle.x, middle.y + half * 1.2f), right, color, 1.2f);
    if(isOpen)
    {
        list.AddBezierQuadratic(left, ImVec2(middle.x, middle.y - half * 1.2f), right, color, 1.2f);
        list.AddCircleFilled(middle, size * 0.17f, color);
    }
    return isPressed;
}
} // namespace

TreePanel::TreePanel(Session &session)
    : _session(session)
{
    _session.picking.getSelection().addObserver(this);
}

TreePanel::~TreePanel() { _session.picking.getSelection().removeObserver(this); }

void TreePanel::selectionChanged(OSG::SelectionSet const &, OSG::SelectionSet::Change const &change)
{
    if(!_isSelecting && !change.came.empty())
        _selected = change.came.back();
}

void TreePanel::draw()
{
    _rows.update(_session.view.getScene());
    if(_session.view.getScene() == nullptr)
    {
        drawNoScene();
        return;
    }
    drawSearch();
    ImGui::BeginChild(_word.empty() ? "##rows" : "##found");
    if(_word.empty())
        drawRows();
    else
        drawFound();
    ImGui::EndChild();
}

void TreePanel::drawNoScene()
{
    OSG::SceneDocument const &document = _session.document;
    std::filesystem::path const file = document.getFileBeingRead();
    std::string const text = document.isReading()
                                 ? "Reading " + OSG::shown_text(file.filename().string()) + " ..."
                                 : "No scene. Ctrl+O opens a file.";
    ImGui::PushTextWrapPos(0);
    ImGui::TextDisabled("%s", text.c_str());
    ImGui::PopTextWrapPos();
}

void TreePanel::drawSearch()
{
    ImGui::SetNextItemWidth(-1);
    ImGui::InputTextWithHint("##search", "Search name or type", &_word);
    _search.update(_session.view.getScene(), _word);
}

void TreePanel::revealSelected()
{
    if(!_selected)
        return;
    std::size_t const index = _rows.reveal(*_selected);
    _selected.reset();
    if(index == _rows.getRows().size())
        return;
    float const height = ImGui::GetTextLineHeightWithSpacing();
    float const top = static_cast<float>(index) * height;
    float const shown = ImGui::GetWindowHeight();
    if(top < ImGui::GetScrollY() || top + height > ImGui::GetScrollY() + shown)
        ImGui::SetScrollY(std::max(0.f, top - shown / 2));
}

void TreePanel::drawRows()
{
    revealSelected();
    std::optional<std::size_t> toggled;
    ImGuiListClipper clipper;
    clipper.Begin(static_cast<int>(_rows.getRows().size()), ImGui::GetTextLineHeightWithSpacing());
    while(clipper.Step())
    {
        for(int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i)
        {
            ImGui::PushID(i);
            if(drawRow(_rows.getRows()[static_cast<std::size_t>(i)]))
                toggled = static_cast<std::size_t>(i);
            ImGui::PopID();
        }
    }
    if(toggled)
        _rows.toggle(*toggled);
}

bool TreePanel::drawRow(SceneRows::Row const &row)
{
    OSG::NodePath const path = _rows.pathOf(row);
    drawEye(path);
    ImGui::SameLine(0, 0);
    float const indent =
        static_cast<float>(std::min(row.depth, MostIndents)) * ImGui::GetFontSize() * 0.8f;
    ImGui::SetCursorPosX(ImGui::GetCursorPosX() + indent);
    bool isToggled = draw_arrow(row);
    ImGui::SameLine(0, 2);
    bool const isNameHovered = drawName(path, label_of(*row.node, row.number), {});
    if(row.hasBelow && isNameHovered && ImGui::IsMouseDoubleClicked(0))
        isToggled = true;
    return isToggled;
}

void TreePanel::drawEye(OSG::NodePath const &path)
{
    OSG::AppearanceTable &table = _session.view.getRenderAction()->editAppearances();
    bool const isHidden = table.isHidden(path);
    if(!draw_eye_button(!isHidden))
        return;
    if(isHidden)
        table.show(path);
    else
        table.hide(path);
    _session.demand.request();
}

// A name may hold any bytes, so that it is no label of Dear ImGui.
bool TreePanel::drawName(OSG::NodePath const &path, std::string const &name,
                         std::string const &address)
{
    OSG::AppearanceTable const &table = _session.view.getRenderAction()->getAppearances();
    bool const isSelected = _session.picking.getSelection().contains(path);
    ImVec2 const place = ImGui::GetCursorPos();
    if(ImGui::Selectable("##name", isSelected, ImGuiSelectableFlags_AllowItemOverlap))
    {
        _isSelecting = true;
        _session.picking.selectPath(path, modifiers_down());
        _isSelecting = false;
    }
    bool const isHovered = ImGui::IsItemHovered();
    ImGui::SetCursorPos(place);
    std::string const shown = OSG::shown_text(name);
    if(table.isHidden(path))
        ImGui::TextDisabled("%s", shown.c_str());
    else
        ImGui::TextUnformatted(shown.c_str());
    if(!address.empty())
    {
        ImGui::SameLine();
        ImGui::TextDisabled("%s", address.c_str());
    }
    bool const isCut =
        ImGui::GetItemRectMax().x > ImGui::GetWindowPos().x + ImGui::GetWindowContentRegionMax().x;
    if(isHovered && isCut)
        ImGui::SetTooltip("%s %s", shown.c_str(), address.c_str());
    return isHovered;
}

void TreePanel::drawFound()
{
    SceneSearch const &search = _search.getAnswer();
    if(search.found.empty())
        ImGui::TextDisabled("Nothing found.");
    ImGuiListClipper clipper;
    clipper.Begin(static_cast<int>(search.found.size()), ImGui::GetTextLineHeightWithSpacing());
    while(clipper.Step())
    {
        for(int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i)
        {
            SceneSearch::Found const &found = search.found[static_cast<std::size_t>(i)];
            ImGui::PushID(i);
            drawEye(found.path);
            ImGui::SameLine(0, 2);
            drawName(found.path, label_of(*found.path.getNode()), found.address);
            ImGui::PopID();
        }
    }
    if(search.isCut)
        ImGui::TextDisabled("There are more.");
}
} // namespace Viewer
