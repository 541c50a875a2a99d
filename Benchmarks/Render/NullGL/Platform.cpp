// How a context is made and functions are found: one context, which is current once it was made so.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "NullGL.h"

#define NULL_GL extern "C" __attribute__((visibility("default")))

namespace
{
using Handle = void *;

int something; // what handles point to
Handle const TheHandle = &something;
Handle current = nullptr;

NullGLFunction const *find(char const *name)
{
    NullGLFunction const *const end = null_gl_functions + null_gl_function_count;
    NullGLFunction const *const found =
        std::lower_bound(null_gl_functions, end, name,
                         [](NullGLFunction const &row, char const *wanted)
                         { return std::strcmp(row.name, wanted) < 0; });
    return found != end && std::strcmp(found->name, name) == 0 ? found : nullptr;
}
} // namespace

void null_gl_count(char const *name) { ++*null_gl_counter(name); }
unsigned long long *null_gl_counter(char const *name)
{
    return &null_gl_counts[find(name) - null_gl_functions];
}

// --- for the benchmarks, by dlsym ---
/// All calls so far.
NULL_GL unsigned long long nullGLCalls()
{
    unsigned long long sum = 0;
    for(unsigned i = 0; i < null_gl_function_count; ++i)
        sum += null_gl_counts[i];
    return sum;
}
NULL_GL void nullGLForget() { std::fill_n(null_gl_counts, null_gl_function_count, 0); }
/// One line for each function that was called.
NULL_GL void nullGLPrint(std::FILE *out)
{
    for(unsigned i = 0; i < null_gl_function_count; ++i)
    {
        if(null_gl_counts[i] != 0)
            std::fprintf(out, "%10llu %s\n", null_gl_counts[i], null_gl_functions[i].name);
    }
}

// --- GLX: nothing but the search, since no context of it is made ---
NULL_GL Handle glXGetProcAddressARB(char const *name)
{
    NullGLFunction const *const row = find(name);
    return row != nullptr ? row->function : nullptr;
}
NULL_GL Handle glXGetProcAddress(char const *name) { return glXGetProcAddressARB(name); }
NULL_GL Handle glXGetCurrentContext() { return nullptr; }
NULL_GL Handle glXGetCurrentDisplay() { return nullptr; }

// --- EGL ---
NULL_GL Handle eglGetPlatformDisplayEXT(unsigned, void *, int const *) { return TheHandle; }
NULL_GL Handle eglGetPlatformDisplay(unsigned, void *, Handle const *) { return TheHandle; }
NULL_GL Handle eglGetDisplay(Handle) { return TheHandle; }
NULL_GL Handle eglGetProcAddress(char const *name)
{
    if(std::strcmp(name, "eglGetPlatformDisplayEXT") == 0)
        return reinterpret_cast<Handle>(&eglGetPlatformDisplayEXT);
    return glXGetProcAddressARB(name);
}
NULL_GL unsigned eglInitialize(Handle, int *major, int *minor)
{
    if(major != nullptr)
        *major = 1;
    if(minor != nullptr)
        *minor = 5;
    return 1;
}
NULL_GL unsigned eglTerminate(Handle) { return 1; }
NULL_GL unsigned eglBindAPI(unsigned) { return 1; }
NULL_GL unsigned eglQueryAPI() { return 0x30A2; } // OpenGL
NULL_GL int eglGetError() { return 0x3000; }      // none
NULL_GL char const *eglQueryString(Handle, int name)
{
    switch(name)
    {
    case 0x3054:
        return "1.5";
    case 0x3055:
        return "EGL_EXT_platform_base EGL_MESA_platform_surfaceless EGL_KHR_surfaceless_context";
    case 0x308D:
        return "OpenGL";
    default:
        return "nobody";
    }
}
NULL_GL unsigned eglChooseConfig(Handle, int const *, Handle *configs, int size, int *count)
{
    if(configs != nullptr && size > 0)
        configs[0] = TheHandle;
    *count = 1;
    return 1;
}
NULL_GL Handle eglCreateContext(Handle, Handle, Handle, int const *) { return new char; }
NULL_GL unsigned eglDestroyContext(Handle, Handle context)
{
    if(current == context)
        current = nullptr;
    delete static_cast<char *>(context);
    return 1;
}
NULL_GL unsigned eglQueryContext(Handle, Handle, int query, int *number)
{
    *number = query == 0x3097 ? 0x30A2 : 0; // of OpenGL
    return 1;
}
NULL_GL Handle eglCreatePbufferSurface(Handle, Handle, int const *) { return TheHandle; }
NULL_GL unsigned eglDestroySurface(Handle, Handle) { return 1; }
NULL_GL unsigned eglMakeCurrent(Handle, Handle, Handle, Handle context)
{
    current = context;
    return 1;
}
NULL_GL Handle eglGetCurrentContext() { return current; }
NULL_GL Handle eglGetCurrentDisplay() { return current != nullptr ? TheHandle : nullptr; }
NULL_GL Handle eglGetCurrentSurface(int) { return nullptr; }
NULL_GL unsigned eglSwapBuffers(Handle, Handle) { return 1; }
NULL_GL unsigned eglReleaseThread() { return 1; }
