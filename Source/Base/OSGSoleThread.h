#pragma once

/// \file
/// Whether the process has one thread only.

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace OSG
{
/// True where no other thread can run: what guards against others may then be left out. False where
/// the C library does not tell. Once a second thread has been started it may stay false for ever.
inline bool is_sole_thread()
{
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}
} // namespace OSG
