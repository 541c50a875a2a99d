// The functions whose callers want an answer. Numbers are those of OpenGL's headers, which are not
// included: the functions that return nothing are declared in another way there.

#include <cstring>
#include <map>

#include "NullGL.h"

#define NULL_GL extern "C" __attribute__((visibility("default")))

namespace
{
using Enum = unsigned;

unsigned next_name = 1;

constexpr Enum LeastLevelOfDetail = 0x813A;
unsigned bound_texture = 0;
std::map<unsigned, float> least_levels; // by texture
std::map<Enum, int> buffer_sizes;       // by target

void make_names(int count, unsigned *names)
{
    for(int i = 0; i < count; ++i)
        names[i] = next_name++;
}

constexpr char const *Extensions[] = {"GL_ARB_framebuffer_object", "GL_EXT_framebuffer_object",
                                      "GL_ARB_vertex_array_object", "GL_ARB_vertex_buffer_object",
                                      "GL_ARB_texture_non_power_of_two"};
constexpr unsigned ExtensionCount = sizeof Extensions / sizeof *Extensions;

char const *all_extensions()
{
    static char text[512] = "";
    if(*text == '\0')
    {
        for(char const *name : Extensions)
        {
            std::strcat(text, name);
            std::strcat(text, " ");
        }
    }
    return text;
}

// How many numbers a query writes, and the first two.
struct Answer
{
    int count;
    int first;
    int second;
};

Answer answer_of(Enum query)
{
    constexpr int Large = 16384;
    switch(query)
    {
    case 0x0BA2: // viewport
    case 0x0C10: // scissor box
        return {4, 0, 0};
    case 0x0D3A: // largest viewport
        return {2, Large, Large};
    case 0x0B70: // depth range
        return {2, 0, 1};
    case 0x0D33: // largest texture
    case 0x84E8: // largest render buffer
        return {1, Large, 0};
    case 0x84E2: // texture units
    case 0x8872:
    case 0x8B4D:
    case 0x8871: // texture coordinates
    case 0x0D31: // lights
    case 0x8CDF: // colour attachments
    case 0x8824: // draw buffers
        return {1, 8, 0};
    case 0x8869: // vertex attributes
        return {1, 16, 0};
    case 0x0D56: // bits of depth
        return {1, 24, 0};
    case 0x0D52: // bits of colours
    case 0x0D53:
    case 0x0D54:
        return {1, 8, 0};
    case 0x821D: // extensions
        return {1, ExtensionCount, 0};
    case 0x0BA0: // matrix mode
        return {1, 0x1700, 0};
    case 0x0D35: // greatest depths of the stacks of attributes
    case 0x0D3B:
        return {1, 16, 0};
    case 0x0D36: // and of matrices
    case 0x0D38:
    case 0x0D39:
        return {1, 32, 0};
    case 0x0BA3: // depths of the matrix stacks
    case 0x0BA4:
    case 0x0BA5:
        return {1, 1, 0};
    default:
        return {1, 0, 0};
    }
}

template <class Number>
void answer(Enum query, Number *numbers)
{
    Answer const found = answer_of(query);
    for(int i = 0; i < found.count; ++i)
        numbers[i] = static_cast<Number>(i == 0 ? found.first : i == 1 ? found.second : 0);
}

template <class Number>
void answer_matrix(Enum query, Number *numbers)
{
    bool const isMatrix = query >= 0x0BA6 && query <= 0x0BA8;
    if(!isMatrix)
        return answer(query, numbers);
    for(int i = 0; i < 16; ++i)
        numbers[i] = i % 5 == 0 ? 1 : 0;
}
} // namespace

NULL_GL char const *glGetString(Enum name)
{
    null_gl_count("glGetString");
    switch(name)
    {
    case 0x1F00:
        return "nobody";
    case 0x1F01:
        return "nothing drawn";
    case 0x1F02:
        return "2.1";
    case 0x8B8C:
        return "1.20";
    default:
        return all_extensions();
    }
}
NULL_GL char const *glGetStringi(Enum, unsigned index)
{
    null_gl_count("glGetStringi");
    return index < ExtensionCount ? Extensions[index] : nullptr;
}
NULL_GL void glGetIntegerv(Enum query, int *numbers)
{
    null_gl_count("glGetIntegerv");
    answer(query, numbers);
}
NULL_GL void glGetFloatv(Enum query, float *numbers)
{
    null_gl_count("glGetFloatv");
    answer_matrix(query, numbers);
}
NULL_GL void glGetDoublev(Enum query, double *numbers)
{
    null_gl_count("glGetDoublev");
    answer_matrix(query, numbers);
}
NULL_GL void glGetBooleanv(Enum query, unsigned char *numbers)
{
    null_gl_count("glGetBooleanv");
    answer(query, numbers);
}
NULL_GL Enum glCheckFramebufferStatus(Enum)
{
    null_gl_count("glCheckFramebufferStatus");
    return 0x8CD5; // complete
}
NULL_GL Enum glCheckFramebufferStatusEXT(Enum)
{
    null_gl_count("glCheckFramebufferStatusEXT");
    return 0x8CD5;
}

NULL_GL void glGetRenderbufferParameteriv(Enum, Enum query, int *number)
{
    null_gl_count("glGetRenderbufferParameteriv");
    *number = query == 0x8D54 ? 24 : 8; // bits of depth, or of a colour
}

// --- what callers set and ask for again ---
NULL_GL void glBindTexture(Enum, unsigned name)
{
    static unsigned long long *const count = null_gl_counter("glBindTexture");
    ++*count;
    bound_texture = name;
}
NULL_GL unsigned char glIsTexture(unsigned name)
{
    null_gl_count("glIsTexture");
    return name != 0 && name < next_name;
}
NULL_GL void glTexParameterf(Enum, Enum setting, float value)
{
    null_gl_count("glTexParameterf");
    if(setting == LeastLevelOfDetail)
        least_levels[bound_texture] = value;
}
NULL_GL void glGetTexParameterfv(Enum, Enum setting, float *value)
{
    null_gl_count("glGetTexParameterfv");
    *value = setting == LeastLevelOfDetail ? least_levels[bound_texture] : 0;
}
NULL_GL void glBufferData(Enum target, long size, void const *, Enum)
{
    null_gl_count("glBufferData");
    buffer_sizes[target] = static_cast<int>(size);
}
NULL_GL void glGetBufferParameteriv(Enum target, Enum, int *number)
{
    null_gl_count("glGetBufferParameteriv");
    *number = buffer_sizes[target];
}

#define NULL_GL_NAMES(name)                                                                        \
    NULL_GL void name(int count, unsigned *names)                                                  \
    {                                                                                              \
        null_gl_count(#name);                                                                      \
        make_names(count, names);                                                                  \
    }
NULL_GL_NAMES(glGenBuffers)
NULL_GL_NAMES(glGenBuffersARB)
NULL_GL_NAMES(glGenTextures)
NULL_GL_NAMES(glGenFramebuffers)
NULL_GL_NAMES(glGenFramebuffersEXT)
NULL_GL_NAMES(glGenRenderbuffers)
NULL_GL_NAMES(glGenRenderbuffersEXT)
NULL_GL_NAMES(glGenVertexArrays)
NULL_GL_NAMES(glGenQueries)

NULL_GL unsigned glGenLists(int count)
{
    null_gl_count("glGenLists");
    unsigned const first = next_name;
    next_name += static_cast<unsigned>(count);
    return first;
}
