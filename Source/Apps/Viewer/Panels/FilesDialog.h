#pragma once

#include <string>

#include "FileChooser.h"
#include "Session.h"

namespace Viewer
{
/// Draws a FileChooser over the view while it asks, and does what its answer says: opens the file,
/// or saves the scene.
class FilesDialog
{
  public:
    /// Both have to outlive the dialog.
    FilesDialog(Session &session, FileChooser &chooser)
        : _session(session)
        , _chooser(chooser)
    {
    }

    void draw();

  private:
    void drawFolder();
    void drawName();
    void drawEntries();
    void drawButtons();
    void drawReplaced(std::string const &file);
    void use(std::optional<std::string> const &file);

    Session &_session;
    FileChooser &_chooser;
    std::string _typed;
    bool _wasAsking = false;
    bool _scrolls = false; // to the entry at hand
};
} // namespace Viewer
