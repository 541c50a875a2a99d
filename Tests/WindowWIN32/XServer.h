#pragma once

/// \file
/// An X server without a screen, and what a person does in front of it.

#include <string>
#include <vector>

#include <sys/types.h>

#include "TempFolder.h"

namespace OSG::Test
{
/// A server of its own with one screen of 800 by 600 pixels, no window manager, and its pixels in a
/// file. It ends with this object, and with the test if that dies.
class XServer
{
  public:
    XServer();
    ~XServer();
    XServer(XServer const &) = delete;
    XServer &operator=(XServer const &) = delete;

    /// Such as ":7"; empty where no server came up.
    std::string const &display() const { return _display; }
    /// Ends the server at once, as a crash would.
    void kill();
    /// Sends keys and motion: the words of one call of xdotool. False where it failed.
    bool act(std::vector<std::string> words) const;
    /// The brightest byte of the screen in a square of `side` pixels with its left top corner at
    /// (x, y), with the pointer's picture as people would see it.
    int brightest(int x, int y, int side) const;

  private:
    TempFolder _folder;
    std::string _display;
    pid_t _process = -1;
};
} // namespace OSG::Test
