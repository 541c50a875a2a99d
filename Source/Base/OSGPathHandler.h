#pragma once

/// \file
/// Finds the files that scene files name: textures, material libraries.

#include <string>
#include <vector>

#include "OSGBaseApi.h"
#include "OSGMemManager.h"

namespace OSG
{
/// A search path of folders. They are searched in this order: the folders of the files that are
/// being read, the innermost first; the folders of the path list; the current folder.
///
/// Names may come from files of any origin. A backslash counts as a slash, and no operation raises
/// an error because of a name. Only regular files, and links to them, are found, so that a reader
/// never opens a device or a pipe. A handler belongs to one thread.
class OSG_BASE_API PathHandler : public MemObject
{
  public:
    PathHandler();
    ~PathHandler();

    // --- path list ---
    /// Appends a folder to the list. Empty or null is ignored.
    void pushBackPath(char const *folder);
    /// Puts a folder at the front of the list. Empty or null is ignored.
    void pushFrontPath(char const *folder);
    void clearPathList();

    // --- folders of the files being read ---
    /// Makes the folder of `fileName` the only folder of a file that is read. Null or empty removes
    /// all.
    void setBaseFile(char const *fileName);
    /// Adds the folder of `fileName`, which is searched before those added earlier. A name without
    /// a folder stands for the current folder.
    void pushBaseFile(char const *fileName);
    /// Removes the folder that was added last. Does nothing where there is none.
    void popBaseFile();

    /// The absolute path of the file. The folder is otherwise spelled as it was given. An absolute
    /// name is not searched for. Empty where there is no such regular file, or the name is null or
    /// empty.
    std::string findFile(char const *name) const;

  private:
    std::vector<std::string> _baseFolders; // innermost last; each with its final slash
    std::vector<std::string> _pathList;
};

/// Adds the folder of a file to a handler while this lives. The handler may be null.
class OSG_BASE_API PathHandlerBaseFile
{
  public:
    PathHandlerBaseFile(PathHandler *handler, char const *fileName);
    ~PathHandlerBaseFile();
    PathHandlerBaseFile(PathHandlerBaseFile const &) = delete;
    PathHandlerBaseFile &operator=(PathHandlerBaseFile const &) = delete;

  private:
    PathHandler *_handler;
};
} // namespace OSG
