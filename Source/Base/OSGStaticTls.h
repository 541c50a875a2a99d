#pragma once

/// \file
/// For the few thread_local pointers that every container asks for.

/// Their place is fixed when the library is loaded, so that they are found without a call.
#ifdef __ELF__
#define OSG_STATIC_TLS __attribute__((tls_model("initial-exec")))
#else
#define OSG_STATIC_TLS
#endif
