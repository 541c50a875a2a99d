#pragma once

#include <string>

#include "OSGGraphOpAccount.h"
#include "Session.h"

namespace Viewer
{
/// The registered graph operations: run, their account, undone.
class OperationsPanel
{
  public:
    /// The session has to outlive the panel.
    explicit OperationsPanel(Session &session)
        : _session(session)
    {
    }

    void draw();

  private:
    void drawChoice();
    void drawButtons();
    void drawAccount(OSG::GraphOpAccount const &account) const;

    Session &_session;
    std::string _name; // of the operation that is chosen
    std::string _usage;
    std::string _params;
};
} // namespace Viewer
