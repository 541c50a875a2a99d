#pragma once

#include <optional>
#include <string>

#include "SceneRows.h"
#include "SceneSearch.h"
#include "Session.h"

namespace Viewer
{
/// The tree of the scene, with a search. Its rows and the view select each other.
class TreePanel : private OSG::SelectionSet::Observer
{
  public:
    /// The session has to outlive the panel.
    explicit TreePanel(Session &session);
    ~TreePanel() override;

    void draw();

  private:
    void selectionChanged(OSG::SelectionSet const &set,
                          OSG::SelectionSet::Change const &change) override;

    void drawNoScene();
    void drawSearch();
    void drawRows();
    void drawFound();
    bool drawRow(SceneRows::Row const &row);
    void drawEye(OSG::NodePath const &path);
    /// Whether the pointer is over it.
    bool drawName(OSG::NodePath const &path, std::string const &name, std::string const &address);
    void revealSelected();

    Session &_session;
    SceneRows _rows;
    std::string _word;
    FollowedSearch _search;
    std::optional<OSG::NodePath> _selected; // in the view, and not shown here yet
    bool _isSelecting = false;
};
} // namespace Viewer
