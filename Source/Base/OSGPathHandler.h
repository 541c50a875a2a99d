#pragma once

/// \file
/// Finds the files that scene files name: textures, material libraries.

#include <string>
#include <vector>

#include "OSGBaseApi.h"
#include "OSGMemManager.h"

namespace OSG
{
/// A search path of folders, in this order: the folders of the files that are being read, the
/// innermost first; the folders of the path list, in their order; the current folder.
///
/// Names come from files of any origin: a backslash counts as a slash, and nothing that a name
/// holds makes an operation fail. Only regular files are found (through links too), so that a
/// reader never opens a device or a pipe. One handler belongs to one thread.
class OSG_BASE_API PathHandler : public MemObject
{
  public:
    PathHandler();
    ~PathHandler();

    // --- path list ---
    /// Appends a folder; empty or null is ignored.
    void pushBackPath(char const *folder);
    /// Puts a folder before the others of the list; empty or null is ignored.
    void pushFrontPath(char const *folder);
    void clearPathList();

    // --- folders of the files being read ---
    /// Makes the folder of `fileName` the only one of this kind; null or empty removes all.
    void setBaseFile(char const *fileName);
    /// The folder of `fileName` goes before those pushed earlier. A name without folder stands for
    /// the current folder.
    void pushBaseFile(char const *fileName);
    /// Takes the last one off; does nothing where there is none.
    void popBaseFile();

    /// Full path of the file: from the root directory on, as the folder was given otherwise. An
    /// absolute name stands and is looked for nowhere else. Empty where there is no such regular
    /// file, or the name is null or empty.
    std::string findFile(char const *name) const;

  private:
    std::vector<std::string> _baseFolders; // innermost last; each with its final slash
    std::vector<std::string> _pathList;
};

/// Pushes the folder of a file while it lives; a null handler is allowed.
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
