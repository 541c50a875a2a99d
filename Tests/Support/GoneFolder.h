#pragma once

/// \file
/// A process whose current folder has been removed.

#include <filesystem>

#include "TempFolder.h"

namespace OSG::Test
{
/// While it lives, the current folder is one that is gone.
class GoneFolder
{
  public:
    explicit GoneFolder(TempFolder const &parent)
        : _former(std::filesystem::current_path())
    {
        std::string const path = parent.makeFolder("gone");
        std::filesystem::current_path(path);
        std::filesystem::remove(path);
    }
    GoneFolder(GoneFolder const &) = delete;
    GoneFolder &operator=(GoneFolder const &) = delete;
    ~GoneFolder() { std::filesystem::current_path(_former); }

  private:
    std::filesystem::path _former;
};
} // namespace OSG::Test
