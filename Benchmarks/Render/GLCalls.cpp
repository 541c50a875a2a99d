#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <epoxy/gl.h>

#include "FrameDrawer.h"

namespace OSG::Bench
{
namespace
{
// A function of the library that draws nothing; null where another one is loaded.
template <class Function>
Function counting_function(char const *name)
{
    static void *const library = dlopen("libGL.so.1", RTLD_LAZY | RTLD_LOCAL);
    return reinterpret_cast<Function>(library != nullptr ? dlsym(library, name) : nullptr);
}
} // namespace

void finish_drawing() { glFinish(); }
void draw_in_one_thread() { setenv("LP_NUM_THREADS", "0", 1); }

bool can_count_calls() { return counting_function<void *>("nullGLCalls") != nullptr; }
void forget_calls() { counting_function<void (*)()>("nullGLForget")(); }
std::uint64_t counted_calls()
{
    return counting_function<unsigned long long (*)()>("nullGLCalls")();
}
void print_calls() { counting_function<void (*)(std::FILE *)>("nullGLPrint")(stderr); }
} // namespace OSG::Bench
