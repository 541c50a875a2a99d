#pragma once

#include <vector>

#include "OSGAppearanceTable.h"

namespace OSG
{
/// What a table of appearances says about the nodes of a walk, while it is walked.
class OSG_STATE_API AppearanceWalk
{
  public:
    /// Stands before a walk whose first node is seen through `visiting`, outermost first; what is
    /// around it says `around`. Without a table nothing is looked up.
    void begin(AppearanceTable const *table, Appearance const &around,
               std::vector<Node *> const &visiting);
    /// False where the node is hidden: nothing below it need be walked, and leave() is not called.
    bool enter(Node *node);
    void leave();

    /// Of the node entered last.
    Appearance const &getAppearance() const { return _current; }
    bool isDrawn() const { return _table == nullptr || _table->isDrawn(_current); }

  private:
    struct Frame
    {
        Node *node;
        Appearance around;
        bool isVisited; // the node above is on the list of visiting nodes for it
    };

    AppearanceTable const *_table = nullptr;
    Appearance _current;
    std::vector<Node *> _visiting;
    std::vector<Frame> _frames;
};
} // namespace OSG
