// Loaded before the C library, it makes a machine on which libraries are missing: those whose names
// stand in the variable MISSING_LIBRARIES, with blanks between them.

#include <cstdlib>
#include <cstring>

#include <dlfcn.h>

namespace
{
bool is_missing(char const *name)
{
    char const *const missing = std::getenv("MISSING_LIBRARIES");
    return name != nullptr && missing != nullptr && std::strstr(missing, name) != nullptr;
}
} // namespace

extern "C" __attribute__((visibility("default"))) void *dlopen(char const *name, int flags)
{
    using Open = void *(*)(char const *, int);
    auto const open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    return is_missing(name) ? nullptr : open(name, flags);
}
