#include "SceneOperations.h"

#include <algorithm>
#include <new>

#include "OSGGraphOpFactory.h"
#include "OSGWalkConsole.h"

namespace Viewer
{
std::string SceneOperations::run(std::string const &name, std::string const &params)
{
    OSG::UnrecordedRefPtr<OSG::GraphOp> const operation(
        OSG::GraphOpFactoryBase::the()->create(name.c_str()));
    if(operation == nullptr)
        return "there is no operation " + name;
    if(_document.getScene() == nullptr)
        return "there is no scene";
    try
    {
        auto const account = _document.apply(*operation, params);
        _picking.forget();
        if(!account)
            return _document.takeMessage();
        _accounts.push_back(*account);
        return "done: " + name;
    }
    catch(std::bad_alloc const &)
    {
        return "not enough memory for " + name;
    }
}

// Marks, way and home are those of now: they are no part of an operation.
std::string SceneOperations::undo()
{
    if(!_document.canUndo())
        return "nothing to undo";
    OSG::UnrecordedRefPtr<OSG::WalkConsoleAttachment> const console(
        OSG::walk_console_of(_document.getScene()));
    _document.undo();
    OSG::Node *const root = _document.getScene();
    if(OSG::WalkConsoleAttachment *const former = OSG::walk_console_of(root))
        root->subAttachment(former);
    if(console != nullptr)
        root->addAttachment(console);
    if(_accounts.empty())
        return "undone";
    std::string const name = _accounts.back().name;
    _accounts.pop_back();
    _numSaved = std::min(_numSaved, _accounts.size());
    return "undone: " + name;
}
} // namespace Viewer
