#pragma once

#include <string>

namespace OSG
{
/// An OpenGL context of EGL that draws into no window.
///
/// It asks for a context without a surface, then for one with a pbuffer of one pixel. The profile
/// is the compatibility one, in the highest version that the driver has.
class EglContext
{
  public:
    /// Makes the context. It is not current afterwards.
    EglContext();
    ~EglContext();
    EglContext(EglContext const &) = delete;
    EglContext &operator=(EglContext const &) = delete;

    /// Why there is no context; empty where there is one.
    std::string const &missing() const { return _missing; }

    /// Makes the context current in the calling thread, and remembers the one of EGL that was.
    /// False where EGL refuses, as it does while the context is current in another thread, or a
    /// context of GLX in this one.
    bool makeCurrent();
    /// Makes current what was before makeCurrent. Does nothing where the context is not current.
    void release();

  private:
    // EGL's handles, whose types its header alone knows.
    using Handle = void *;
    struct Binding
    {
        Handle display, drawSurface, readSurface, context;
        unsigned api;
    };

    std::string open();
    std::string openOn(Handle display);
    std::string makeContext(Handle config);
    std::string refusal();
    static Binding currentBinding();

    Handle _display = nullptr;
    Handle _surface = nullptr;
    Handle _context = nullptr;
    Binding _former = {};
    std::string _missing;
};
} // namespace OSG
