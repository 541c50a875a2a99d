#include "UnsavedQuestion.h"

#include <imgui.h>

namespace Viewer
{
void draw_unsaved_question(Session &session, FileChooser &files)
{
    UnsavedGuard &unsaved = session.unsaved;
    if(!unsaved.isAsking())
        return;
    ImVec2 const size = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos(ImVec2(size.x / 2, size.y / 2), 0, ImVec2(0.5f, 0.5f));
    ImGui::Begin("Unsaved changes", nullptr,
                 ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoCollapse |
                     ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoSavedSettings);
    if(ImGui::IsWindowAppearing())
        ImGui::SetWindowFocus();
    ImGui::Text("Save the changes before %s?", unsaved.getWhat().c_str());
    bool const isFocused = ImGui::IsWindowFocused();
    auto const isHit = [isFocused](ImGuiKey key)
    { return isFocused && ImGui::IsKeyPressed(ImGui::GetKeyIndex(key), false); };
    if(ImGui::Button("Save as...") || isHit(ImGuiKey_Enter))
    {
        unsaved.stay();
        files.begin(FileChooser::Purpose::Save, session.document.getFile());
    }
    ImGui::SameLine();
    if(ImGui::Button("Discard") || isHit(ImGuiKey_Delete))
        unsaved.discard();
    ImGui::SameLine();
    if(ImGui::Button("Stay") || isHit(ImGuiKey_Escape))
        unsaved.stay();
    ImGui::TextDisabled("Enter, Delete, Escape");
    ImGui::End();
}
} // namespace Viewer
