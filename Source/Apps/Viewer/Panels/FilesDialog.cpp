#include "FilesDialog.h"

#include <algorithm>

#include <imgui.h>
#include <imgui_stdlib.h>

#include "OSGShownText.h"

namespace Viewer
{
namespace
{
constexpr int PageRows = 10;

bool is_pressed(ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key)); }
} // namespace

void FilesDialog::draw()
{
    bool const isFirst = _chooser.isAsking() && !_wasAsking;
    _wasAsking = _chooser.isAsking();
    if(!_chooser.isAsking())
        return;
    ImVec2 const size = ImGui::GetIO().DisplaySize;
    float const em = ImGui::GetFontSize();
    ImGui::SetNextWindowPos(ImVec2(size.x / 2, size.y / 2), ImGuiCond_Appearing,
                            ImVec2(0.5f, 0.5f));
    ImGui::SetNextWindowSize(
        ImVec2(std::min(42 * em, 0.9f * size.x), std::min(32 * em, 0.8f * size.y)),
        ImGuiCond_Appearing);
    ImGui::SetNextWindowBgAlpha(1);
    bool isOpen = true;
    char const *const title = _chooser.isForSaving() ? "Save as###files" : "Open###files";
    if(ImGui::Begin(title, &isOpen, ImGuiWindowFlags_NoCollapse | ImGuiWindowFlags_NoSavedSettings))
    {
        if(isFirst)
            ImGui::SetWindowFocus();
        auto const replaced = _chooser.getReplaced();
        ImGui::BeginDisabled(replaced.has_value());
        drawFolder();
        drawName();
        drawEntries();
        if(!replaced)
            drawButtons();
        ImGui::EndDisabled();
        if(replaced)
            drawReplaced(*replaced);
    }
    bool const escapes = ImGui::IsWindowFocused(ImGuiFocusedFlags_RootAndChildWindows) &&
                         is_pressed(ImGuiKey_Escape);
    ImGui::End();
    if(!isOpen || escapes)
        _chooser.end();
}

void FilesDialog::drawFolder()
{
    if(ImGui::Button("Up"))
        _chooser.enterParent();
    ImGui::SameLine();
    if(ImGui::Button("Home"))
        _chooser.enterHome();
    ImGui::SameLine();
    ImGui::TextUnformatted(OSG::shown_text(_chooser.getList().folder.string()).c_str());
}

void FilesDialog::drawName()
{
    if(!ImGui::IsAnyItemActive() && !ImGui::IsMouseDown(0) && !_chooser.getReplaced() &&
       ImGui::IsWindowFocused(ImGuiFocusedFlags_RootAndChildWindows))
        ImGui::SetKeyboardFocusHere();
    ImGui::SetNextItemWidth(-1);
    _typed = _chooser.getTyped();
    char const *const hint =
        _chooser.isForSaving() ? "Name of the file (.osb or .obj)" : "Part of a name, or a path";
    bool const isEntered =
        ImGui::InputTextWithHint("##name", hint, &_typed, ImGuiInputTextFlags_EnterReturnsTrue);
    if(_typed != _chooser.getTyped())
        _chooser.type(_typed);
    int const steps =
        (is_pressed(ImGuiKey_DownArrow) ? 1 : 0) - (is_pressed(ImGuiKey_UpArrow) ? 1 : 0) +
        PageRows *
            ((is_pressed(ImGuiKey_PageDown) ? 1 : 0) - (is_pressed(ImGuiKey_PageUp) ? 1 : 0));
    if(steps != 0)
    {
        _chooser.step(steps);
        _scrolls = true;
    }
    if(!_chooser.getNote().empty())
    {
        ImGui::PushTextWrapPos(0);
        ImGui::TextDisabled("%s", OSG::shown_text(_chooser.getNote()).c_str());
        ImGui::PopTextWrapPos();
    }
    if(isEntered)
        use(_chooser.accept());
}

void FilesDialog::drawEntries()
{
    ImGui::BeginChild("##entries", ImVec2(0, -1.4f * ImGui::GetFrameHeightWithSpacing()), true);
    FolderList const &list = _chooser.getList();
    if(!list.reason.empty())
        ImGui::TextDisabled("%s", list.reason.c_str());
    std::optional<std::size_t> taken;
    bool isOpened = false;
    float const height = ImGui::GetTextLineHeightWithSpacing();
    ImGuiListClipper clipper;
    clipper.Begin(static_cast<int>(_chooser.getShown().size()), height);
    while(clipper.Step())
    {
        for(int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i)
        {
            auto const shown = static_cast<std::size_t>(i);
            FolderList::Entry const &entry = list.entries[_chooser.getShown()[shown]];
            ImGui::PushID(i);
            ImVec2 const place = ImGui::GetCursorPos();
            if(ImGui::Selectable("##entry", shown == _chooser.getAtHand()))
                taken = shown;
            isOpened = isOpened || (ImGui::IsItemHovered() && ImGui::IsMouseDoubleClicked(0));
            ImGui::SetCursorPos(place);
            std::string const name = OSG::shown_text(entry.name) + (entry.isFolder ? "/" : "");
            if(entry.isFolder || entry.isScene)
                ImGui::TextUnformatted(name.c_str());
            else
                ImGui::TextDisabled("%s", name.c_str());
            ImGui::PopID();
        }
    }
    if(std::exchange(_scrolls, false))
        ImGui::SetScrollY(static_cast<float>(_chooser.getAtHand()) * height -
                          ImGui::GetWindowHeight() / 2);
    ImGui::EndChild();
    if(taken)
        _chooser.take(*taken);
    if(isOpened)
        use(_chooser.accept());
}

void FilesDialog::drawButtons()
{
    if(ImGui::Button(_chooser.isForSaving() ? "Save" : "Open"))
        use(_chooser.accept());
    ImGui::SameLine();
    if(ImGui::Button("Cancel"))
        _chooser.end();
}

void FilesDialog::drawReplaced(std::string const &file)
{
    std::string const name = std::filesystem::path(file).filename().string();
    ImGui::Text("Replace %s?", OSG::shown_text(name).c_str());
    ImGui::SameLine();
    if(ImGui::Button("Replace"))
        use(_chooser.confirm());
    ImGui::SameLine();
    if(ImGui::Button("Keep"))
        _chooser.decline();
}

void FilesDialog::use(std::optional<std::string> const &file)
{
    if(!file)
        return;
    if(_chooser.isForSaving())
        _session.save(*file);
    else
        _session.open(*file);
}
} // namespace Viewer
