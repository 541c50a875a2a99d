#include "OSGSceneLoader.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <set>
#include <system_error>
#include <thread>

#include "OSGAspectLink.h"
#include "OSGAspectStore.h"
#include "OSGChangeList.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"

namespace OSG
{
namespace
{
/// Leaves a reader by way of the progress that it reports.
struct ReadCancelled
{
};

/// One lock for all loaders: they are few, and hold it for some instructions. Never destroyed,
/// because a host may have a loader among its statics.
struct Shared
{
    std::mutex mutex;
    std::condition_variable changes;
    bool isHandlerTaken = false;
    UInt64 lastTicket = 0;
    std::set<UInt64> waiting; // tickets of those who want the handler
};
Shared &shared()
{
    static Shared *const all = new Shared;
    return *all;
}

class Lock : public std::unique_lock<std::mutex>
{
  public:
    Lock()
        : unique_lock(shared().mutex)
    {
    }
};

/// A place in the row of those who want the scene file handler. Threads may begin in another order
/// than they were made in, so the host's thread takes the ticket.
UInt64 take_ticket()
{
    Lock const lock;
    Shared &all = shared();
    all.waiting.insert(all.lastTicket + 1);
    return ++all.lastTicket;
}
void give_back(UInt64 ticket)
{
    Lock const lock;
    shared().waiting.erase(ticket);
    shared().changes.notify_all();
}

/// The turn to use the scene file handler.
class Turn
{
  public:
    /// Waits for the turn of the ticket, and gives up where `isCancelled` is set.
    Turn(UInt64 ticket, std::atomic<bool> const &isCancelled)
    {
        Lock lock;
        Shared &all = shared();
        all.changes.wait(lock,
                         [&]
                         {
                             bool const isNext = *all.waiting.begin() == ticket;
                             return (isNext && !all.isHandlerTaken) || isCancelled;
                         });
        all.waiting.erase(ticket);
        all.changes.notify_all();
        _isMine = !isCancelled;
        all.isHandlerTaken = all.isHandlerTaken || _isMine;
    }
    ~Turn()
    {
        if(!_isMine)
            return;
        Lock const lock;
        shared().isHandlerTaken = false;
        shared().changes.notify_all();
    }
    Turn(Turn const &) = delete;
    Turn &operator=(Turn const &) = delete;

    bool isMine() const { return _isMine; }

  private:
    bool _isMine = false;
};

/// Listens to the progress of reads, in place of who listened before.
class ProgressListener
{
  public:
    explicit ProgressListener(SceneFileHandlerBase::ProgressCallback const &callback)
        : _before(SceneFileHandlerBase::the()->getReadProgressCallback())
    {
        SceneFileHandlerBase::the()->setReadProgressCallback(callback);
    }
    ~ProgressListener() { SceneFileHandlerBase::the()->setReadProgressCallback(_before); }
    ProgressListener(ProgressListener const &) = delete;
    ProgressListener &operator=(ProgressListener const &) = delete;

  private:
    SceneFileHandlerBase::ProgressCallback _before;
};

Node *copy_in(Node const *source, UInt32 aspect)
{
    return dynamic_cast<Node *>(source->getAspectStore()->getPtr(aspect));
}
} // namespace

/// What the thread and the host share. The scene belongs to the thread.
class SceneLoader::Job
{
  public:
    Job(std::string fileName, UInt32 aspect)
        : _fileName(std::move(fileName))
        , _aspect(aspect)
    {
        if(aspect == Thread::getCurrentAspect())
        {
            fail("the host works on the aspect of the loader");
            _hasEnded = true;
            return;
        }
        _ticket = take_ticket();
        try
        {
            _thread = std::thread([this] { run(); });
        }
        catch(std::system_error const &)
        {
            give_back(_ticket);
            fail("there is no thread for it");
            _hasEnded = true;
        }
        catch(...)
        {
            give_back(_ticket);
            throw;
        }
    }
    ~Job()
    {
        cancel();
        if(_thread.joinable())
            _thread.join();
    }
    Job(Job const &) = delete;
    Job &operator=(Job const &) = delete;

    State state() const
    {
        Lock const lock;
        return _state;
    }
    Real32 progress() const
    {
        return state() == State::Ready || state() == State::Taken
                   ? 1.f
                   : static_cast<Real32>(_percent.load()) / 100;
    }
    std::string error() const
    {
        Lock const lock;
        return _state == State::Failed ? _error : std::string();
    }
    bool isComplete() const
    {
        Lock const lock;
        return _isComplete;
    }
    Real64 handOverSeconds() const { return _handOverSeconds; }
    bool hasEnded() const { return _hasEnded; }

    void cancel()
    {
        Lock const lock;
        _isCancelled = true;
        if(_state == State::Running || _state == State::Ready)
            _state = State::Cancelled;
        shared().changes.notify_all();
    }

