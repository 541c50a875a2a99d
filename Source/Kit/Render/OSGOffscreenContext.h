#pragma once

#include <memory>
#include <string>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class EglContext;

/// An OpenGL context with a picture of a fixed size to draw into, without a window or a display.
///
/// It takes what EGL offers: the machine's OpenGL, or Mesa's software renderer. The picture has one
/// sample a pixel, 8 bits for each of red, green and blue, no alpha, and a depth of at least 24
/// bits.
///
/// The constructor makes everything and leaves nothing current. A context belongs to the thread in
/// which it is current, so one thread draws at a time. A host that has a context of EGL current
/// gets it back from release(). One of GLX has to be put aside by the host itself.
class OSG_TOLVANITEKIT_API OffscreenContext
{
  public:
    /// A size beyond what the driver can draw is refused before memory is taken.
    OffscreenContext(UInt32 width, UInt32 height);
    ~OffscreenContext();
    OffscreenContext(OffscreenContext const &) = delete;
    OffscreenContext &operator=(OffscreenContext const &) = delete;

    /// Why nothing can be drawn, as half a sentence: no OpenGL, too old an OpenGL, a size that the
    /// driver does not have, no memory. Empty where all is well. The other functions may be called
    /// in either case; without a context they do nothing.
    std::string const &missing() const { return _missing; }

    /// Makes the context current in the calling thread, with the picture as the frame buffer and
    /// the OpenGL viewport over the whole of it. False without a context, and where the driver
    /// refuses.
    [[nodiscard]] bool makeCurrent();
    /// Makes current again what was before makeCurrent.
    void release();

    UInt32 getWidth() const { return _width; }
    UInt32 getHeight() const { return _height; }
    /// Who draws, by the driver's own name. Empty without a context.
    std::string const &getRenderer() const { return _renderer; }

    /// The picture: 3 bytes a pixel, red first, rows without padding, the top row first. The
    /// context has to be current. Empty without a context. Raises std::bad_alloc.
    std::vector<UInt8> readPixels() const;

  private:
    std::string makePicture();

    std::unique_ptr<EglContext> _context;
    UInt32 _width, _height;
    UInt32 _frameBuffer = 0;
    std::string _renderer;
    std::string _missing;
};
} // namespace OSG
