#pragma once

/// \file
/// Reads and writes scenes by the suffix of their file, and reports the progress of reads.

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
/// Made on first use and never destroyed. Reads may nest, where a file type reads another file.
/// Only one thread at a time may use the handler.
class OSG_FILEIO_API SceneFileHandlerBase
{
  public:
    using ProgressCallback = boost::function<void(UInt32 percent)>;

    static SceneFileHandlerBase *the();

    // --- scenes ---
    /// Reads the scene of a file, which the path handler finds. Null, with a log line that says
    /// why, where there is no scene. During the read the file's folder comes first on the search
    /// path.
    TransitPtr<Node> read(char const *fileName,
                          SceneFileType::Resolver const &resolver = SceneFileType::Resolver());
    /// Reads a scene from a stream. `suffix` names the type.
    TransitPtr<Node> read(std::istream &in, char const *suffix,
                          SceneFileType::Resolver const &resolver = SceneFileType::Resolver());
    /// Whether the last read gave a scene and covered its whole file. False where it gave null,
    /// raised an exception, left something out, or ended early at something unreadable. A read
    /// within another one counts for both.
    bool wasLastReadComplete() const { return _lastReadComplete; }
    /// False, with a log line, where no type writes the suffix or the file cannot be written.
    bool write(Node *node, char const *fileName);
    bool write(Node *node, std::ostream &out, char const *suffix);
    /// Files beside the scene's own, such as textures, that the last write could not write.
    std::vector<std::string> const &getUnwrittenFiles() const { return _unwrittenFiles; }
    /// What a reader will miss of the scene in the files of the last write, in sentences.
    std::vector<std::string> const &getLosses() const { return _losses; }

    // --- types ---
    /// The type for a suffix that has all abilities of `flags`. Types that override are preferred
    /// to others, then those of a higher priority, then those registered earlier. The case of the
    /// suffix does not matter. Null where there is none.
    SceneFileType *getFileType(char const *suffix,
                               UInt32 flags = IOFileTypeBase::ReadSupported) const;
    /// All types in the order of their registration.
    std::vector<SceneFileType *> const &getFileTypes() const { return _types; }
    void addSceneFileType(SceneFileType *type);

    // --- search path ---
    /// The handler's own path handler, or the one that a host has set, which may be null.
    virtual PathHandler *getPathHandler();
    /// Not owned; null is allowed.
    virtual void setPathHandler(PathHandler *handler);

    // --- for readers; about the innermost read that is under way; without one, nothing happens ---
    /// Notes that the read ends before its file does, or has left a part out.
    void setReadIncomplete();
    /// The current line of the text that is being read, from 1. 0 where it is not known.
    UInt64 getReadLine() const { return _text != nullptr ? _text->lineNumber() : 0; }

    // --- for writers; about the write that is under way; without one, nothing happens ---
    /// Notes that a file beside the scene's own could not be written.
    void addUnwrittenFile(std::string const &fileName);
    /// Notes, in a sentence, that a reader will miss something although all is written.
    void addLoss(std::string const &sentence);

    // --- progress of the innermost read that is under way; without one, nothing is reported ---
    /// `callback` is called with each new percentage, 0 to 100, in ascending order. It may raise an
    /// exception, which ends the read and passes on.
    void setReadProgressCallback(ProgressCallback const &callback);
    ProgressCallback const &getReadProgressCallback() const { return _progress; }
    /// To be called by a reader once per element. It is cheap: the stream is asked for its position
    /// only now and then.
    void updateReadProgress() { addReadElements(1); }
    /// The same for a number of elements.
    void addReadElements(UInt32 count)
    {
        if(_innermost == nullptr)
            return;
        UInt32 const before = _elements;
        _elements += count;
        if(before / ElementsPerLook != _elements / ElementsPerLook)
            lookAtStream();
    }
    /// Reports `percent` if it is more than the last percentage.
    void updateReadProgress(UInt32 percent);

  protected:
    SceneFileHandlerBase() = default;
    virtual ~SceneFileHandlerBase();

  private:
    class ReadScope;
    friend class ReadText;
    static constexpr UInt32 ElementsPerLook = 4096;

    void lookAtStream();
    TransitPtr<Node> readBy(SceneFileType const &type, std::istream &in, char const *name,
                            SceneFileType::Resolver const &resolver);
    bool writeBy(SceneFileType const &type, Node *node, std::ostream &out, char const *name);

    std::vector<SceneFileType *> _types;
    PathHandler _ownPathHandler;
    PathHandler *_pathHandler = &_ownPathHandler;
    ProgressCallback _progress;
    ReadScope *_innermost = nullptr;
    ReadBuffer const *_text = nullptr;
    bool _lastReadComplete = false;
    std::vector<std::string> _unwrittenFiles;
    std::vector<std::string> _losses;
    bool _isWriting = false;
    UInt32 _elements = 0;
};

/// While it lives, tells the scene file handler which text is being read, so that messages can name
/// the line. Objects nest: a material library that a scene file names is another text.
class OSG_FILEIO_API ReadText
{
  public:
    /// Keeps a reference to `text`.
    explicit ReadText(ReadBuffer &text);
    ReadText(ReadText const &) = delete;
    ReadText &operator=(ReadText const &) = delete;
    ~ReadText();

    /// Where `text` has failed before its end, logs a warning with the line and the word, and notes
    /// that the read is not complete. `name` is the name of the file in the message; it may be null
    /// or empty.
    void reportEarlyEnd(char const *name) const;

  private:
    ReadBuffer &_own;
    ReadBuffer const *_outer;
};

template <>
OSG_FILEIO_API SceneFileHandlerBase *SingletonHolder<SceneFileHandlerBase>::the();
} // namespace OSG
