#pragma once

#include <functional>
#include <string>
#include <utility>

#include "OSGSceneDocument.h"

namespace Viewer
{
/// Asks the user before something throws changes of the scene away.
class UnsavedGuard
{
  public:
    /// Keeps a reference to the document, which has to outlive it.
    explicit UnsavedGuard(OSG::SceneDocument const &document)
        : _document(document)
    {
    }

    /// Does it at once where nothing is lost by it, otherwise when the user has agreed. Another one
    /// takes the place of what is being asked. `what` completes "Save the changes before ...?".
    void before(std::string const &what, std::function<void()> const &act)
    {
        _what = what;
        _act = act;
        if(!_document.needsSaving())
            discard();
    }
    bool isAsking() const { return bool(_act); }
    std::string const &getWhat() const { return _what; }

    /// The user agrees, or wants none of it.
    void discard()
    {
        if(auto const act = std::exchange(_act, {}))
            act();
    }
    void stay() { _act = {}; }

  private:
    OSG::SceneDocument const &_document;
    std::string _what;
    std::function<void()> _act;
};
} // namespace Viewer
