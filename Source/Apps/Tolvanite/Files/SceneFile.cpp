#include "SceneFile.h"

#include <exception>

#include "OSGSceneFileHandler.h"
#include "ProgressBar.h"
#include "Stopwatch.h"

namespace Tool
{
namespace
{
/// Shows the progress of reads while it lives.
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

// What a reader may raise (no memory, a list beyond its limits) means no scene here.
ScenePtr read_or_null(SceneOptions const &options, Streams streams)
{
    ReadProgress const progress(streams.err, ProgressBar::whereWanted(options.quiet));
    try
    {
        return ScenePtr(OSG::SceneFileHandlerBase::the()->read(options.file.c_str()));
    }
    catch(std::exception const &)
    {
        return nullptr;
    }
}
} // namespace

void addFileArgument(CLI::App &command, SceneOptions &options)
{
    command.add_option("FILE", options.file, "Scene file")->required()->check(CLI::ExistingPath);
}

Scene readScene(SceneOptions const &options, Streams streams)
{
    Stopwatch const watch;
    Scene scene;
    scene.root = read_or_null(options, streams);
    if(scene.root == nullptr)
    {
        streams.err << "tolvanite: cannot read " << options.file << '\n';
        return scene;
    }
    scene.root->updateVolume();
    scene.loadSeconds = watch.seconds();
    return scene;
}
} // namespace Tool
