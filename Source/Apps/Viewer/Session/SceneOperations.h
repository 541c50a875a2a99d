#pragma once

#include <string>
#include <vector>

#include "OSGSceneDocument.h"
#include "Picking.h"

namespace Viewer
{
/// Runs graph operations over the scene that is shown, and keeps their accounts.
class SceneOperations
{
  public:
    /// Keeps references to both, which have to outlive it.
    SceneOperations(OSG::SceneDocument &document, Picking &picking)
        : _document(document)
        , _picking(picking)
    {
    }

    /// The operation of that name. What is selected, hidden and measured is forgotten, because
    /// places may lead elsewhere afterwards. The result is a line for the user; it tells as well
    /// where there is no such operation, no scene or no memory.
    std::string run(std::string const &name, std::string const &params);
    /// See SceneDocument::undo.
    std::string undo();
    /// There is another scene.
    void forget()
    {
        _accounts.clear();
        _numSaved = 0;
    }
    /// The scene has been written to a file.
    void noteSaved() { _numSaved = _accounts.size(); }

    /// Of the operations that made the scene what it is, in their order.
    std::vector<OSG::GraphOpAccount> const &getAccounts() const { return _accounts; }
    /// Those since the scene was read or saved.
    std::vector<OSG::GraphOpAccount> getUnsaved() const
    {
        return {_accounts.begin() + static_cast<std::ptrdiff_t>(_numSaved), _accounts.end()};
    }

  private:
    OSG::SceneDocument &_document;
    Picking &_picking;
    std::vector<OSG::GraphOpAccount> _accounts;
    std::size_t _numSaved = 0; // of the accounts
};
} // namespace Viewer
