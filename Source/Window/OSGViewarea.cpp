#include "OSGViewarea.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "OSGWindow.h"

namespace OSG
{
namespace
{
Int32 pixel_at(Real32 edge)
{
    if(std::isnan(edge))
        return 0;
    // An edge may be any number. This limit is far beyond any window, and the sum of two such edges
    // still fits into an Int32.
    constexpr Real32 Farthest = 1 << 29;
    return static_cast<Int32>(std::clamp(edge, -Farthest, Farthest));
}
} // namespace

Viewarea::~Viewarea() = default;

bool Viewarea::isPassive() const { return false; }
FrameBufferObject *Viewarea::getTarget() const { return nullptr; }

bool Viewarea::isWholeWindow() const
{
    return !isPassive() && getLeft() == 0.f && getRight() == 1.f && getBottom() == 0.f &&
           getTop() == 1.f;
}

Int32 Viewarea::calcPixelLeft() const { return isWholeWindow() ? 0 : pixel_at(getLeft()); }
Int32 Viewarea::calcPixelBottom() const { return isWholeWindow() ? 0 : pixel_at(getBottom()); }

Int32 Viewarea::calcPixelRight() const
{
    if(isWholeWindow())
        return (_parent != nullptr ? _parent->getWidth() : 0) - 1;
    return pixel_at(getRight());
}

Int32 Viewarea::calcPixelTop() const
{
    if(isWholeWindow())
        return (_parent != nullptr ? _parent->getHeight() : 0) - 1;
    return pixel_at(getTop());
}

bool Viewarea::calcIsFullWindow() const
{
    return _parent != nullptr && calcPixelLeft() == 0 && calcPixelBottom() == 0 &&
           calcPixelRight() == _parent->getWidth() - 1 &&
           calcPixelTop() == _parent->getHeight() - 1;
}

void Viewarea::activateSize()
{
    Int32 const left = calcPixelLeft();
    Int32 const bottom = calcPixelBottom();
    glViewport(left, bottom, calcPixelWidth(), calcPixelHeight());
    glScissor(left, bottom, calcPixelWidth(), calcPixelHeight());
    glEnable(GL_SCISSOR_TEST);
}

void Viewarea::activate()
{
    if(!isPassive())
        activateSize();
}

void Viewarea::deactivate()
{
    if(!isPassive())
        glDisable(GL_SCISSOR_TEST);
}

Int32 Viewarea::calcPixelWidth() const
{
    return std::max(calcPixelRight() - calcPixelLeft() + 1, 0);
}

Int32 Viewarea::calcPixelHeight() const
{
    return std::max(calcPixelTop() - calcPixelBottom() + 1, 0);
}

bool Viewarea::calcNormalizedCoordinates(Real32 &normX, Real32 &normY, Int32 x, Int32 y) const
{
    Int64 const width = calcPixelWidth();
    Int64 const height = calcPixelHeight();
    normX = normY = 0.f;
    if(width < 1 || height < 1)
        return false;
    Int64 const rows = _parent != nullptr ? _parent->getHeight() : height;
    Int64 const column = Int64(x) - calcPixelLeft();
    Int64 const row = rows - y - calcPixelBottom();
    normX = static_cast<Real32>(column * 2 - width) / static_cast<Real32>(width);
    normY = static_cast<Real32>(row * 2 - height) / static_cast<Real32>(height);
    return true;
}
} // namespace OSG
