#pragma once

/// \file
/// For tests that draw into a context of OpenGL.

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include "NeedsContext.h"
#include "OSGGLObjectStore.h"
#include "OSGOffscreenContext.h"

namespace OSG::Test
{
/// A test with a context that is current, and a black picture of 32 by 32 pixels in it. An error of
/// OpenGL that is left at the end fails the test. Where there is no context, the test is reported
/// as not run.
class DrawingTest : public testing::Test
{
  protected:
    static constexpr UInt32 Size = 32;

    void SetUp() override
    {
        OSG_NEEDS_CONTEXT(_context);
        ASSERT_TRUE(_context.makeCurrent());
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    void TearDown() override
    {
        if(!_context.missing().empty())
            return;
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        GLObjectStore::releaseCurrent();
        _context.release();
    }

    /// The colour of the pixel at that column and row, counted from the left top corner.
    struct Rgb
    {
        int red, green, blue;

        friend bool operator==(Rgb const &, Rgb const &) = default;
        friend std::ostream &operator<<(std::ostream &out, Rgb const &color)
        {
            return out << color.red << ' ' << color.green << ' ' << color.blue;
        }
        /// Whether no component differs by more than that.
        bool isNear(Rgb const &other, int by = 1) const
        {
            return std::abs(red - other.red) <= by && std::abs(green - other.green) <= by &&
                   std::abs(blue - other.blue) <= by;
        }
    };
    Rgb pixel(UInt32 x = Size / 2, UInt32 y = Size / 2) const
    {
        std::vector<UInt8> const pixels = _context.readPixels();
        UInt8 const *const at = pixels.data() + (std::size_t(y) * Size + x) * 3;
        return {at[0], at[1], at[2]};
    }

    OffscreenContext &context() { return _context; }

  private:
    OffscreenContext _context{Size, Size};
};
} // namespace OSG::Test
