#pragma once

#include "OSGMatrix.h"

namespace OSG
{
/// The matrix of a core whose effect depends on the viewer. Rendering keeps it; it is the identity
/// until the core has been rendered once.
class RenderedMatrix
{
  public:
    Matrix const &getRenderedMatrix() const { return _renderedMatrix; }
    void setRenderedMatrix(Matrix const &matrix) { _renderedMatrix = matrix; }

  protected:
    ~RenderedMatrix() = default;

  private:
    Matrix _renderedMatrix;
};
} // namespace OSG
