#include "Gui.h"

#include <imgui.h>
#include <imgui_impl_glfw.h>
#include <imgui_impl_opengl2.h>
#include <imgui_internal.h>

namespace Viewer
{
namespace
{
constexpr float FontPixels = 13;
} // namespace

Gui::Gui()
{
    ImGuiIO &io = ImGui::GetIO();
    io.IniFilename = nullptr;              // the settings are ours
    io.ConfigInputTextCursorBlink = false; // an idle window draws nothing
    io.ConfigFlags |= ImGuiConfigFlags_NoMouseCursorChange;
    ImGui_ImplOpenGL2_Init();
}

Gui::~Gui() { ImGui_ImplOpenGL2_Shutdown(); }

void Gui::setStyle(bool isDark, float scale)
{
    if(_scale != scale)
    {
        ImGuiIO &io = ImGui::GetIO();
        io.Fonts->Clear();
        ImFontConfig config;
        config.SizePixels = FontPixels * scale;
        io.Fonts->AddFontDefault(&config);
        ImGui_ImplOpenGL2_DestroyFontsTexture();
    }
    if(_scale == scale && _isDark == isDark)
        return;
    ImGui::GetStyle() = ImGuiStyle();
    if(isDark)
        ImGui::StyleColorsDark();
    else
        ImGui::StyleColorsLight();
    ImGui::GetStyle().WindowRounding = 4;
    ImGui::GetStyle().FrameRounding = 3;
    ImGui::GetStyle().ScaleAllSizes(scale);
    _isDark = isDark;
    _scale = scale;
}

void Gui::beginFrame()
{
    ImGui_ImplOpenGL2_NewFrame();
    ImGui_ImplGlfw_NewFrame();
    ImGui::NewFrame();
}

void Gui::endFrame() { ImGui::Render(); }

void Gui::render() { ImGui_ImplOpenGL2_RenderDrawData(ImGui::GetDrawData()); }

bool Gui::isOverPanel(double x, double y) const
{
    ImVec2 const place(static_cast<float>(x), static_cast<float>(y));
    for(ImGuiWindow const *window : ImGui::GetCurrentContext()->Windows)
    {
        bool const isThere = window->Active && !window->Hidden; // in the frame that is shown
        bool const hears = (window->Flags & ImGuiWindowFlags_NoMouseInputs) == 0;
        if(isThere && hears && window->OuterRectClipped.Contains(place))
            return true;
    }
    return false;
}

bool Gui::wantsPointer() const { return ImGui::GetIO().WantCaptureMouse; }

bool Gui::wantsKeyboard() const { return ImGui::GetIO().WantCaptureKeyboard; }
} // namespace Viewer
