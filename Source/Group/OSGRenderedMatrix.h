#pragma once

#include "OSGMatrix.h"

namespace OSG
{
/// The matrix of a core that depends on the viewer. Rendering sets the matrix. Before the first
/// rendering it is the identity.
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
