#pragma once

/// \file
/// Reads a scene beside the host's work.
///
///     OSG::SceneLoader loader("model.obj");
///     // in each turn of the host's loop
///     if(loader.getState() == OSG::SceneLoader::State::Ready)
///         root->addChild(scene = loader.take());
///     else
///         show(loader.getProgress());

#include <memory>
#include <string>

#include "OSGNode.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// One read of one file, by a thread in an aspect of its own. The host polls; it is never called.
///
/// Only one thread at a time may use the SceneFileHandler: while a loader is Running, and after
/// cancel() until it is destroyed, the host neither reads nor writes scenes, and leaves the
/// handler's settings alone. Loaders wait for one another: one begins to read when the scene of the
/// one before it is taken, or when that one has failed or is cancelled.
///
/// The functions are called by one thread, the host's. What a reader cannot be told while it works
/// it notices at the next percent that it reports.
class OSG_TOLVANITEKIT_API SceneLoader
{
  public:
    enum class State : UInt8
    {
        Running,
        Ready,  ///< take() gives the scene
        Taken,  ///< take() has given it
        Failed, ///< there is no scene; see getError()
        Cancelled
    };

    /// The aspect that files are read in, if nobody says otherwise.
    static constexpr UInt32 DefaultAspect = 1;

    /// Begins to read. Nobody else may use `aspect` before the loader has ended; the calling
    /// thread works on another one. Failed where there can be no thread.
    explicit SceneLoader(std::string const &fileName, UInt32 aspect = DefaultAspect);
    /// Cancels, and waits for the thread.
    ~SceneLoader();
    SceneLoader(SceneLoader const &) = delete;
    SceneLoader &operator=(SceneLoader const &) = delete;

    State getState() const;
    /// From 0 to 1; 1 where the scene is ready. The part of the file that has been read.
    Real32 getProgress() const;

    /// Hands the scene over: copies it into the aspect of the calling thread. The copy is no edit
    /// of that thread. Null unless the state is Ready. Raises std::bad_alloc; it may be called
    /// again then.
    TransitPtr<Node> take();
    /// How long take() has worked on it; 0 before.
    Real64 getHandOverSeconds() const;
    /// Whether the file was read to its end, as SceneFileHandlerBase::wasLastReadComplete() says.
    /// False before the scene is ready.
    bool isComplete() const;

    /// Ends the read without waiting for it. The state is Cancelled from now on, and take() gives
    /// null; all that was read is freed by the thread. A scene that was taken stays, and so does
    /// Failed.
    void cancel();
    /// Whether the thread is through, so that the destructor does not wait.
    bool hasEnded() const;
    /// Waits until the state is not Running. That is for ever where another loader is Ready, and
    /// its scene is not taken by another thread: take that one first.
    void wait() const;
    /// Why there is no scene, as half a sentence; empty where the state is not Failed. The log says
    /// what is wrong with the file.
    std::string getError() const;

  private:
    class Job;

    std::unique_ptr<Job> _job;
};
} // namespace OSG
