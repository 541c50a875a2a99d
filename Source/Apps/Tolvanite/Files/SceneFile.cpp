#include "SceneFile.h"

#include <exception>
#include <new>

#include "OSGPicturePaths.h"
#include "OSGSceneFileHandler.h"
#include "ProgressBar.h"
#include "Stopwatch.h"

namespace Tool
{
namespace
{
/// Shows a progress bar for reads while it lives.
class ReadProgress
{
  public:
    ReadProgress(std::ostream &out, ProgressBar::Show show)
        : _bar(out, show)
    {
        OSG::SceneFileHandlerBase::the()->setReadProgressCallback([this](OSG::UInt32 percent)
                                                                  { _bar.set(percent); });
    }
    ReadProgress(ReadProgress const &) = delete;
    ReadProgress &operator=(ReadProgress const &) = delete;
    ~ReadProgress() { OSG::SceneFileHandlerBase::the()->setReadProgressCallback({}); }

  private:
    ProgressBar _bar;
};

// An exception of a reader, other than std::bad_alloc, means that the file gives no scene.
ScenePtr read_or_null(SceneOptions const &options, Streams streams)
{
    ReadProgress const progress(streams.err, ProgressBar::whereWanted(options.quiet));
    try
    {
        OSG::find_pictures_beside_scenes();
        return ScenePtr(OSG::SceneFileHandlerBase::the()->read(options.file.c_str()));
    }
    catch(std::bad_alloc const &)
    {
        throw;
    }
    catch(std::exception const &error)
    {
        warn(streams, error.what());
        return nullptr;
    }
}
} // namespace

void add_file_argument(CLI::App &command, SceneOptions &options)
{
    command.add_option("FILE", options.file, "Scene file")->required()->check(CLI::ExistingPath);
    command.add_flag("--strict", options.strict, "Fail if the file is not read completely");
}

Scene read_scene(SceneOptions const &options, Streams streams)
{
    Stopwatch const watch;
    Scene scene;
    scene.root = read_or_null(options, streams);
    scene.isComplete = OSG::SceneFileHandlerBase::the()->wasLastReadComplete();
    if(scene.root == nullptr)
    {
        complain(streams, "cannot read " + options.file);
        return scene;
    }
    if(options.strict && !scene.isComplete)
    {
        complain(streams, options.file + " was not read completely");
        scene.root = nullptr;
        return scene;
    }
    if(streams.log != nullptr)
        streams.log->print();
    scene.root->updateVolume();
    scene.loadSeconds = watch.seconds();
    return scene;
}
} // namespace Tool
