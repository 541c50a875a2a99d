#pragma once

/// \file
/// Reads and writes scenes by the suffix of their file, and tells how far a read has come.

#include <iosfwd>
#include <string>
#include <vector>

#include <boost/function.hpp>

#include "OSGPathHandler.h"
#include "OSGReadBuffer.h"
#include "OSGSceneFileType.h"
#include "OSGSingletonHolder.h"

namespace OSG
{
/// Made on first use, never destroyed. Reads of one thread may nest (a file type that reads
/// another file); the handler belongs to one thread at a time.
class OSG_FILEIO_API SceneFileHandlerBase
{
  public:
    using ProgressCallback = boost::function<void(UInt32 percent)>;

    static SceneFileHandlerBase *the();

    // --- scenes ---
    /// The scene of a file, found by the path handler; null, with a log line that says why, where
    /// it gives none. While it is read its folder is on the search path, before the others.
    TransitPtr<Node> read(char const *fileName,
                          SceneFileType::Resolver const &resolver = SceneFileType::Resolver());
    /// The same from a stream; `suffix` names the type.
    TransitPtr<Node> read(std::istream &in, char const *suffix,
                          SceneFileType::Resolver const &resolver = SceneFileType::Resolver());
    /// Whether the last read gave a scene and went through its whole file: false where it gave
    /// null, raised an exception, or ended early at something that it could not read. Reads within
    /// a read count with it.
    bool wasLastReadComplete() const { return _lastReadComplete; }
    /// False, with a log line, where no type writes the suffix or the file could not be written.
    bool write(Node *node, char const *fileName);
    bool write(Node *node, std::ostream &out, char const *suffix);

    // --- types ---
    /// The type that serves a suffix and has all abilities of `flags`: among several, those that
    /// override come first, then the higher priority, then the earlier one. Null for none; case
    /// does not count.
    SceneFileType *getFileType(char const *suffix,
                               UInt32 flags = IOFileTypeBase::ReadSupported) const;
    /// All types in the order in which they became known.
    std::vector<SceneFileType *> const &getFileTypes() const { return _types; }
    void addSceneFileType(SceneFileType *type);

    // --- search path ---
    /// The handler's own unless a host set another; null where a host set none.
    virtual PathHandler *getPathHandler();
    /// Not owned; null is allowed.
    virtual void setPathHandler(PathHandler *handler);

    // --- for readers, of the innermost read that is under way; without one, nothing happens ---
    /// The read ends before its file does, or has left a part of it out.
    void setReadIncomplete();
    /// Line in which the text stands that is being read, from 1; 0 where none is known.
    UInt64 getReadLine() const { return _text != nullptr ? _text->lineNumber() : 0; }

    // --- progress of the innermost read that is under way; without one, nothing is reported ---
    /// Called with each new percentage, 0 to 100, in ascending order.
    void setReadProgressCallback(ProgressCallback const &callback);
    /// Called by a reader once per element: cheap; looks at the stream's place now and then.
    void updateReadProgress()
    {
        if(_innermost != nullptr && (++_elements & ElementsPerLook) == 0)
            lookAtStream();
    }
    /// Reports `percent`, where it is more than was reported.
    void updateReadProgress(UInt32 percent);

  protected:
    SceneFileHandlerBase() = default;
    virtual ~SceneFileHandlerBase();

  private:
    class ReadScope;
    friend class ReadText;
    static constexpr UInt32 ElementsPerLook = 4095;

    void lookAtStream();
    TransitPtr<Node> readBy(SceneFileType const &type, std::istream &in, char const *name,
                            SceneFileType::Resolver const &resolver);

    std::vector<SceneFileType *> _types;
    PathHandler _ownPathHandler;
    PathHandler *_pathHandler = &_ownPathHandler;
    ProgressCallback _progress;
    ReadScope *_innermost = nullptr;
    ReadBuffer const *_text = nullptr;
    bool _lastReadComplete = false;
    UInt32 _elements = 0;
};

/// Tells the scene file handler, while it lives, which text is being read, so that messages can say
/// their line. They nest: a library that a scene file names is a text of its own.
class OSG_FILEIO_API ReadText
{
  public:
    /// Keeps a reference to `text`.
    explicit ReadText(ReadBuffer &text);
    ReadText(ReadText const &) = delete;
    ReadText &operator=(ReadText const &) = delete;
    ~ReadText();

    /// Where `text` has failed before its end, one warning says so, with the line and the word that
    /// ended it, and the read is not complete. `name` is what the message calls the file; null or
    /// empty for none.
    void reportEarlyEnd(char const *name) const;

  private:
    ReadBuffer &_own;
    ReadBuffer const *_outer;
};

template <>
OSG_FILEIO_API SceneFileHandlerBase *SingletonHolder<SceneFileHandlerBase>::the();
} // namespace OSG
