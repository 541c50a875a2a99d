#include "OSGGLContext.h"

#include <epoxy/egl.h>
#include <gtest/gtest.h>

#include "NeedsContext.h"
#include "OSGOffscreenContext.h"

namespace OSG::Test
{
namespace
{
/// A context without a surface, of any API and profile, current while it lives.
class AnyContext
{
  public:
    AnyContext(EGLenum api, std::vector<EGLint> attributes)
    {
        attributes.push_back(EGL_NONE);
        _display = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA,
                                            reinterpret_cast<void *>(EGL_DEFAULT_DISPLAY), nullptr);
        eglInitialize(_display, nullptr, nullptr);
        eglBindAPI(api);
        _context = eglCreateContext(_display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes.data());
        eglMakeCurrent(_display, EGL_NO_SURFACE, EGL_NO_SURFACE, _context);
    }
    ~AnyContext()
    {
        eglMakeCurrent(_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(_display, _context);
        eglBindAPI(EGL_OPENGL_ES_API);
    }
    AnyContext(AnyContext const &) = delete;
    AnyContext &operator=(AnyContext const &) = delete;

    bool isMade() const { return _context != EGL_NO_CONTEXT; }

  private:
    EGLDisplay _display;
    EGLContext _context;
};

struct GLContext : testing::Test
{
    void SetUp() override { OSG_NEEDS_CONTEXT(good); }

    OffscreenContext good{1, 1};
};

TEST_F(GLContext, NoneIsCurrent)
{
    EXPECT_EQ(current_gl_context(), nullptr);
    EXPECT_STREQ(gl_refusal(), "no OpenGL context is current");
}

TEST_F(GLContext, OneOfTheCompatibilityProfileIsNotRefused)
{
    ASSERT_TRUE(good.makeCurrent());
    EXPECT_NE(current_gl_context(), nullptr);
    EXPECT_EQ(gl_refusal(), nullptr);
    good.release();
    EXPECT_EQ(current_gl_context(), nullptr);
}

TEST_F(GLContext, OneOfTheCoreProfileIsRefused)
{
    AnyContext const core(EGL_OPENGL_API,
                          {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3,
                           EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT});
    ASSERT_TRUE(core.isMade());
    EXPECT_STREQ(gl_refusal(), "the context is one of the core profile");
}

TEST_F(GLContext, OneOfOpenGLESIsRefused)
{
    AnyContext const embedded(EGL_OPENGL_ES_API, {EGL_CONTEXT_MAJOR_VERSION, 2});
    ASSERT_TRUE(embedded.isMade());
    EXPECT_STREQ(gl_refusal(), "the context is one of OpenGL ES");
}
} // namespace
} // namespace OSG::Test
