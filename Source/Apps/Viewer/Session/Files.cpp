#include "Files.h"

#include "OSGImageFileHandler.h"
#include "OSGReachableNodes.h"
#include "OSGSceneFileHandler.h"
#include "Stopwatch.h"
#include "WriteScene.h"

namespace Viewer
{
void Files::open(std::string const &file)
{
    OSG::ImageFileHandlerBase::the()->setPathHandler(
        OSG::SceneFileHandlerBase::the()->getPathHandler());
    _reading = file;
    _loader = std::make_unique<OSG::SceneLoader>(file);
}

void Files::cancel()
{
    if(_loader != nullptr)
        _loader->cancel();
}

bool Files::update()
{
    using State = OSG::SceneLoader::State;
    if(_loader == nullptr || _loader->getState() == State::Running)
        return false;
    std::unique_ptr<OSG::SceneLoader> const loader = std::move(_loader);
    if(loader->getState() == State::Failed)
        _message = "cannot read " + _reading + ": " + loader->getError();
    if(loader->getState() == State::Cancelled)
        _message = "not read: " + _reading;
    if(loader->getState() != State::Ready)
        return false;
    _scene = loader->take();
    _isComplete = loader->isComplete();
    _file = _reading;
    _message = _file + (_isComplete ? "" : " was not read completely");
    return true;
}

std::optional<Saved> Files::save(std::string const &target, Tool::Streams streams)
{
    Tool::Stopwatch const watch;
    if(_scene == nullptr)
        return {};
    std::string const reason = Tool::write_scene(_scene, target, streams);
    if(!reason.empty())
    {
        _message = "cannot write " + target + ": " + reason;
        return {};
    }
    _message = "saved " + target;
    return Saved{_file, target, OSG::count_reachable_nodes(_scene), watch.seconds(), _isComplete};
}
} // namespace Viewer
