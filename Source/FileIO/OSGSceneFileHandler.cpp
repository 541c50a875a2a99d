#include "OSGSceneFileHandler.h"

#include <boost/filesystem.hpp>
#include <fstream>

#include "OSGFileSuffix.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGShownText.h"
#include "OSGSystemHooks.h"

namespace OSG
{
/// One read that is under way: its stream and its reported progress. Scopes nest.
class SceneFileHandlerBase::ReadScope
{
  public:
    ReadScope(SceneFileHandlerBase &handler, std::istream &in)
        : _handler(handler)
        , _outer(handler._innermost)
        , _buffer(in.rdbuf())
    {
        _begin = place(0, std::ios::cur);
        _end = place(0, std::ios::end);
        place(_begin, std::ios::beg);
        handler._innermost = this;
    }
    ReadScope(ReadScope const &) = delete;
    ReadScope &operator=(ReadScope const &) = delete;
    ~ReadScope()
    {
        bool const isComplete = _hasGivenScene && !_isIncomplete;
        _handler._innermost = _outer;
        _handler._lastReadComplete = isComplete;
        if(_outer != nullptr && !isComplete)
            _outer->setIncomplete();
    }

    void setIncomplete() { _isIncomplete = true; }
    void setGivenScene() { _hasGivenScene = true; }

    // A stream that cannot tell its position reports no progress until its end.
    void look()
    {
        std::streamoff const now = _end > _begin ? place(0, std::ios::cur) : -1;
        if(now >= _begin && now >= 0)
            report(static_cast<UInt32>(100 * (now - _begin) / (_end - _begin)));
    }

    void report(UInt32 percent)
    {
        percent = std::min<UInt32>(percent, 100);
        if(static_cast<Int32>(percent) <= _reported)
            return;
        _reported = static_cast<Int32>(percent);
        if(_handler._progress)
            _handler._progress(percent);
    }

  private:
    // Seeks and returns the new position; -1 where the stream cannot seek.
    std::streamoff place(std::streamoff offset, std::ios::seekdir from)
    {
        if(_buffer == nullptr || offset < 0)
            return -1;
        try
        {
            return _buffer->pubseekoff(offset, from, std::ios::in);
        }
        catch(...)
        {
            // The reader will meet the same error and report it.
            return -1;
        }
    }

    SceneFileHandlerBase &_handler;
    ReadScope *_outer;
    std::streambuf *_buffer;
    std::streamoff _begin = -1;
    std::streamoff _end = -1;
    Int32 _reported = -1;
    bool _hasGivenScene = false;
    bool _isIncomplete = false;
};

SceneFileHandlerBase::~SceneFileHandlerBase() = default;

SceneFileHandlerBase *SceneFileHandlerBase::the()
{
    static SceneFileHandlerBase *const handler = new SceneFileHandlerBase;
    return handler;
}

template <>
SceneFileHandlerBase *SingletonHolder<SceneFileHandlerBase>::the()
{
    return SceneFileHandlerBase::the();
}

// --- types ---

void SceneFileHandlerBase::addSceneFileType(SceneFileType *type)
{
    _types.push_back(type);
    addPreFactoryExitFunction(
        [type]
        {
            type->terminate();
            return true;
        });
}

SceneFileType *SceneFileHandlerBase::getFileType(char const *suffix, UInt32 flags) const
{
    std::vector<SceneFileType *> able;
    for(SceneFileType *type : _types)
    {
        if((type->getFlags() & flags) == flags)
            able.push_back(type);
    }
    return suffix != nullptr ? find_file_type(able, suffix) : nullptr;
}

// --- search path ---

PathHandler *SceneFileHandlerBase::getPathHandler() { return _pathHandler; }
void SceneFileHandlerBase::setPathHandler(PathHandler *handler) { _pathHandler = handler; }

// --- reading ---

TransitPtr<Node> SceneFileHandlerBase::read(char const *fileName,
                                            SceneFileType::Resolver const &resolver)
{
    _lastReadComplete = false;
    if(fileName == nullptr)
        return nullptr;
    SceneFileType const *const type = getFileType(file_suffix(fileName).c_str());
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type reads '%s'!\n", shown_text(fileName).c_str());
        return nullptr;
    }
    PathHandler *const paths = getPathHandler();
    std::string const fullName = paths != nullptr ? paths->findFile(fileName) : fileName;
    boost::system::error_code error;
    if(fullName.empty() || !boost::filesystem::is_regular_file(fullName, error))
    {
        bool const exists = boost::filesystem::exists(fileName, error);
        OSG_LOG_WARNING(exists ? "'%s' is no regular file!\n" : "Couldn't find the file '%s'!\n",
                        shown_text(fileName).c_str());
        return nullptr;
    }
    std::ifstream in(fullName, std::ios::binary);
    if(!in)
    {
        OSG_LOG_WARNING("Couldn't open '%s'!\n", shown_text(fullName).c_str());
        return nullptr;
    }
    PathHandlerBaseFile const beside(paths, fullName.c_str());
    return readBy(*type, in, fullName.c_str(), resolver);
}