    void wait() const
    {
        Lock lock;
        shared().changes.wait(lock, [this] { return _state != State::Running; });
    }

    TransitPtr<Node> take();

  private:
    void run() noexcept;
    void useTurn() noexcept;
    UnrecordedRefPtr<Node> read();
    void readAndOffer();
    static void leaveNothing() noexcept;
    void offer(Node *scene);

    void fail(char const *error)
    {
        Lock const lock;
        if(_state != State::Running)
            return;
        _state = State::Failed;
        _error = error;
        shared().changes.notify_all();
    }

    std::string const _fileName;
    UInt32 const _aspect;
    UInt64 _ticket = 0;
    std::atomic<UInt32> _percent{0};
    std::atomic<bool> _isCancelled{false};
    std::atomic<bool> _hasEnded{false};
    // Below, what the lock guards.
    State _state = State::Running;
    char const *_error = "";
    bool _isComplete = false;
    ChangeList *_giver = nullptr; // of the thread, while the scene is offered
    Node *_scene = nullptr;
    Real64 _handOverSeconds = 0; // of the host alone
    std::thread _thread;         // begins when all else is there
};

// --- in the thread ---

void SceneLoader::Job::run() noexcept
{
    try
    {
        Thread::setCurrentAspect(_aspect);
        Turn const turn(_ticket, _isCancelled);
        if(turn.isMine())
            useTurn();
    }
    catch(...)
    {
        fail("out of memory"); // for what a thread has of its own
    }
    _hasEnded = true;
}

void SceneLoader::Job::useTurn() noexcept
{
    try
    {
        readAndOffer();
    }
    catch(ReadCancelled const &)
    {
    }
    catch(std::bad_alloc const &)
    {
        fail("out of memory");
    }
    catch(...)
    {
        fail("the reader has raised an exception");
    }
    leaveNothing();
}

// What the reader has left to the next commit is freed here, and no edit is left open. Where there
// is no memory for that, the end of the thread drops both.
void SceneLoader::Job::leaveNothing() noexcept
{
    try
    {
        Thread::getCurrentChangeList()->commitChanges();
    }
    catch(std::bad_alloc const &)
    {
    }
}

UnrecordedRefPtr<Node> SceneLoader::Job::read()
{
    ProgressListener const listener(
        [this](UInt32 percent)
        {
            _percent = percent;
            if(_isCancelled)
                throw ReadCancelled();
        });
    return UnrecordedRefPtr<Node>(SceneFileHandlerBase::the()->read(_fileName.c_str()));
}

// The host may use the scene file handler as soon as it sees another state.
void SceneLoader::Job::readAndOffer()
{
    UnrecordedRefPtr<Node> const scene = read();
    if(scene == nullptr)
    {
        fail("the file gives no scene");
        return;
    }
    Thread::getCurrentChangeList()->commitChanges();
    offer(scene);
}

// Touches no container before the host has taken the scene or refuses it.
void SceneLoader::Job::offer(Node *scene)
{
    Lock lock;
    if(_state != State::Running)
        return;
    _scene = scene;
    _giver = Thread::getCurrentChangeList();
    _isComplete = SceneFileHandlerBase::the()->wasLastReadComplete();
    _state = State::Ready;
    shared().changes.notify_all();
    shared().changes.wait(lock, [this] { return _state != State::Ready; });
}

// --- in the host's thread ---

// The link serves for one look. The copy lives on by the host's references.
TransitPtr<Node> SceneLoader::Job::take()
{
    if(state() != State::Ready)
        return nullptr;
    auto const begin = std::chrono::steady_clock::now();
    UnrecordedRefPtr<Node> scene;
    {
        AspectLink const link(_giver, _aspect);
        scene = copy_in(_scene, Thread::getCurrentAspect());
    }
    _handOverSeconds =
        std::chrono::duration<Real64>(std::chrono::steady_clock::now() - begin).count();
    Lock const lock;
    _state = State::Taken;
    shared().changes.notify_all();
    return TransitPtr<Node>(scene.get());
}

SceneLoader::SceneLoader(std::string const &fileName, UInt32 aspect)
    : _job(std::make_unique<Job>(fileName, aspect))
{
}

SceneLoader::~SceneLoader() = default;

SceneLoader::State SceneLoader::getState() const { return _job->state(); }
Real32 SceneLoader::getProgress() const { return _job->progress(); }
TransitPtr<Node> SceneLoader::take() { return _job->take(); }
Real64 SceneLoader::getHandOverSeconds() const { return _job->handOverSeconds(); }
bool SceneLoader::isComplete() const { return _job->isComplete(); }
void SceneLoader::cancel() { _job->cancel(); }
bool SceneLoader::hasEnded() const { return _job->hasEnded(); }
void SceneLoader::wait() const { _job->wait(); }
std::string SceneLoader::getError() const { return _job->error(); }
} // namespace OSG
