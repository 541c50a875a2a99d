#pragma once

#include <functional>
#include <memory>
#include <string>

#include "OSGSceneLoader.h"
#include "Report.h"
#include "Tool.h"

namespace Viewer
{
/// The file that is shown, read and saved.
class Files
{
  public:
    /// Begins to read; what is shown stays until the scene is there.
    void open(std::string const &file);
    void cancel();
    bool isReading() const { return _loader != nullptr; }
    OSG::Real32 getProgress() const { return _loader != nullptr ? _loader->getProgress() : 1; }

    /// Once a turn of the host's loop. Whether another scene is to be shown.
    bool update();
    OSG::Node *getScene() const { return _scene; }
    std::string const &getFile() const { return _file; }
    bool isComplete() const { return _isComplete; }
    /// A line for the user about what was read or saved; empty where there is none since the last
    /// call.
    std::string takeMessage() { return std::exchange(_message, {}); }

    /// Writes the scene in the format of the suffix. What was saved, or nothing and a message.
    std::optional<Saved> save(std::string const &target, Tool::Streams streams);

  private:
    std::unique_ptr<OSG::SceneLoader> _loader;
    std::string _reading;
    OSG::UnrecordedRefPtr<OSG::Node> _scene;
    std::string _file;
    std::string _message;
    bool _isComplete = false;
};
} // namespace Viewer
