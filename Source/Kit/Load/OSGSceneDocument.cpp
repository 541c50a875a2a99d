#include "OSGSceneDocument.h"

#include <algorithm>
#include <new>
#include <utility>

#include "OSGChangeList.h"
#include "OSGDeepClone.h"
#include "OSGGraphOp.h"
#include "OSGPicturePaths.h"
#include "OSGShownText.h"
#include "OSGThread.h"

namespace OSG
{
SceneDocument::SceneDocument(UInt32 aspect)
    : _aspect(aspect)
{
    find_pictures_beside_scenes();
}

SceneDocument::~SceneDocument() = default;

// --- reading ---

// The new loader waits for the turn of the old one, so that they may exist side by side. Each of
// the two has room among those that end, so that cancel() needs no memory.
void SceneDocument::open(std::string const &file)
{
    FileWatch watch(file);
    _ending.reserve(_ending.size() + 2);
    LoaderPtr loader = std::make_unique<SceneLoader>(file, _aspect);
    cancel();
    _loader = std::move(loader);
    _watchOfRead = std::move(watch);
}

void SceneDocument::cancel()
{
    if(_loader == nullptr)
        return;
    _loader->cancel();
    _ending.push_back(std::move(_loader));
    _loader = nullptr;
}

Real32 SceneDocument::getProgress() const
{
    return _loader != nullptr ? _loader->getProgress() : 0.f;
}

std::string SceneDocument::getFileBeingRead() const
{
    return _loader != nullptr ? _watchOfRead.getFile() : std::string();
}

std::string SceneDocument::takeMessage() { return std::exchange(_message, {}); }

void SceneDocument::dropEnded()
{
    std::erase_if(_ending, [](LoaderPtr const &loader) { return loader->hasEnded(); });
}

bool SceneDocument::update(Real64 seconds)
{
    dropEnded();
    if(_loader != nullptr && _loader->getState() != SceneLoader::State::Running)
        finishRead();
    lookAtFile(seconds);
    return std::exchange(_toldStamp, _stamp) != _stamp;
}

void SceneDocument::finishRead()
{
    if(_loader->getState() != SceneLoader::State::Ready)
    {
        failRead(_loader->getError());
        return;
    }
    try
    {
        takeOver();
    }
    catch(std::bad_alloc const &)
    {
        failRead("out of memory");
    }
}

void SceneDocument::takeOver()
{
    NodePtr const scene(_loader->take());
    scene->updateVolume();
    std::string const file = shown_text(_watchOfRead.getFile());
    bool const isComplete = _loader->isComplete();
    _message = isComplete ? std::string() : file + " was not read completely";
    _handOverSeconds = _loader->getHandOverSeconds();
    _wasComplete = isComplete;
    _watch = std::move(_watchOfRead);
    _former.clear();
    _needsSaving = false;
    show(scene);
    cancel(); // the thread is freeing what it has read
}

// A file that was tried is read again when it has changed once more.
void SceneDocument::failRead(std::string const &reason)
{
    std::string const file = _watchOfRead.getFile();
    cancel();
    if(file == getFile())
        _watch = std::move(_watchOfRead);
    _message = "cannot read " + shown_text(file) + ": " + reason;
}

void SceneDocument::lookAtFile(Real64 seconds)
{
    if(!_reloads || isReading() || !_watch.hasChanged(seconds))
        return;
    if(_needsSaving)
        _message = shown_text(getFile()) + " has changed, and the scene has edits of its own";
    else
        open(getFile());
}

void SceneDocument::setSaved(std::string const &file)
{
    _watch = FileWatch(file);
    _needsSaving = false;
}

void SceneDocument::show(Node *scene)
{
    _scene = scene;
    ++_stamp;
}

// --- graph operations ---

std::optional<GraphOpAccount> SceneDocument::apply(GraphOp &operation, std::string const &params)
{
    if(_scene == nullptr)
        return std::nullopt;
    UnrecordedRefPtr<FieldContainer> const copy(deepClone(_scene));
    _former.push_back(NodePtr(dynamic_cast<Node *>(copy.get())));
    try
    {
        if(!params.empty())
            operation.setParams(params);
        GraphOpAccount account = traverse_accounted(operation, _scene, params);
        _scene->updateVolume();
        Thread::getCurrentChangeList()->commitChanges();
        if(account.wentThrough)
        {
            _needsSaving = true;
            trimFormer();
            return account;
        }
        restore();
        _message = shown_text(operation.getName()) + " did not go through";
    }
    catch(std::bad_alloc const &)
    {
        restore();
        throw;
    }
    catch(...)
    {
        restore();
        _message = shown_text(operation.getName()) + " has raised an exception";
    }
    return std::nullopt;
}

void SceneDocument::restore()
{
    show(_former.back());
    _former.pop_back();
}

bool SceneDocument::undo()
{
    if(_former.empty())
        return false;
    _former.back()->updateVolume();
    restore();
    _needsSaving = true;
    return true;
}

void SceneDocument::setUndoDepth(UInt32 depth)
{
    _undoDepth = depth;
    trimFormer();
}

void SceneDocument::trimFormer()
{
    std::size_t const surplus = _former.size() - std::min<std::size_t>(_former.size(), _undoDepth);
    _former.erase(_former.begin(), _former.begin() + static_cast<std::ptrdiff_t>(surplus));
}
} // namespace OSG
