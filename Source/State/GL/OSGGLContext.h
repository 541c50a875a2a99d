#pragma once

/// \file
/// The OpenGL context that is current in the calling thread. No entry point of OpenGL may be called
/// where there is none: looking one up then ends the process.

#include "OSGStateApi.h"

namespace OSG
{
/// The native handle of the current context, of EGL, GLX or WGL. Null where none is current. It
/// calls no OpenGL, and loads no library that would serve it.
OSG_STATE_API void const *current_gl_context();

/// Null where scenes can be drawn in the current context. Otherwise why not, as half a sentence: no
/// context, OpenGL ES, older than 2.1, a core profile, a context that was lost. The text is a
/// literal.
OSG_STATE_API char const *gl_refusal();

/// Whether the current context, which is not refused, has frame buffer objects.
OSG_STATE_API bool has_frame_buffers();
} // namespace OSG
