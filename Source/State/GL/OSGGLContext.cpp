#include "OSGGLContext.h"

#include <epoxy/gl.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace OSG
{
namespace
{
using CurrentContext = void *(*)();

#ifdef _WIN32
CurrentContext find_function(wchar_t const *library, char const *name)
{
    HMODULE const loaded = GetModuleHandleW(library);
    return loaded != nullptr ? reinterpret_cast<CurrentContext>(GetProcAddress(loaded, name))
                             : nullptr;
}

void *current_of_any()
{
    CurrentContext const current = find_function(L"opengl32.dll", "wglGetCurrentContext");
    return current != nullptr ? current() : nullptr;
}
#else
// Null where nobody has loaded the library. Then it has no current context either.
CurrentContext find_function(char const *library, char const *name)
{
    void *const loaded = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if(loaded == nullptr)
        return nullptr;
    auto const function = reinterpret_cast<CurrentContext>(dlsym(loaded, name));
    dlclose(loaded);
    return function;
}

struct Source
{
    char const *library;
    char const *name;
};
constexpr Source Sources[] = {{"libEGL.so.1", "eglGetCurrentContext"},
                              {"libGLX.so.0", "glXGetCurrentContext"},
                              {"libGL.so.1", "glXGetCurrentContext"}};

void *current_of_any()
{
    for(Source const &source : Sources)
    {
        CurrentContext const current = find_function(source.library, source.name);
        void *const context = current != nullptr ? current() : nullptr;
        if(context != nullptr)
            return context;
    }
    return nullptr;
}
#endif

bool is_core_profile()
{
    constexpr int FirstWithProfiles = 32;
    constexpr int FirstWithoutOldEntries = 31;
    int const version = epoxy_gl_version();
    if(version >= FirstWithProfiles)
    {
        GLint profile = 0;
        glGetIntegerv(GL_CONTEXT_PROFILE_MASK, &profile);
        return (profile & GL_CONTEXT_CORE_PROFILE_BIT) != 0;
    }
    return version == FirstWithoutOldEntries && !epoxy_has_gl_extension("GL_ARB_compatibility");
}

bool is_lost()
{
    constexpr int FirstWithResetStatus = 45;
    if(epoxy_gl_version() >= FirstWithResetStatus || epoxy_has_gl_extension("GL_KHR_robustness"))
        return glGetGraphicsResetStatus() != GL_NO_ERROR;
    return epoxy_has_gl_extension("GL_ARB_robustness") &&
           glGetGraphicsResetStatusARB() != GL_NO_ERROR;
}
} // namespace

void const *current_gl_context() { return current_of_any(); }

char const *gl_refusal()
{
    constexpr int Oldest = 21;
    if(current_gl_context() == nullptr)
        return "no OpenGL context is current";
    if(glGetString(GL_VERSION) == nullptr)
        return "the OpenGL context cannot be used";
    if(!epoxy_is_desktop_gl())
        return "the context is one of OpenGL ES";
    if(epoxy_gl_version() < Oldest)
        return "OpenGL is older than 2.1";
    if(is_core_profile())
        return "the context is one of the core profile";
    if(is_lost())
        return "the OpenGL context was lost";
    return nullptr;
}

bool has_frame_buffers()
{
    constexpr int FirstWithFrameBuffers = 30;
    return epoxy_gl_version() >= FirstWithFrameBuffers ||
           epoxy_has_gl_extension("GL_ARB_framebuffer_object");
}
} // namespace OSG
