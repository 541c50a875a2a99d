#include "OSGGLErrors.h"

#include <epoxy/gl.h>

namespace OSG
{
namespace
{
std::string name_of(GLenum error)
{
    switch(error)
    {
    case GL_INVALID_ENUM:
        return "invalid enumerant";
    case GL_INVALID_VALUE:
        return "invalid value";
    case GL_INVALID_OPERATION:
        return "invalid operation";
    case GL_INVALID_FRAMEBUFFER_OPERATION:
        return "invalid frame buffer operation";
    case GL_OUT_OF_MEMORY:
        return "out of memory";
    case GL_STACK_UNDERFLOW:
        return "stack underflow";
    case GL_STACK_OVERFLOW:
        return "stack overflow";
    default:
        return "error " + std::to_string(error);
    }
}
} // namespace

std::string take_gl_errors()
{
    constexpr int Most = 16; // a lost context may answer for ever
    std::string errors;
    for(int i = 0; i < Most; ++i)
    {
        GLenum const error = glGetError();
        if(error == GL_NO_ERROR)
            break;
        errors += (errors.empty() ? "" : ", ") + name_of(error);
    }
    return errors;
}
} // namespace OSG
