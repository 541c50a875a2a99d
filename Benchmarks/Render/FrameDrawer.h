#pragma once

/// \file
/// Who draws the frames that are measured.

#include <memory>

#include "RenderScenes.h"

namespace OSG::Bench
{
inline constexpr UInt32 FrameWidth = 1024;
inline constexpr UInt32 FrameHeight = 768;

/// Draws a scene into an off-screen picture, in an OpenGL context of its own.
class FrameDrawer
{
  public:
    virtual ~FrameDrawer() = default;

    /// Why nothing can be drawn; empty where all is well.
    virtual char const *missing() const = 0;
    virtual void makeCurrent() = 0;
    virtual void release() = 0;
    /// One frame, up to the end of its last pixel.
    virtual void draw(FrameView const &view) = 0;
    /// Moves the box at WayToMovingBox up by `height` from where it was at first.
    virtual void moveBox(Real32 height) = 0;
    /// Shows the same box, or hides it.
    virtual void showBox(bool isShown) = 0;
};

enum class Contender
{
    Ours,
    PeerLists,  ///< display lists
    PeerBuffers ///< buffer objects
};

/// Each scene and contender has one; made when it is first asked for. Null for a peer that is not
/// installed.
FrameDrawer *frame_drawer(DrawnScene scene, Contender contender);

std::unique_ptr<FrameDrawer> make_our_drawer(Node *root);
std::unique_ptr<FrameDrawer> make_peer_drawer(Node *root, bool lists);

/// Waits until everything is drawn.
void finish_drawing();
/// Asks Mesa's software renderer to draw in the thread that calls it. To be called before the first
/// context is made.
void draw_in_one_thread();

// --- calls of OpenGL, which only the library that draws nothing counts ---
bool can_count_calls();
void forget_calls();
std::uint64_t counted_calls();
/// How often each function was called, to the standard error output.
void print_calls();
} // namespace OSG::Bench
