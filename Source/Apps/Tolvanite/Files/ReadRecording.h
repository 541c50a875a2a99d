#pragma once

#include <string>

#include "OSGInputRecording.h"

namespace Tool
{
/// Reads a recording of input events from a regular file: opening a pipe may wait forever, and a
/// device may have no end.
OSG::RecordingResult read_recording_file(std::string const &file);
} // namespace Tool