TransitPtr<Node> SceneFileHandlerBase::read(std::istream &in, char const *suffix,
                                            SceneFileType::Resolver const &resolver)
{
    _lastReadComplete = false;
    SceneFileType const *const type = getFileType(suffix);
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type reads '%s'!\n",
                        shown_text(suffix != nullptr ? suffix : "").c_str());
        return nullptr;
    }
    return readBy(*type, in, suffix, resolver);
}

TransitPtr<Node> SceneFileHandlerBase::readBy(SceneFileType const &type, std::istream &in,
                                              char const *name,
                                              SceneFileType::Resolver const &resolver)
{
    ReadScope scope(*this, in);
    scope.report(0);
    TransitPtr<Node> scene = type.read(in, name, resolver);
    if(scene)
        scope.setGivenScene();
    return scene;
}

// --- writing ---

bool SceneFileHandlerBase::write(Node *node, std::ostream &out, char const *suffix)
{
    SceneFileType const *const type = getFileType(suffix, IOFileTypeBase::WriteSupported);
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type writes '%s'!\n",
                        shown_text(suffix != nullptr ? suffix : "").c_str());
        return false;
    }
    return writeBy(*type, node, out, suffix);
}

bool SceneFileHandlerBase::writeBy(SceneFileType const &type, Node *node, std::ostream &out,
                                   char const *name)
{
    struct WriteScope
    {
        bool &isWriting;
        ~WriteScope() { isWriting = false; }
    };
    WriteScope const scope{_isWriting};
    _unwrittenFiles.clear();
    _losses.clear();
    _isWriting = true;
    return type.write(node, out, name);
}

void SceneFileHandlerBase::addUnwrittenFile(std::string const &fileName)
{
    if(_isWriting)
        _unwrittenFiles.push_back(fileName);
}

void SceneFileHandlerBase::addLoss(std::string const &sentence)
{
    if(_isWriting)
        _losses.push_back(sentence);
}

bool SceneFileHandlerBase::write(Node *node, char const *fileName)
{
    if(fileName == nullptr)
        return false;
    SceneFileType const *const type =
        getFileType(file_suffix(fileName).c_str(), IOFileTypeBase::WriteSupported);
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type writes '%s'!\n", shown_text(fileName).c_str());
        return false;
    }
    std::ofstream out(fileName, std::ios::binary);
    out.imbue(std::locale::classic()); // a file is read on other machines too
    if(!out)
    {
        OSG_LOG_WARNING("Couldn't open '%s' for writing!\n", shown_text(fileName).c_str());
        return false;
    }
    return writeBy(*type, node, out, fileName) && out.flush();
}

// --- what readers tell ---

void SceneFileHandlerBase::setReadIncomplete()
{
    if(_innermost != nullptr)
        _innermost->setIncomplete();
}

ReadText::ReadText(ReadBuffer &text)
    : _own(text)
    , _outer(SceneFileHandlerBase::the()->_text)
{
    SceneFileHandlerBase::the()->_text = &text;
}

ReadText::~ReadText() { SceneFileHandlerBase::the()->_text = _outer; }

void ReadText::reportEarlyEnd(char const *name) const
{
    if(!_own.fail() || _own.eof())
        return;
    // The message names the line in its own text. Without a text getReadLine() gives 0, so a sink
    // does not add the line again.
    SceneFileHandlerBase &handler = *SceneFileHandlerBase::the();
    handler._text = nullptr;
    bool const isNamed = name != nullptr && *name != '\0';
    OSG_LOG_WARNING("The read%s%s ends in line %llu, at '%s'!\n", isNamed ? " of " : "",
                    isNamed ? shown_text(name).c_str() : "",
                    static_cast<unsigned long long>(_own.lineNumber()),
                    shown_text(_own.wordHere()).c_str());
    handler._text = &_own;
    handler.setReadIncomplete();
}

// --- progress ---

void SceneFileHandlerBase::setReadProgressCallback(ProgressCallback const &callback)
{
    _progress = callback;
}

void SceneFileHandlerBase::lookAtStream() { _innermost->look(); }

void SceneFileHandlerBase::updateReadProgress(UInt32 percent)
{
    if(_innermost != nullptr)
        _innermost->report(percent);
}
} // namespace OSG
