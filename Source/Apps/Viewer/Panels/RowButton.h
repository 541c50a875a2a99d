#pragma once

namespace Viewer
{
/// A button beside what was drawn before, or on a line of its own where it has no room there.
bool row_button(char const *label);
} // namespace Viewer
