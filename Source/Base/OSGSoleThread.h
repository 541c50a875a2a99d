#pragma once

/// \file
/// Tells whether the process has only one thread.

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace OSG
{
/// True where no other thread can run, so that locks and atomic instructions may be left out. False
/// where the C library cannot tell. It may stay false once a second thread has been started, even
/// when that thread has ended.
inline bool is_sole_thread()
{
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}
} // namespace OSG
