#include "OSGEglContext.h"

#include <array>
#include <cstdio>

#include <dlfcn.h>
#include <epoxy/egl.h>

#include "OSGGLContext.h"

namespace OSG
{
namespace
{
// libepoxy ends the process where a library is missing, so this is asked first. What was loaded
// stays loaded, as it would by libepoxy.
bool can_load(char const *library) { return dlopen(library, RTLD_LAZY | RTLD_LOCAL) != nullptr; }

std::string missing_library()
{
    if(!can_load("libEGL.so.1"))
        return "this machine has no libEGL.so.1";
    if(!can_load("libOpenGL.so.0") && !can_load("libGL.so.1"))
        return "this machine has neither libOpenGL.so.0 nor libGL.so.1";
    return {};
}

std::string with_error(char const *text)
{
    char error[32];
    std::snprintf(error, sizeof(error), " (EGL error 0x%04X)",
                  static_cast<unsigned>(eglGetError()));
    return std::string(text) + error;
}

EGLDisplay display_of_platform(EGLenum platform)
{
    using GetDisplay = EGLDisplay (*)(EGLenum, void *, EGLint const *);
    auto const get = reinterpret_cast<GetDisplay>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    return get != nullptr ? get(platform, EGL_DEFAULT_DISPLAY, nullptr) : EGL_NO_DISPLAY;
}

// The displays that need no window system come first.
std::array<EGLDisplay, 2> displays()
{
    bool const isSurfaceless =
        epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless");
    return {isSurfaceless ? display_of_platform(EGL_PLATFORM_SURFACELESS_MESA) : EGL_NO_DISPLAY,
            eglGetDisplay(EGL_DEFAULT_DISPLAY)};
}

EGLConfig choose_config(EGLDisplay display)
{
    EGLint const wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    bool const isChosen = eglChooseConfig(display, wanted, &config, 1, &count) == EGL_TRUE;
    return isChosen && count > 0 ? config : nullptr;
}
} // namespace

EglContext::EglContext() { _missing = open(); }

// The display stays initialised: others in the process may have contexts of the same one.
EglContext::~EglContext()
{
    release();
    if(_surface != nullptr)
        eglDestroySurface(_display, _surface);
    if(_context != nullptr)
        eglDestroyContext(_display, _context);
}

std::string EglContext::open()
{
    std::string reason = missing_library();
    if(!reason.empty())
        return reason;
    reason = "EGL knows no display";
    for(EGLDisplay const display : displays())
    {
        if(display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) != EGL_TRUE)
            continue;
        reason = openOn(display);
        if(reason.empty())
            return reason;
    }
    return reason;
}

std::string EglContext::openOn(Handle display)
{
    Binding const former = currentBinding();
    if(eglBindAPI(EGL_OPENGL_API) != EGL_TRUE)
        return "EGL has no OpenGL";
    EGLConfig const config = choose_config(display);
    _display = display;
    std::string reason =
        config != nullptr ? makeContext(config) : "EGL has no OpenGL for a picture off the screen";
    eglBindAPI(former.api);
    return reason;
}

std::string EglContext::makeContext(Handle config)
{
    // Without attributes, the context is of the compatibility profile wherever the driver has it.
    EGLContext const context = eglCreateContext(_display, config, EGL_NO_CONTEXT, nullptr);
    if(context == EGL_NO_CONTEXT)
        return with_error("EGL makes no OpenGL context");
    EGLSurface surface = EGL_NO_SURFACE;
    if(!epoxy_has_egl_extension(_display, "EGL_KHR_surfaceless_context"))
    {
        EGLint const onePixel[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
        surface = eglCreatePbufferSurface(_display, config, onePixel);
    }
    _context = context;
    _surface = surface;
    std::string reason = refusal();
    if(!reason.empty())
    {
        if(surface != EGL_NO_SURFACE)
            eglDestroySurface(_display, surface);
        eglDestroyContext(_display, context);
        _context = _surface = nullptr;
    }
    return reason;
}

// Empty where the context can draw a scene.
std::string EglContext::refusal()
{
    if(!makeCurrent())
        return with_error("the OpenGL context cannot be used");
    char const *const reason = gl_refusal();
    release();
    return reason != nullptr ? reason : "";
}

EglContext::Binding EglContext::currentBinding()
{
    return {eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW), eglGetCurrentSurface(EGL_READ),
            eglGetCurrentContext(), eglQueryAPI()};
}

bool EglContext::makeCurrent()
{
    if(_context == nullptr)
        return false;
    Binding const former = currentBinding();
    eglBindAPI(EGL_OPENGL_API);
    if(eglMakeCurrent(_display, _surface, _surface, _context) != EGL_TRUE)
    {
        eglBindAPI(former.api);
        return false;
    }
    // A second call must not forget what the first one found.
    if(former.context != _context)
        _former = former;
    return true;
}

void EglContext::release()
{
    if(_context == nullptr || eglGetCurrentContext() != _context)
        return;
    eglMakeCurrent(_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if(_former.context != nullptr)
        eglMakeCurrent(_former.display, _former.drawSurface, _former.readSurface, _former.context);
    eglBindAPI(_former.api);
    _former = {};
}
} // namespace OSG
