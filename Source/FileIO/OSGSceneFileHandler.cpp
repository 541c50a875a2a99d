#include "OSGSceneFileHandler.h"

#include <boost/filesystem.hpp>
#include <fstream>

#include "OSGFileSuffix.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGSystemHooks.h"

namespace OSG
{
/// One read under way: its stream and what was reported of it. Scopes nest.
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
    ~ReadScope() { _handler._innermost = _outer; }

    // A stream that cannot tell its place reports nothing until its end.
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
    // Goes to a place of the stream; -1 where that cannot be had.
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
            // The reader meets the stream's fault by itself.
            return -1;
        }
    }

    SceneFileHandlerBase &_handler;
    ReadScope *_outer;
    std::streambuf *_buffer;
    std::streamoff _begin = -1;
    std::streamoff _end = -1;
    Int32 _reported = -1;
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
    if(fileName == nullptr)
        return nullptr;
    SceneFileType const *const type = getFileType(file_suffix(fileName).c_str());
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type reads '%s'!\n", fileName);
        return nullptr;
    }
    PathHandler *const paths = getPathHandler();
    std::string const fullName = paths != nullptr ? paths->findFile(fileName) : fileName;
    boost::system::error_code error;
    if(fullName.empty() || !boost::filesystem::is_regular_file(fullName, error))
    {
        bool const exists = boost::filesystem::exists(fileName, error);
        OSG_LOG_WARNING(exists ? "'%s' is no regular file!\n" : "Couldn't find the file '%s'!\n",
                        fileName);
        return nullptr;
    }
    std::ifstream in(fullName, std::ios::binary);
    if(!in)
    {
        OSG_LOG_WARNING("Couldn't open '%s'!\n", fullName.c_str());
        return nullptr;
    }
    PathHandlerBaseFile const beside(paths, fullName.c_str());
    return readBy(*type, in, fullName.c_str(), resolver);
}

TransitPtr<Node> SceneFileHandlerBase::read(std::istream &in, char const *suffix,
                                            SceneFileType::Resolver const &resolver)
{
    SceneFileType const *const type = getFileType(suffix);
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type reads '%s'!\n", suffix != nullptr ? suffix : "");
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
    return type.read(in, name, resolver);
}

// --- writing ---

bool SceneFileHandlerBase::write(Node *node, std::ostream &out, char const *suffix)
{
    SceneFileType const *const type = getFileType(suffix, IOFileTypeBase::WriteSupported);
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type writes '%s'!\n", suffix != nullptr ? suffix : "");
        return false;
    }
    return type->write(node, out, suffix);
}

bool SceneFileHandlerBase::write(Node *node, char const *fileName)
{
    if(fileName == nullptr)
        return false;
    SceneFileType const *const type =
        getFileType(file_suffix(fileName).c_str(), IOFileTypeBase::WriteSupported);
    if(type == nullptr)
    {
        OSG_LOG_WARNING("No scene file type writes '%s'!\n", fileName);
        return false;
    }
    std::ofstream out(fileName, std::ios::binary);
    if(!out)
    {
        OSG_LOG_WARNING("Couldn't open '%s' for writing!\n", fileName);
        return false;
    }
    return type->write(node, out, fileName) && out.flush();
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
