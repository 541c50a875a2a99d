#pragma once

/// \file
/// The scene that a host shows, and the file that it comes from.
///
///     SceneDocument document;
///     document.open("model.obj");
///     // in each turn of the host's loop
///     if(document.update(seconds))
///         view.setScene(document.getScene());
///     if(document.isReading())
///         show(document.getProgress());
///     if(std::string const message = document.takeMessage(); !message.empty())
///         show(message);

#include <memory>
#include <optional>
#include <vector>

#include "OSGFileWatch.h"
#include "OSGGraphOpAccount.h"
#include "OSGSceneLoader.h"

namespace OSG
{
/// A scene stays while another file is read, and for good where that file gives none.
///
/// Files are read by a SceneLoader, whose rules hold for the host: while usesFiles() is true it
/// neither reads nor writes scenes, and nobody else uses the aspect of the reads. All functions are
/// called by one thread, the host's.
class OSG_TOLVANITEKIT_API SceneDocument
{
  public:
    /// Copies of the scene that are kept to undo operations, if nobody says otherwise.
    static constexpr UInt32 DefaultUndoDepth = 3;

    /// `aspect` is that of the reads. Pictures are looked for in the folder of their scene, see
    /// find_pictures_beside_scenes().
    explicit SceneDocument(UInt32 aspect = SceneLoader::DefaultAspect);
    /// Cancels, and waits for the threads.
    ~SceneDocument();
    SceneDocument(SceneDocument const &) = delete;
    SceneDocument &operator=(SceneDocument const &) = delete;

    // --- reading ---
    /// Begins to read a file, which may be the one that is shown. A read that is under way is
    /// cancelled; nobody waits for it. Raises std::bad_alloc, and nothing has changed then.
    void open(std::string const &file);
    /// Ends the read, without a message. The scene stays.
    void cancel();
    bool isReading() const { return _loader != nullptr; }
    /// Of the read, from 0 to 1; 0 where nothing is read.
    Real32 getProgress() const;
    /// The file that is being read; empty where none is.
    std::string getFileBeingRead() const;
    /// Whether a read or the rest of a cancelled one may still use the scene file handler.
    bool usesFiles() const { return isReading() || !_ending.empty(); }
    /// To be called once per turn with the seconds since a fixed moment. Takes over a scene that is
    /// ready, and looks at the file. True where getScene() is another one than at the last call.
    bool update(Real64 seconds);
    /// What the user should know: that a file cannot be read and why, that one was not read
    /// completely, that an operation did not go through. One line, given once; empty for none. The
    /// log says more.
    std::string takeMessage();

    // --- what is shown ---
    /// Null at first. Volumes are up to date where it is another scene.
    Node *getScene() const { return _scene; }
    /// Another number for each other scene. An operation that goes through edits the scene, which
    /// stays the same one.
    UInt64 getStamp() const { return _stamp; }
    /// The file that the scene was read from or saved to; empty at first.
    std::string const &getFile() const { return _watch.getFile(); }
    /// Whether the file was read to its end.
    bool wasComplete() const { return _wasComplete; }
    /// How long update() has worked on taking the scene over.
    Real64 getHandOverSeconds() const { return _handOverSeconds; }

    // --- the file on the disk ---
    /// Whether the file is read again when it has changed and nobody writes it any more, see
    /// FileWatch. False at first. Files beside it, such as textures, are not looked at. A scene
    /// that needs saving stays; a message says that its file has changed.
    void setReloads(bool reloads) { _reloads = reloads; }
    /// Whether the scene is another one than the file holds: after an operation, or as the host
    /// says.
    bool needsSaving() const { return _needsSaving; }
    void setNeedsSaving() { _needsSaving = _scene != nullptr; }
    /// The host has written the scene to `file`, which is the document's file from now on.
    void setSaved(std::string const &file);

    // --- graph operations ---
    /// Gives `params` to the operation, runs it over the scene and commits. A copy of the whole
    /// scene is made before. Where the operation does not go through or raises an exception, the
    /// copy becomes the scene, and a message says so. There is no account then, and none without a
    /// scene. std::bad_alloc is passed on, and the scene is as before in this case too.
    std::optional<GraphOpAccount> apply(GraphOp &operation, std::string const &params = {});
    bool canUndo() const { return !_former.empty(); }
    /// Shows the copy that was made before the last operation. It has other nodes than the scene
    /// had then: node paths and selections of before lead nowhere. False where there is none.
    bool undo();
    /// How many operations can be undone; the oldest copies are dropped. Each copy takes as much
    /// memory as the scene, arrays and pictures included. 0 keeps none.
    void setUndoDepth(UInt32 depth);

  private:
    using NodePtr = UnrecordedRefPtr<Node>;
    using LoaderPtr = std::unique_ptr<SceneLoader>;

    void dropEnded();
    void finishRead();
    void takeOver();
    void failRead(std::string const &reason);
    void lookAtFile(Real64 seconds);
    void show(Node *scene);
    void restore();
    void trimFormer();

    UInt32 _aspect;
    LoaderPtr _loader;              // of the read that is under way
    std::vector<LoaderPtr> _ending; // their threads are still at it
    FileWatch _watchOfRead;
    NodePtr _scene;
    FileWatch _watch; // of the scene's file
    std::vector<NodePtr> _former;
    UInt32 _undoDepth = DefaultUndoDepth;
    std::string _message;
    UInt64 _stamp = 0;
    UInt64 _toldStamp = 0; // at the last update()
    Real64 _handOverSeconds = 0;
    bool _wasComplete = false;
    bool _reloads = false;
    bool _needsSaving = false;
};
} // namespace OSG
