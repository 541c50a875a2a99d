#pragma once

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Keeps the picture of the scene that was drawn last, for hosts that draw panels over it: a panel
/// that changes then costs no drawing of the scene.
///
///     if(demand.take(*viewport))
///     {
///         view.draw();
///         frame.keep(width, height);
///     }
///     else if(!frame.show(width, height))
///         view.draw();
///     drawPanels();
///
/// All calls come in one context, with the frame buffer of the window bound. It changes no state of
/// the context but the pixels.
class OSG_TOLVANITEKIT_API KeptFrame
{
  public:
    KeptFrame() = default;
    /// Frees nothing of the context: see release().
    ~KeptFrame() = default;
    KeptFrame(KeptFrame const &) = delete;
    KeptFrame &operator=(KeptFrame const &) = delete;

    /// Copies the pixels of the back buffer from its left bottom corner on. Keeps nothing where the
    /// driver has no texture of that size.
    void keep(UInt32 width, UInt32 height);
    /// Puts the pixels back. False where none of that size are kept.
    bool show(UInt32 width, UInt32 height);
    /// Frees the texture, before the context ends.
    void release();

  private:
    UInt32 _texture = 0;
    UInt32 _width = 0;
    UInt32 _height = 0;
};
} // namespace OSG
