#pragma once

#include "FileChooser.h"
#include "Session.h"

namespace Viewer
{
/// Asks whether changes are to be saved, where something would throw them away. Saving opens the
/// dialog.
void draw_unsaved_question(Session &session, FileChooser &files);
} // namespace Viewer
