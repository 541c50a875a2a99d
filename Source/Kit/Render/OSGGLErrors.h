#pragma once

#include <string>

#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// The errors that the current context has noted since the last call, as words, for hosts that
/// watch over their own drawing. Empty where there are none; a driver may take a while to answer.
OSG_TOLVANITEKIT_API std::string take_gl_errors();
} // namespace OSG
